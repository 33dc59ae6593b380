#include "../views/view_fixtures.h"
#include "appointments/quick_add.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::ViewEnv;

// Row 1 of appt_tbl as a cell edit leaves it: sticker "0", end equal to start.
struct QuickAdd : ::testing::Test {
    ViewEnv env;
    AppState& s = env.s;

    appt_rec& typed(const QString& start, const QString& text = QStringLiteral("Call Bob")) {
        s.appt_count = 1;
        appt_rec& a = *s.appt_row(1);
        a = testing::make_appt(QStringLiteral("03152026"), QStringLiteral("150910000309"), start,
                               text);
        a.appt_start = start;
        a.appt_end = start;
        a.appt_type = QStringLiteral("0");
        return a;
    }
    int index_of(const QuickForm& f, const QString& key) const {
        for (size_t i = 0; i < f.typeIcombo.items.size(); ++i)
            if (f.typeIcombo.items[i].key == key) return int(i);
        return -1;
    }
};

TEST_F(QuickAdd, CaptionIsTheTextOfTheNewRow) {
    typed(QStringLiteral("10:00"), QStringLiteral("Call Bob"));
    s.view_day = true;
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    EXPECT_EQ(f.caption, "Call Bob");
}

TEST_F(QuickAdd, Utf8CaptionIsTheTextAsTyped) {
    for (const QString& text : testing::texts_in_many_scripts()) {
        typed(QStringLiteral("09:00"), text);
        QuickForm f;
        frmQuick_Load(s.store(), s.view(), f);
        EXPECT_EQ(f.caption, text);
    }
}

TEST_F(QuickAdd, StickerListHasOnlyTheSelectRowAndStartsOnIt) {
    typed(QStringLiteral("10:00"));
    s.view_day = true;
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    ASSERT_EQ(f.typeIcombo.items.size(), 74u);
    EXPECT_EQ(f.typeIcombo.list_index, 0);
    EXPECT_EQ(f.typeIcombo.items[0].caption, " <select a virtual sticker>");
    EXPECT_EQ(f.typeIcombo.items[1].key, "Airplane");
}

TEST_F(QuickAdd, TimedEntryInTheDayPlannerShowsItsStartInAnEnabledPicker) {
    typed(QStringLiteral("10:30"));
    s.view_day = true;
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    EXPECT_TRUE(f.picker_enabled);
    EXPECT_EQ(f.DTPicker1, QTime(10, 30));
}

TEST_F(QuickAdd, UntimedEntryInTheDayPlannerDisablesThePicker) {
    typed(QStringLiteral("     "));
    s.view_day = true;
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    EXPECT_FALSE(f.picker_enabled);
}

TEST_F(QuickAdd, WeekAndMonthPlannersAlwaysEnableThePicker) {
    typed(QStringLiteral("09:10"));
    s.view_week = true;
    QuickForm week;
    frmQuick_Load(s.store(), s.view(), week);
    EXPECT_TRUE(week.picker_enabled);
    EXPECT_EQ(week.DTPicker1, QTime(9, 10));

    s.view_week = false;
    s.view_month = true;
    QuickForm month;
    frmQuick_Load(s.store(), s.view(), month);
    EXPECT_TRUE(month.picker_enabled);
}

TEST_F(QuickAdd, OkOnAnUntimedEntryKeepsItsEndBlank) {
    appt_rec& a = typed(QStringLiteral("     "));
    s.view_day = true;
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    f.DTPicker1 = QTime(11, 0); // a disabled picker still holds a time
    f.typeIcombo.list_index = index_of(f, QStringLiteral("Birthday"));
    EXPECT_TRUE(frmQuick_OK(s, f));
    EXPECT_TRUE(a.appt_end.is_blank());
    EXPECT_TRUE(a.appt_start.is_blank());
    EXPECT_EQ(a.appt_type.trimmed(), "Birthday");
    EXPECT_TRUE(env.m.messages().empty());
}

