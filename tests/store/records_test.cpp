#include "store/records.h"

#include "store_fixtures.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <ostream>

using namespace orva;

namespace {

// Tables are large; keep them off the stack.
struct Records : ::testing::Test {
    std::unique_ptr<Tables> t = std::make_unique<Tables>();

    void SetUp() override { t->cur_date = QDate(2026, 3, 15); }

    // Loads one appointment of March 2026 through the transfer record.
    void load(const QString& mmddyyyy, const QString& start, const QString& type = "Meeting") {
        t->cur.cur_appt_date = mmddyyyy;
        t->cur.cur_first_date = mmddyyyy;
        t->cur.cur_start = start;
        t->cur.cur_type = type;
        t->add_appt_row();
    }
    QString day_time(int d) const { return t->day_tbl[d].day_time.str(); }
    QString day_index(int d) const { return t->day_tbl[d].day_index.str(); }
};

} // namespace

TEST(Fixed, AssignmentPadsWithBlanksAndCutsToWidth) {
    Fixed<5> f;
    EXPECT_EQ(f.str(), QString("     "));
    f = QString("ab");
    EXPECT_EQ(f.str(), QString("ab   "));
    f = QString("abcdefg");
    EXPECT_EQ(f.str(), QString("abcde"));
}

// --- text in any language -----------------------------------------------------

namespace {

template <int N> QByteArray bytes_of(const Fixed<N>& f) {
    return QByteArray(f.c, N);
}

struct TextCase {
    const char* name;
    const char* utf8;
};

void PrintTo(const TextCase& c, std::ostream* os) {
    *os << c.name;
}

class Utf8Fields : public ::testing::TestWithParam<TextCase> {};

} // namespace

TEST_P(Utf8Fields, AreStoredAsUtf8PaddedWithBlanksAndReadBack) {
    const QString text = QString::fromUtf8(GetParam().utf8);
    const Fixed<50> f(text);
    const QByteArray expected = QByteArray(GetParam().utf8).leftJustified(50, ' ');
    EXPECT_EQ(bytes_of(f), expected);
    EXPECT_EQ(f.trimmed(), text);
    EXPECT_FALSE(f.str().contains(u'?'));
    EXPECT_FALSE(f.str().contains(QChar::ReplacementCharacter));
}

INSTANTIATE_TEST_SUITE_P(
    Fixed, Utf8Fields,
    ::testing::Values(TextCase{"AccentedLatin", "Café crème"}, TextCase{"Diaeresis", "Zoë"},
                      TextCase{"Greek", "Συνάντηση"}, TextCase{"Cyrillic", "Встреча"},
                      TextCase{"Chinese", "会议"}, TextCase{"Emoji", "Party 🎉"}),
    [](const ::testing::TestParamInfo<TextCase>& i) { return std::string(i.param.name); });

TEST(Fixed, Utf8GreekPastTheWidthKeepsWholeLetters) {
    // 26 letters, two bytes each: 52 bytes for a field of 50.
    const QString letters = QStringLiteral("αβγδεζηθικλμνξοπρστυφχψωάέ");
    ASSERT_EQ(letters.toUtf8().size(), 52);
    const Fixed<50> f(letters);
    EXPECT_EQ(f.str(), letters.left(25));
    EXPECT_EQ(bytes_of(f), letters.left(25).toUtf8());

    // An odd width leaves the byte a letter cannot fill blank.
    const Fixed<5> odd(QStringLiteral("αβγ"));
    EXPECT_EQ(bytes_of(odd), QByteArray("\xce\xb1\xce\xb2 "));
}

TEST(Fixed, Utf8EmojiThatWouldStraddleTheEndIsDroppedWhole) {
    const QString text = QString(47, u'x') + QStringLiteral("\U0001F389");
    const Fixed<50> f(text);
    EXPECT_EQ(bytes_of(f), QByteArray(47, 'x') + "   ");
    EXPECT_EQ(f.trimmed(), QString(47, u'x'));
}

TEST(Fixed, Utf8LetterIsNotPartedFromItsCombiningMark) {
    // "e" and U+0301 are one character on screen; the mark alone would fit.
    const Fixed<5> f(QStringLiteral("abcde\u0301"));
    EXPECT_EQ(bytes_of(f), QByteArray("abcd "));
    const Fixed<7> whole(QStringLiteral("abcde\u0301"));
    EXPECT_EQ(bytes_of(whole), QByteArray("abcde\xcc\x81"));
}

