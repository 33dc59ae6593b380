#include "tzone_fixtures.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

namespace orva {
namespace {

// The committed table, read from a copy: opening an archive sets its journal,
// and the file in the source tree is to stay as it was committed.
struct TzonesTable : ::testing::Test {
    QTemporaryDir dir;
    Grid g;

    void SetUp() override {
        const QString shipped = QStringLiteral(ORVACAL_SOURCE_DATA_DIR "/Tzones.ach");
        ASSERT_TRUE(QFile::exists(shipped)) << shipped.toStdString();
        ASSERT_TRUE(QFile::copy(shipped, tzones_archive_path(dir.path())));
        Archive a;
        QByteArray bytes;
        ASSERT_EQ(a.get(tzones_archive_path(dir.path()), "Tzones.grd", bytes), 0);
        ASSERT_TRUE(g.load_bytes(bytes));
        ASSERT_GE(g.Cols(), 6);
    }
    int row_of(const QString& name) const {
        for (int r = 1; r < g.Rows(); ++r)
            if (g.TextMatrix(r, 0) == name) return r;
        return -1;
    }
};

TEST_F(TzonesTable, HoldsTzonesGrdAndNothingElse) {
    Archive a;
    EXPECT_EQ(a.members(tzones_archive_path(dir.path())), QStringList{"Tzones.grd"});
}

TEST_F(TzonesTable, RowZeroIsAFixedHeadingSoSortingLosesNoZone) {
    EXPECT_EQ(g.FixedRows(), 1);
    EXPECT_EQ(g.TextMatrix(0, 0), "Zone");
    testing::TzoneEnv env;
    ASSERT_TRUE(QFile::copy(tzones_archive_path(dir.path()), tzones_archive_path(env.app_path())));
    TzoneForm f;
    Form_Load(f, env.app_path());
    EXPECT_EQ(f.List1.size(), g.Rows() - 1);
    EXPECT_TRUE(f.List1.contains("Berlin, Germany"));
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(TzonesTable, HasSeveralHundredZonesEachNamedOnce) {
    EXPECT_GT(g.Rows(), 300);
    QSet<QString> names;
    for (int r = 1; r < g.Rows(); ++r) {
        const QString name = g.TextMatrix(r, 0);
        EXPECT_FALSE(name.trimmed().isEmpty()) << r;
        EXPECT_FALSE(names.contains(name)) << name.toStdString();
        names.insert(name);
    }
    EXPECT_TRUE(names.contains("UTC"));
    EXPECT_TRUE(names.contains("GMT"));
}

TEST_F(TzonesTable, EveryOffsetIsASignedWholeOrHalfHour) {
    static const QRegularExpression form(QStringLiteral("^(0|[+-](0\\.5|[1-9][0-9]?(\\.5)?))$"));
    for (int r = 1; r < g.Rows(); ++r)
        EXPECT_TRUE(form.match(g.TextMatrix(r, 1)).hasMatch())
            << g.TextMatrix(r, 0).toStdString() << ": " << g.TextMatrix(r, 1).toStdString();
}

TEST_F(TzonesTable, DaylightDaysAreBothMonthDaysOrBothEmpty) {
    static const QRegularExpression mmdd(
        QStringLiteral("^(0[1-9]|1[0-2])(0[1-9]|[12][0-9]|3[01])$"));
    for (int r = 1; r < g.Rows(); ++r) {
        const QString s = g.TextMatrix(r, 4), e = g.TextMatrix(r, 5);
        const std::string name = g.TextMatrix(r, 0).toStdString();
        EXPECT_EQ(s.isEmpty(), e.isEmpty()) << name;
        if (s.isEmpty()) continue;
        EXPECT_TRUE(mmdd.match(s).hasMatch()) << name << " " << s.toStdString();
        EXPECT_TRUE(mmdd.match(e).hasMatch()) << name << " " << e.toStdString();
        EXPECT_EQ(g.TextMatrix(r, 3), "1") << name;
    }
}

TEST_F(TzonesTable, KathmanduAtFiveFortyFiveIsLeftOut) {
    for (int r = 1; r < g.Rows(); ++r) {
        EXPECT_FALSE(g.TextMatrix(r, 0).startsWith("Kathmandu")) << r;
        EXPECT_FALSE(g.TextMatrix(r, 0).startsWith("Chatham")) << r;
        EXPECT_FALSE(g.TextMatrix(r, 0).startsWith("Eucla")) << r;
    }
}

TEST_F(TzonesTable, BerlinIsOneHourAheadWithSummerTimeFromMarchToOctober) {
    const int r = row_of("Berlin, Germany");
    ASSERT_GT(r, 0);
    EXPECT_EQ(g.TextMatrix(r, 1), "+1");
    EXPECT_TRUE(g.TextMatrix(r, 4).startsWith("03")) << g.TextMatrix(r, 4).toStdString();
    EXPECT_TRUE(g.TextMatrix(r, 5).startsWith("10")) << g.TextMatrix(r, 5).toStdString();
}

TEST_F(TzonesTable, SydneysSummerTimeStartsLateInTheYearAndEndsEarlyInIt) {
    const int r = row_of("Sydney, Australia");
    ASSERT_GT(r, 0);
    EXPECT_EQ(g.TextMatrix(r, 1), "+10");
    EXPECT_GT(g.TextMatrix(r, 4), g.TextMatrix(r, 5));
    EXPECT_FALSE(g.TextMatrix(r, 5).isEmpty());
}

TEST_F(TzonesTable, HalfHourZonesKeepTheirHalf) {
    const int kolkata = row_of("Kolkata, India");
    const int st_johns = row_of("St Johns, Canada");
    const int tokyo = row_of("Tokyo, Japan");
    ASSERT_GT(kolkata, 0);
    ASSERT_GT(st_johns, 0);
    ASSERT_GT(tokyo, 0);
    EXPECT_EQ(g.TextMatrix(kolkata, 1), "+5.5");
    EXPECT_EQ(g.TextMatrix(kolkata, 4), "");
    EXPECT_EQ(g.TextMatrix(st_johns, 1), "-3.5");
    EXPECT_EQ(g.TextMatrix(tokyo, 1), "+9");
    EXPECT_EQ(g.TextMatrix(tokyo, 4), "");
}

} // namespace
} // namespace orva