TEST_F(QuickAdd, EndBeforeStartIsRefusedAndTheFormStays) {
    appt_rec& a = typed(QStringLiteral("10:00"));
    s.view_day = true;
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    f.DTPicker1 = QTime(9, 0);
    f.typeIcombo.list_index = index_of(f, QStringLiteral("Car"));
    EXPECT_FALSE(frmQuick_OK(s, f));
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "End time is less than Start Time");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Information);
    EXPECT_EQ(a.appt_end.str(), "10:00");
    EXPECT_EQ(a.appt_type.trimmed(), "0");
}

TEST_F(QuickAdd, EndIsComparedByGridRowsNotMinutes) {
    // 10:05 is earlier than 10:20 but lies in the same half-hour row.
    appt_rec& a = typed(QStringLiteral("10:20"));
    s.view_day = true;
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    f.DTPicker1 = QTime(10, 5);
    EXPECT_TRUE(frmQuick_OK(s, f));
    EXPECT_EQ(a.appt_end.str(), "10:05");
    EXPECT_TRUE(env.m.messages().empty());
}

TEST_F(QuickAdd, EndEqualToStartIsAccepted) {
    appt_rec& a = typed(QStringLiteral("10:00"));
    s.view_day = true;
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    EXPECT_TRUE(frmQuick_OK(s, f));
    EXPECT_EQ(a.appt_end.str(), "10:00");
}

TEST_F(QuickAdd, OkStoresTheStickerKeyAndTheEndAsHoursAndMinutes) {
    appt_rec& a = typed(QStringLiteral("14:00"));
    s.view_day = true;
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    f.DTPicker1 = QTime(15, 30);
    f.typeIcombo.list_index = index_of(f, QStringLiteral("Dirt Bike"));
    EXPECT_TRUE(frmQuick_OK(s, f));
    EXPECT_EQ(a.appt_type.str(), "Dirt Bike      ");
    EXPECT_EQ(a.appt_end.str(), "15:30");
    EXPECT_EQ(a.appt_start.str(), "14:00");
}

TEST_F(QuickAdd, MorningEndIsStoredWithALeadingZero) {
    appt_rec& a = typed(QStringLiteral("00:30"));
    s.view_day = true;
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    f.DTPicker1 = QTime(1, 0);
    EXPECT_TRUE(frmQuick_OK(s, f));
    EXPECT_EQ(a.appt_end.str(), "01:00");
}

TEST_F(QuickAdd, OkWithTheSelectRowStoresNoSticker) {
    appt_rec& a = typed(QStringLiteral("14:00"));
    s.view_day = true;
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    f.DTPicker1 = QTime(14, 30);
    EXPECT_TRUE(frmQuick_OK(s, f));
    EXPECT_TRUE(a.appt_type.is_blank());
}

TEST_F(QuickAdd, CancelEmptiesTheTypedCellAndKeepsAOneRowEntry) {
    appt_rec& a = typed(QStringLiteral("10:00"));
    s.view_day = true;
    s.vsSched = Grid(49, 20);
    s.vsSched.setTextMatrix(21, 0, QStringLiteral(" 10:00 am"));
    s.vsSched.setTextMatrix(21, 2, QStringLiteral("Call Bob"));
    s.vsSched.setTextMatrix(22, 2, QStringLiteral("other"));
    s.vsSched.Select(21, 2);
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    f.DTPicker1 = QTime(12, 0);
    f.typeIcombo.list_index = index_of(f, QStringLiteral("Car"));
    frmQuick_Cancel(s, f);
    EXPECT_EQ(s.vsSched.TextMatrix(21, 2), "");
    EXPECT_EQ(s.vsSched.TextMatrix(22, 2), "other");
    EXPECT_EQ(s.vsSched.TextMatrix(21, 0), " 10:00 am");
    EXPECT_EQ(s.appt_count, 1);
    EXPECT_EQ(a.appt_type.trimmed(), "0");
    EXPECT_EQ(a.appt_end, a.appt_start);
    EXPECT_EQ(a.appt_text.trimmed(), "Call Bob");
    EXPECT_TRUE(env.m.messages().empty());
}