TEST(Fixed, Utf8JoinedEmojiIsKeptOrDroppedAsOne) {
    // man, zero-width joiner, woman: 11 bytes that show as one picture.
    const QString couple = QStringLiteral("\U0001F468\u200D\U0001F469");
    const Fixed<12> fits(QStringLiteral("a") + couple);
    EXPECT_EQ(bytes_of(fits), (QStringLiteral("a") + couple).toUtf8());
    const Fixed<11> cut(QStringLiteral("a") + couple);
    EXPECT_EQ(bytes_of(cut), QByteArray("a").leftJustified(11, ' '));
}

TEST(Fixed, Utf8FieldWrittenAsLatin1ByAnOldBuildStillReads) {
    Fixed<6> f;
    std::memcpy(f.c, "caf\xe9  ", 6);
    EXPECT_EQ(f.str(), QString::fromUtf8("café  "));
    EXPECT_EQ(f.trimmed(), QString::fromUtf8("café"));
    // "\xc3\xa9" is UTF-8 for the same letter.
    std::memcpy(f.c, "caf\xc3\xa9 ", 6);
    EXPECT_EQ(f.trimmed(), QString::fromUtf8("café"));
    // A cut sequence is no UTF-8 either: the field reads byte for character.
    std::memcpy(f.c, "ab\xce   ", 6);
    EXPECT_EQ(f.trimmed(), QString::fromLatin1("ab\xce"));
}

TEST(Fixed, Utf8AsciiIsStillOneBytePerCharacterAndCutAtTheWidth) {
    const Fixed<5> f(QStringLiteral("ab\r\ncd"));
    EXPECT_EQ(bytes_of(f), QByteArray("ab\r\nc"));
}

TEST(CutToBytes, Utf8TextThatFitsComesBackWhole) {
    const QString t = QStringLiteral("Party 🎉");
    EXPECT_EQ(utf8_size(t), 10);
    EXPECT_EQ(cut_to_bytes(t, 10), t);
    EXPECT_EQ(cut_to_bytes(t, 9), QStringLiteral("Party "));
    EXPECT_EQ(cut_to_bytes(t, 0), QString());
    EXPECT_EQ(cut_to_bytes(QStringLiteral("会议"), 5), QStringLiteral("会"));
}

TEST(CutToBytes, Utf8NeverSplitsASurrogatePair) {
    const QString t = QStringLiteral("\U0001F389\U0001F389");
    for (int n = 0; n <= 8; ++n) {
        const QString cut = cut_to_bytes(t, n);
        EXPECT_EQ(cut.size(), n / 4 * 2) << n;
        EXPECT_EQ(utf8_size(cut), n / 4 * 4) << n;
    }
}

TEST_F(Records, DayIndexKeepsTwoCharacters) {
    t->appt_count = 122;
    t->appt_next = 122;
    load("03072026", "09:00");
    EXPECT_EQ(t->appt_count, 123);
    EXPECT_EQ(day_index(7), QString("12"));
    EXPECT_EQ(t->day_tbl[7].day_index.trimmed().toInt(), 12);
}

TEST_F(Records, DayIndexOfASingleDigitRowIsLeftJustified) {
    load("03072026", "09:00");
    EXPECT_EQ(day_index(7), QString("1 "));
}

TEST_F(Records, MonthWithNoAppointmentsLeavesEveryDayAtSentinel) {
    t->clear_days();
    load("04072026", "09:00"); // April is not the month in view
    for (int d = 1; d <= day_limit; ++d) {
        EXPECT_EQ(day_time(d), QString("40404")) << "day " << d;
        EXPECT_TRUE(t->day_tbl[d].day_type.is_blank());
        EXPECT_TRUE(t->day_tbl[d].day_index.is_blank());
    }
    EXPECT_EQ(t->appt_count, 1);
}

TEST_F(Records, TieAtNineKeepsTheFirstLoaded) {
    load("03102026", "09:00", "First");
    load("03102026", "09:00", "Second");
    EXPECT_EQ(day_index(10), QString("1 "));
    EXPECT_EQ(t->day_tbl[10].day_type.trimmed(), QString("First"));
}

TEST_F(Records, LaterLoadedEarlierTimeReplacesTheDay) {
    load("03102026", "09:00", "First");
    load("03102026", "09:00", "Second");
    load("03102026", "08:30", "Third");
    EXPECT_EQ(day_time(10), QString("08:30"));
    EXPECT_EQ(day_index(10), QString("3 "));
    EXPECT_EQ(t->day_tbl[10].day_type.trimmed(), QString("Third"));
}

TEST_F(Records, UntimedCountsAsMidnightAndBeatsTimedLoadedBefore) {
    load("03102026", "07:00");
    load("03102026", "");
    EXPECT_EQ(day_time(10), QString("00:00"));
    EXPECT_EQ(day_index(10), QString("2 "));
}

TEST_F(Records, UntimedBeatsTimedLoadedAfter) {
    load("03102026", "");
    load("03102026", "06:00");
    EXPECT_EQ(day_time(10), QString("00:00"));
    EXPECT_EQ(day_index(10), QString("1 "));
}

