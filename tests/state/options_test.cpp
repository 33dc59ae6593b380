#include "core/clock.h"
#include "shell/startup.h"
#include "state/options.h"
#include "support/fake_window.h"
#include "support/scripted_modal.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orva {
namespace {

class OptionsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        install_clock(&clk);
        s.app_path = dir.path();
        s.cal_path = dir.filePath(QStringLiteral("calendar.cal"));
        s.vsSched.setFontName(QStringLiteral("DejaVu Serif"));
        s.vsSched.setFontSize(11);
        s.vsSched.setForeColor(rgb(10, 20, 30));
    }
    void TearDown() override { install_clock(nullptr); }

    // The options row as it stands in the calendar file.
    Grid stored() {
        Grid g;
        QByteArray bytes;
        EXPECT_EQ(s.archive.get(s.cal_path, options_member, bytes), 0);
        EXPECT_TRUE(g.load_bytes(bytes));
        return g;
    }

    // Stores a hand-made options row as the member, the way an older or an
    // edited calendar would carry it.
    void store_row(const QStringList& cells) {
        Grid g(0, int(cells.size()));
        g.AddItem(cells.join(QLatin1Char('\t')));
        ASSERT_EQ(s.archive.put(s.cal_path, options_member, g.save_bytes()), 0);
    }

    static QStringList full_row() {
        return {QStringLiteral("mnuForest"), QStringLiteral("3"),
                QStringLiteral("255"),       QStringLiteral("1"),
                QStringLiteral("True"),      QStringLiteral("DejaVu Sans Mono"),
                QStringLiteral("12"),        QStringLiteral("128"),
                QStringLiteral("True"),      QStringLiteral("False"),
                QStringLiteral("weekvw"),    QStringLiteral("F"),
                QStringLiteral("03152026"),  QStringLiteral("9000"),
                QStringLiteral("12000"),     QStringLiteral("300"),
                QStringLiteral("450"),       QStringLiteral("0"),
                QStringLiteral("False"),     QStringLiteral("True")};
    }

    QTemporaryDir dir;
    FixedClock clk{QDateTime(QDate(2026, 11, 21), QTime(10, 0))};
    testing::ScriptedModal m;
    testing::ModalGuard guard{&m};
    testing::FakeWindow w;
    AppState s;
};

TEST_F(OptionsTest, MissingMemberGivesDefaultsAndSavesThemAtOnce) {
    load_options(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(s.skin_name, QStringLiteral("mnuStdWindows"));
    EXPECT_EQ(s.start_view, QStringLiteral("dayvw"));
    EXPECT_EQ(s.last_used_date, QStringLiteral("11212026"));
    EXPECT_TRUE(s.menus.mnuColorY);
    EXPECT_EQ(s.work_start, QStringLiteral("8:00:00 AM"));
    EXPECT_EQ(s.work_end, QStringLiteral("5:00:00 PM"));
    const Grid g = stored();
    EXPECT_EQ(g.Cols(), 20);
    EXPECT_EQ(g.TextMatrix(0, 0), QStringLiteral("mnuStdWindows"));
    EXPECT_EQ(g.TextMatrix(0, 2), QStringLiteral("65535"));
    EXPECT_EQ(g.TextMatrix(0, 5), QStringLiteral("DejaVu Serif"));
    EXPECT_EQ(g.TextMatrix(0, 12), QStringLiteral("11212026"));
    EXPECT_TRUE(m.messages().empty());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files).filter(options_member), QStringList())
        << "no copy of the member is left in the data folder";
}