TEST_F(QuickAdd, CancelInTheMonthPlannerLeavesTheDayGridAlone) {
    typed(QStringLiteral("09:10"));
    s.view_month = true;
    s.vsSched = Grid(49, 20);
    s.vsSched.setTextMatrix(21, 2, QStringLiteral("Dentist"));
    s.vsSched.Select(21, 2);
    QuickForm f;
    frmQuick_Load(s.store(), s.view(), f);
    frmQuick_Cancel(s, f);
    EXPECT_EQ(s.vsSched.TextMatrix(21, 2), "Dentist");
}

// frmNotes shares the environment; its own fixture keeps the names apart.
struct Notes : QuickAdd {};

QString padded(const QString& text) {
    return text.leftJustified(notes_limit, QLatin1Char(' '));
}

TEST_F(Notes, UseTheGridFontOfTheOptions) {
    s.grid_font_name = QStringLiteral("Courier New");
    s.grid_font_size = QStringLiteral("12");
    s.grid_font_bold = true;
    NotesForm f;
    frmNotes_Load(s.options(), s.editing(), f);
    EXPECT_EQ(f.font_name, "Courier New");
    EXPECT_DOUBLE_EQ(f.font_size, 12.0);
    EXPECT_TRUE(f.font_bold);
}

TEST_F(Notes, BlankNotesOpenAnEmptyBox) {
    s.notes_text = padded(QString());
    s.caller_form = QStringLiteral("dtlfrm");
    NotesForm f;
    frmNotes_Load(s.options(), s.editing(), f);
    EXPECT_EQ(f.rtNotes, "");
    EXPECT_EQ(f.cursor, 0);
    EXPECT_EQ(s.notes_shown, padded(QString()));
}

TEST_F(Notes, OpenWithTrailingBlanksCutAndTheCursorAtTheEnd) {
    s.notes_text = padded(QStringLiteral("  Bring the forms"));
    s.caller_form = QStringLiteral("dtlfrm");
    NotesForm f;
    frmNotes_Load(s.options(), s.editing(), f);
    EXPECT_EQ(f.rtNotes, "  Bring the forms");
    EXPECT_EQ(f.cursor, 17);
    EXPECT_EQ(s.notes_shown, s.notes_text);
}

TEST_F(Notes, OpenedFromTheEditorShowWhatTheDetailPaneLeft) {
    s.caller_form = QStringLiteral("apptfrm");
    NotesForm first;
    frmNotes_Load(s.options(), s.editing(), first);
    EXPECT_EQ(first.rtNotes, ""); // nothing handled yet

    s.caller_form = QStringLiteral("dtlfrm");
    s.notes_text = padded(QStringLiteral("Pane notes"));
    NotesForm pane;
    frmNotes_Load(s.options(), s.editing(), pane);
    pane.rtNotes = QStringLiteral("Pane notes, edited");
    frmNotes_OK(s, pane);

    s.caller_form = QStringLiteral("apptfrm");
    NotesForm editor;
    frmNotes_Load(s.options(), s.editing(), editor);
    EXPECT_EQ(editor.rtNotes, "Pane notes, edited");
}

TEST_F(Notes, ArePlacedByTheirCaller) {
    s.caller_form = QStringLiteral("apptfrm");
    NotesForm editor;
    frmNotes_Load(s.options(), s.editing(), editor);
    EXPECT_EQ(editor.anchor, "frmAppt1");
    EXPECT_EQ(editor.dx, 2400);
    EXPECT_EQ(editor.dy, 200);

    s.caller_form = QStringLiteral("dtlfrm");
    NotesForm pane;
    frmNotes_Load(s.options(), s.editing(), pane);
    EXPECT_EQ(pane.anchor, "Frame2");
    EXPECT_EQ(pane.dx, 1800);
    EXPECT_EQ(pane.dy, 200);
}