TEST_F(Records, UntimedDoesNotBeatAnEarlierLoadedMidnight) {
    load("03102026", "00:00");
    load("03102026", "");
    EXPECT_EQ(day_index(10), QString("1 "));
}

TEST_F(Records, DayTimesCompareByValueNotByText) {
    load("03102026", "10:00");
    load("03102026", "9:30");
    EXPECT_EQ(day_time(10), QString("09:30"));
    EXPECT_EQ(day_index(10), QString("2 "));
}

TEST_F(Records, StartThatIsNoTimeRanksAsUntimed) {
    load("03102026", "10:00");
    load("03102026", "\t9:00");
    EXPECT_EQ(day_time(10), QString("00:00"));
    EXPECT_EQ(day_index(10), QString("2 "));
    load("03112026", "9:x0");
    load("03112026", "06:00");
    EXPECT_EQ(day_time(11), QString("00:00"));
    EXPECT_EQ(day_index(11), QString("3 "));
}

TEST_F(Records, DayWithoutTypeShowsAlarm) {
    load("03102026", "09:00", "");
    EXPECT_EQ(t->day_tbl[10].day_type.trimmed(), QString("Alarm"));
}

TEST_F(Records, DayNumberOutsideTheMonthLeavesDaysUnsummarisedAndLoadGoesOn) {
    load("03002026", "09:00");
    load("03322026", "09:00");
    load("03052026", "09:00");
    EXPECT_EQ(t->appt_count, 3);
    EXPECT_EQ(day_index(5), QString("3 "));
    for (int d = 1; d <= day_limit; ++d) {
        if (d != 5) {
            EXPECT_EQ(day_time(d), QString("40404")) << "day " << d;
        }
    }
}

TEST_F(Records, ClearApptsCoversOnlyRowsUpToTheOldCount) {
    for (int i = 0; i < 5; ++i)
        load("03102026", "09:00");
    t->appt_count = 3;
    t->clear_appts();
    for (int r = 1; r <= 3; ++r)
        EXPECT_TRUE(t->appt_row(r)->appt_date.is_blank()) << r;
    EXPECT_EQ(t->appt_row(4)->appt_date.str(), QString("03102026"));
    EXPECT_EQ(t->appt_row(5)->appt_date.str(), QString("03102026"));
    EXPECT_EQ(t->appt_count, 3);
}

TEST_F(Records, AgainCountPastNineTakesBothCharacters) {
    t->cur.cur_again_count = 10;
    t->add_rmdr_row();
    EXPECT_EQ(t->rmdr_row(1)->rmdr_again_count.str(), QString("10"));
}

TEST_F(Records, AgainCountPastNinetyNineIsCut) {
    t->cur.cur_again_count = 123;
    t->add_rmdr_row();
    EXPECT_EQ(t->rmdr_row(1)->rmdr_again_count.str(), QString("12"));
}

TEST_F(Records, RowPastTheLimitIsNotStoredButCounted) {
    for (int i = 0; i < appt_limit + 1; ++i)
        load("04012026", "09:00");
    EXPECT_EQ(t->appt_count, 6001);
    EXPECT_EQ(t->appt_row(6001), nullptr);
    ASSERT_NE(t->appt_row(6000), nullptr);
    EXPECT_EQ(t->appt_row(6000)->appt_date.str(), QString("04012026"));
}

TEST_F(Records, CountsStopAtTheTopOfTheirSixteenBits) {
    t->cur.cur_appt_date = "04012026";
    t->cur.cur_start = "09:00";
    for (int i = 0; i < 32770; ++i) {
        t->add_appt_row();
        t->add_rmdr_row();
    }
    EXPECT_EQ(t->appt_count, 32767);
    EXPECT_EQ(t->appt_next, 32767);
    EXPECT_EQ(t->rmdr_count, 32767);
}

TEST(LineDate, NeedsDigitsWhereItIsReadAndARealDay) {
    EXPECT_TRUE(is_line_date("03152026"));
    EXPECT_FALSE(is_line_date("02292025"));
    EXPECT_FALSE(is_line_date(" 3152026"));
    EXPECT_FALSE(is_line_date("0315202\t"));
    EXPECT_FALSE(is_line_date("        "));
    EXPECT_FALSE(is_line_date("0315-026"));
    EXPECT_TRUE(is_short_line_date("03/15/26"));
    EXPECT_TRUE(is_short_line_date("03.15.26"));
    EXPECT_FALSE(is_short_line_date("13/15/26"));
    EXPECT_FALSE(is_short_line_date("03/15/2 "));
    EXPECT_FALSE(is_short_line_date("03/15/+6"));
}