TEST_F(OptionsTest, CalendarWithoutOptionsMovesWindowToNinetyPercentOfWorkArea) {
    w.area = QRect(0, 450, 28800, 15000);
    load_options(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(w.geometry, QRect(0, 450, 25920, 13500));
    EXPECT_EQ(s.form_height, 13500);
    EXPECT_EQ(s.form_width, 25920);
}

TEST_F(OptionsTest, StoredRowComesBackIntoEffect) {
    store_row(full_row());
    load_options(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(s.skin_name, QStringLiteral("mnuForest"));
    EXPECT_EQ(s.anim_speed, 3);
    EXPECT_EQ(s.appt_back_color, 255u);
    EXPECT_EQ(s.grid_font_name, QStringLiteral("DejaVu Sans Mono"));
    EXPECT_EQ(s.vsSched.FontName(), QStringLiteral("DejaVu Sans Mono"));
    EXPECT_EQ(s.vsSched.FontSize(), 12);
    EXPECT_TRUE(s.vsSched.FontBold());
    EXPECT_EQ(s.start_view, QStringLiteral("weekvw"));
    EXPECT_FALSE(s.menus.mnuShowTimes);
    EXPECT_EQ(s.last_used_date, QStringLiteral("03152026"));
    EXPECT_EQ(s.form_height, 9000);
    EXPECT_EQ(s.form_width, 12000);
    EXPECT_EQ(s.form_top, 300);
    EXPECT_EQ(s.form_left, 450);
    EXPECT_FALSE(s.menus.mnuStat);
    EXPECT_FALSE(w.status_bar);
    EXPECT_TRUE(s.menus.mnuStart);
    EXPECT_FALSE(s.view_day || s.view_week || s.view_month);
}

TEST_F(OptionsTest, MemberOfAFewBytesAskingForMillionsOfRowsTakesTheDefaults) {
    ASSERT_EQ(s.archive.put(s.cal_path, options_member,
                            QByteArrayLiteral(R"({"format":"orvacal-grid","version":1,)"
                                              R"("rows":14444444,"cols":0,"cells":[]})")),
              0);
    load_options(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(s.vsSettings.Rows(), 1);
    EXPECT_EQ(s.skin_name, QStringLiteral("mnuStdWindows"));
    const Grid g = stored();
    EXPECT_EQ(g.Rows(), 1);
    EXPECT_EQ(g.Cols(), 20);
}

TEST_F(OptionsTest, EmptyFontNameTakesAllFiveFromTheDayGrid) {
    QStringList row = full_row();
    row[5].clear(); // name empty: size, colour, bold and italic are ignored
    store_row(row);
    load_options(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(s.grid_font_name, QStringLiteral("DejaVu Serif"));
    EXPECT_EQ(s.grid_font_size, QStringLiteral("11"));
    EXPECT_EQ(s.grid_font_color, QString::number(rgb(10, 20, 30)));
    EXPECT_FALSE(s.grid_font_bold);
    EXPECT_FALSE(s.grid_font_italic);
}

TEST_F(OptionsTest, NoColourModeShowsChosenColourCheckedAfterLoad) {
    QStringList row = full_row();
    row[3] = QStringLiteral("3");
    store_row(row);
    s.vsSched.setBackColor(rgb(200, 200, 200));
    load_options(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_TRUE(s.menus.mnuColorSelect);
    EXPECT_FALSE(s.menus.mnuColorY);
    EXPECT_EQ(s.appt_color_mode, QStringLiteral("3"));
    EXPECT_EQ(s.appt_back_color, rgb(200, 200, 200));
}

TEST_F(OptionsTest, EmptyPlacementCellsTakeTheFixedSizeAndTheWorkAreaCorner) {
    QStringList row = full_row();
    for (int c = 13; c <= 17; ++c)
        row[c].clear();
    store_row(row);
    w.area = QRect(600, 450, 28800, 15000);
    load_options(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(s.form_height, 8550);
    EXPECT_EQ(s.form_width, 11910);
    EXPECT_EQ(s.form_top, 450);
    EXPECT_EQ(s.form_left, 600);
    EXPECT_EQ(s.form_state, 0);
}

TEST_F(OptionsTest, ShorterRowFromOlderVersionIsRepairedToTwentyColumns) {
    store_row(full_row().mid(0, 15));
    load_options(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(s.skin_name, QStringLiteral("mnuForest"));
    const Grid g = stored();
    EXPECT_EQ(g.Cols(), 20);
    EXPECT_EQ(g.TextMatrix(0, 0), QStringLiteral("mnuForest"));
    EXPECT_EQ(g.TextMatrix(0, 19), QStringLiteral("False"));
}

TEST_F(OptionsTest, SaveWithNoCalendarOpenShowsTheErrorNumber) {
    load_options(s.store(), s.view(), s.options(), s.run(), w);
    s.cal_path.clear();
    save_options(s.store(), s.view(), s.options(), w);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_TRUE(
        m.messages()[0].startsWith(QStringLiteral("Error saving settings. Error Number : ")))
        << m.messages()[0].toStdString();
    EXPECT_NE(m.messages()[0], QStringLiteral("Error saving settings. Error Number : 0"));
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Critical);
}

TEST_F(OptionsTest, SaveWritesViewFlagsWindowAndToday) {
    load_options(s.store(), s.view(), s.options(), s.run(), w);
    s.view_month = true;
    s.menus.mnuShowTimes = false;
    w.geometry = QRect(150, 300, 20000, 10000);
    clk.set(QDateTime(QDate(2026, 12, 2), QTime(9, 0)));
    save_options(s.store(), s.view(), s.options(), w);
    const Grid g = stored();
    EXPECT_EQ(g.TextMatrix(0, 10), QStringLiteral("mthvw"));
    EXPECT_EQ(g.TextMatrix(0, 11), QStringLiteral("F"));
    EXPECT_EQ(g.TextMatrix(0, 12), QStringLiteral("12022026"));
    EXPECT_EQ(g.TextMatrix(0, 13), QStringLiteral("10000"));
    EXPECT_EQ(g.TextMatrix(0, 14), QStringLiteral("20000"));
    EXPECT_EQ(g.TextMatrix(0, 15), QStringLiteral("300"));
    EXPECT_EQ(g.TextMatrix(0, 16), QStringLiteral("150"));
    // The date in memory moves only through load and default.
    EXPECT_EQ(s.last_used_date, QStringLiteral("11212026"));
}

TEST_F(OptionsTest, RestoreDefaultsSavesDefaultSkinButLeavesScreenAndStopsResizeLayout) {
    store_row(full_row());
    load_options(s.store(), s.view(), s.options(), s.run(), w);
    s.startup_move = false;
    default_options(s.store(), s.view(), s.options(), s.run(), w);
    // Not applied: the variables the screen was built from are left alone
    // except those the restore itself resets.
    EXPECT_EQ(s.vsSched.FontName(), QStringLiteral("DejaVu Sans Mono"));
    EXPECT_EQ(stored().TextMatrix(0, 0), QStringLiteral("mnuStdWindows"));

    const int layouts = w.layouts;
    const QString saved_width = stored().TextMatrix(0, 14);
    w.geometry = QRect(0, 0, 16000, 9000);
    Form_Resize(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(w.layouts, layouts) << "resizing no longer lays out the planner";
    EXPECT_EQ(stored().TextMatrix(0, 14), saved_width) << "nor saves";
    EXPECT_NE(saved_width, QStringLiteral("16000"));

    AppState next;
    next.app_path = s.app_path;
    next.cal_path = s.cal_path;
    testing::FakeWindow w2;
    load_options(next.store(), next.view(), next.options(), next.run(), w2);
    EXPECT_EQ(next.skin_name, QStringLiteral("mnuStdWindows"));
}

} // namespace
} // namespace orva