TEST_F(Notes, OkWithUnchangedTextIsNoChange) {
    s.notes_text = padded(QStringLiteral("Call first"));
    s.notes_dirty = false;
    NotesForm f;
    frmNotes_Load(s.options(), s.editing(), f);
    frmNotes_OK(s, f);
    EXPECT_FALSE(s.notes_dirty);
    EXPECT_EQ(s.notes_text, "Call first");
}

TEST_F(Notes, OkWithChangedTextSetsDirty) {
    s.notes_text = padded(QStringLiteral("Call first"));
    NotesForm f;
    frmNotes_Load(s.options(), s.editing(), f);
    f.rtNotes = QStringLiteral("Call first, then go");
    frmNotes_OK(s, f);
    EXPECT_TRUE(s.notes_dirty);
    EXPECT_EQ(s.notes_text, "Call first, then go");
}

TEST_F(Notes, OkNeverClearsDirty) {
    s.notes_text = padded(QStringLiteral("Call first"));
    s.notes_dirty = true;
    NotesForm f;
    frmNotes_Load(s.options(), s.editing(), f);
    frmNotes_OK(s, f);
    EXPECT_TRUE(s.notes_dirty);
}

TEST_F(Notes, CancelClearsDirtyAndKeepsTheText) {
    s.notes_text = padded(QStringLiteral("Call first"));
    s.notes_dirty = true;
    NotesForm f;
    frmNotes_Load(s.options(), s.editing(), f);
    f.rtNotes = QStringLiteral("Something else");
    frmNotes_Cancel(s, f);
    EXPECT_FALSE(s.notes_dirty);
    EXPECT_EQ(s.notes_text, padded(QStringLiteral("Call first")));
}

TEST_F(Notes, OkCutsTheTextToTwoHundredCharacters) {
    s.notes_text = padded(QString());
    NotesForm f;
    frmNotes_Load(s.options(), s.editing(), f);
    f.rtNotes = QString(150, QLatin1Char('a')) + QString(100, QLatin1Char('b'));
    frmNotes_OK(s, f);
    EXPECT_EQ(s.notes_text.size(), 200);
    EXPECT_EQ(s.notes_text, QString(150, QLatin1Char('a')) + QString(50, QLatin1Char('b')));
    EXPECT_TRUE(s.notes_dirty);
}

TEST_F(Notes, Utf8OpenShowsEveryCharacterOfAFullField) {
    // 66 characters of three bytes fill 198 of the 200.
    s.notes_text = Fixed<200>(QString(66, u'会')).str();
    NotesForm f;
    frmNotes_Load(s.options(), s.editing(), f);
    EXPECT_EQ(f.rtNotes, QString(66, u'会'));
    EXPECT_EQ(f.cursor, 66);
}

TEST_F(Notes, Utf8OkCutsTheTextToTwoHundredBytesBetweenCharacters) {
    s.notes_text = padded(QString());
    NotesForm f;
    frmNotes_Load(s.options(), s.editing(), f);
    f.rtNotes = QString(190, u'a') + QStringLiteral("Συνάντηση");
    frmNotes_OK(s, f);
    EXPECT_EQ(s.notes_text, QString(190, u'a') + QStringLiteral("Συνάν"));
    EXPECT_EQ(s.notes_text.toUtf8().size(), 200);

    f.rtNotes = QString(197, u'a') + QStringLiteral("🎉");
    frmNotes_OK(s, f);
    EXPECT_EQ(s.notes_text, QString(197, u'a'));
}

TEST_F(Notes, Utf8TextsComeBackFromOkAsTyped) {
    for (const QString& text : testing::texts_in_many_scripts()) {
        s.notes_text = padded(QString());
        NotesForm f;
        frmNotes_Load(s.options(), s.editing(), f);
        f.rtNotes = text;
        frmNotes_OK(s, f);
        EXPECT_EQ(s.notes_text, text);
    }
}

} // namespace
} // namespace orva