TEST_F(Records, ReminderRowPastTheLimitIsNotStoredButCounted) {
    t->rmdr_count = rmdr_limit;
    t->add_rmdr_row();
    EXPECT_EQ(t->rmdr_count, 4501);
    EXPECT_EQ(t->rmdr_row(4501), nullptr);
}

TEST_F(Records, NumberFieldWithNoDigitsKeepsThePreviousLinesValue) {
    appt_rec a;
    a.appt_rem_lead = QString("30");
    t->appt_to_cur(a);
    EXPECT_EQ(t->cur.cur_rem_lead, 30);
    a.appt_rem_lead = QString("  ");
    t->appt_to_cur(a);
    EXPECT_EQ(t->cur.cur_rem_lead, 30);
}

TEST_F(Records, NumberFieldComesBackLeftJustified) {
    appt_rec a;
    a.appt_occurs_every = QString("07");
    t->appt_to_cur(a);
    t->cur.cur_appt_date = "04012026";
    t->add_appt_row();
    EXPECT_EQ(t->appt_row(1)->appt_occurs_every.str(), QString("7 "));
}

TEST_F(Records, ReminderLineTravelsThroughTheAppointmentMembers) {
    rmdr_rec r;
    r.rmdr_date = QString("04/01/26");
    r.rmdr_appt_date = QString("04022026");
    r.rmdr_id = QString("150900000123");
    r.rmdr_fired = QString("T");
    r.rmdr_anim = QString("3 ");
    r.rmdr_again_count = QString("2 ");
    t->rmdr_to_cur(r);
    EXPECT_EQ(t->cur.cur_appt_date, QString("04/01/26"));
    EXPECT_EQ(t->cur.cur_rmdr_appt_date, QString("04022026"));
    EXPECT_EQ(t->cur.cur_rem_anim, 3);
    t->add_rmdr_row();
    EXPECT_EQ(0, std::memcmp(t->rmdr_row(1), &r, sizeof r));
}

TEST(NumberField, HoldsDigitsLeftJustified) {
    EXPECT_EQ(number_field(0), QString("0 "));
    EXPECT_EQ(number_field(7), QString("7 "));
    EXPECT_EQ(number_field(12), QString("12"));
}

TEST(FieldNumber, ReadsDigitsAndKeepsOtherwise) {
    EXPECT_EQ(field_number("7 ", 3), 7);
    EXPECT_EQ(field_number("12", 3), 12);
    EXPECT_EQ(field_number("  ", 3), 3);
    EXPECT_EQ(field_number("x ", -1), -1);
}

// Date texts and the yymm of the member they name.
struct DateCase {
    const char* name;
    const char* text;
    bool is_short; // "mm/dd/yy" rather than "mmddyyyy"
    QDate expected;
    const char* yymm;
};

class DateText : public ::testing::TestWithParam<DateCase> {};

TEST_P(DateText, TurnsIntoTheDateAndNamesItsMember) {
    const DateCase& c = GetParam();
    const QString text = QString::fromLatin1(c.text);
    EXPECT_EQ(c.is_short ? short_to_date(text) : text_to_date(text), c.expected);
    EXPECT_EQ(c.is_short ? rmdr_yymm(text) : appt_yymm(text), QString::fromLatin1(c.yymm));
}

INSTANTIATE_TEST_SUITE_P(
    Records, DateText,
    ::testing::Values(DateCase{"MidMarch", "03152026", false, QDate(2026, 3, 15), "2603"},
                      DateCase{"LeapDay", "02292024", false, QDate(2024, 2, 29), "2402"},
                      DateCase{"NoLeapDayIsInvalid", "02292025", false, QDate(), "2502"},
                      DateCase{"LastDayOfCentury", "12312099", false, QDate(2099, 12, 31), "9912"},
                      DateCase{"MonthThirteenIsInvalid", "13012026", false, QDate(), "2613"},
                      DateCase{"ShortMidMarch", "03/15/26", true, QDate(2026, 3, 15), "2603"},
                      DateCase{"ShortCenturyIsAlwaysTwenty", "12/31/99", true, QDate(2099, 12, 31),
                               "9912"},
                      DateCase{"ShortYearZero", "01/01/00", true, QDate(2000, 1, 1), "0001"},
                      DateCase{"ShortNovember", "11/02/25", true, QDate(2025, 11, 2), "2511"},
                      DateCase{"BlankIsInvalid", "        ", false, QDate(), "    "}),
    [](const ::testing::TestParamInfo<DateCase>& i) { return std::string(i.param.name); });

TEST(Yymm, IsTwoDigitYearThenMonth) {
    EXPECT_EQ(yymm_of(QDate(2026, 3, 1)), QString("2603"));
    EXPECT_EQ(yymm_of(QDate(2009, 11, 30)), QString("0911"));
}
