#include "store/member_format.h"

#include "store_fixtures.h"

#include <gtest/gtest.h>

using namespace orva;
using orva::testing::make_appt;
using orva::testing::make_rmdr;

TEST(MemberFormat, AppointmentLineIsTheFieldsInOrderWithNothingBetween) {
    appt_rec r = make_appt("03152026", "150900001234", "09:00", "Dentist");
    r.appt_notes = QString("bring card");
    r.appt_pattern = QString("2 ");
    const QByteArray line = appt_line(r);
    ASSERT_EQ(line.size(), 475);
    EXPECT_EQ(line.mid(0, 8), "03152026");
    EXPECT_EQ(line.mid(8, 8), "03152026");
    EXPECT_EQ(line.mid(16, 5), "09:00");
    EXPECT_EQ(line.mid(26, 12), "150900001234");
    EXPECT_EQ(line.mid(38, 50).trimmed(), "Dentist");
    EXPECT_EQ(line.mid(109, 8), "12/31/26");
    EXPECT_EQ(line.mid(273, 10), "bring card");
    EXPECT_EQ(line.mid(473, 2), "2 ");
}

TEST(MemberFormat, ReminderLineIsTheFieldsInOrderWithNothingBetween) {
    rmdr_rec r = make_rmdr("04/01/26", "150900001234", "08:30");
    r.rmdr_again_count = QString("12");
    const QByteArray line = rmdr_line(r);
    ASSERT_EQ(line.size(), 271);
    EXPECT_EQ(line.mid(18, 12), "150900001234");
    EXPECT_EQ(line.mid(95, 8), "03152026");
    EXPECT_EQ(line.mid(103, 8), "04/01/26");
    EXPECT_EQ(line.mid(111, 5), "08:30");
    EXPECT_EQ(line.mid(116, 1), "F");
    EXPECT_EQ(line.mid(269, 2), "12");
}

TEST(MemberFormat, ReaderTakesFieldsByCountSoALineEndMayStandInAField) {
    appt_rec a = make_appt("03152026", "A1", "09:00", "two\r\nlines");
    appt_rec b = make_appt("03162026", "B2");
    QByteArray bytes = appt_line(a) + line_end + appt_line(b) + line_end;
    MemberReader in(bytes);

    appt_rec got;
    QByteArray rec_end;
    EXPECT_TRUE(in.read_appt(got, rec_end, 2));
    EXPECT_EQ(got.appt_text.trimmed(), QString("two\r\nlines"));
    EXPECT_EQ(rec_end, "\r\n");
    ASSERT_FALSE(in.at_end());
    in.read_appt(got, rec_end, 2);
    EXPECT_EQ(got.appt_id.trimmed(), QString("B2"));
    EXPECT_TRUE(in.at_end());
}

TEST(MemberFormat, ShortLastLineLeavesItsMissingFieldsBlankAndSaysItIsNotWhole) {
    QByteArray bytes = appt_line(make_appt("03152026", "A1")).left(30);
    MemberReader in(bytes);
    appt_rec got;
    QByteArray rec_end;
    EXPECT_FALSE(in.read_appt(got, rec_end, 2));
    EXPECT_EQ(got.appt_date.str(), QString("03152026"));
    EXPECT_EQ(got.appt_id.str(), QString("A1          "));
    EXPECT_TRUE(got.appt_text.is_blank());
    EXPECT_TRUE(rec_end.isEmpty());
    EXPECT_TRUE(in.at_end());
}

TEST(MemberFormat, ReminderRoundTripsByteForByte) {
    rmdr_rec r = make_rmdr("04/01/26", "X9", "23:59");
    r.rmdr_alarm_text = QString::fromLatin1("/home/\xe9t\xe9/alarm.wav");
    QByteArray bytes = rmdr_line(r) + line_end;
    MemberReader in(bytes);
    rmdr_rec got;
    QByteArray rec_end;
    in.read_rmdr(got, rec_end, 2);
    EXPECT_EQ(rmdr_line(got), rmdr_line(r));
    EXPECT_EQ(got.rmdr_alarm_text.trimmed(), QString::fromLatin1("/home/\xe9t\xe9/alarm.wav"));
}

TEST(MemberFormat, ReminderCutInsideItsLastFieldIsNotWholeButOneWithoutItsEndingIs) {
    const QByteArray line = rmdr_line(make_rmdr("04/01/26", "X9"));
    rmdr_rec got;
    QByteArray rec_end;
    const QByteArray cut = line.left(270);
    MemberReader short_in(cut);
    EXPECT_FALSE(short_in.read_rmdr(got, rec_end, 2));
    MemberReader whole_in(line);
    EXPECT_TRUE(whole_in.read_rmdr(got, rec_end, 2));
    EXPECT_TRUE(rec_end.isEmpty());
}
