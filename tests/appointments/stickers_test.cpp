#include "../store/store_fixtures.h"
#include "appointments/stickers.h"

#include <QSet>
#include <gtest/gtest.h>
#include <string>

namespace orva {
namespace {

TEST(Stickers, TableHasSeventyThreeRowsFromAirplaneToSpeaker) {
    const auto& t = sticker_table();
    ASSERT_EQ(t.size(), 73u);
    EXPECT_EQ(t.front().key, "Airplane");
    EXPECT_EQ(t.front().caption, " Airplane");
    EXPECT_EQ(t.back().key, "Speaker");
    EXPECT_EQ(t.back().caption, " Misc 24");
}

struct Spot {
    size_t index; // 0-based position in the table
    const char* key;
    const char* caption;
};

class StickerRow : public ::testing::TestWithParam<Spot> {};

TEST_P(StickerRow, HasItsKeyAndCaptionCharacterForCharacter) {
    const Spot& p = GetParam();
    const auto& t = sticker_table();
    ASSERT_LT(p.index, t.size());
    EXPECT_EQ(t[p.index].key, QString::fromLatin1(p.key));
    EXPECT_EQ(t[p.index].caption, QString::fromLatin1(p.caption));
}

// Positions are the list rows less the two special ones.
INSTANTIATE_TEST_SUITE_P(
    OddOnes, StickerRow,
    ::testing::Values(Spot{1, "Alarm", " Alarm"}, Spot{2, "Alarmclock", " Alarmclock"},
                      Spot{3, "reminder", " Appointment Reminder"}, Spot{6, "Ballons", " Ballons"},
                      Spot{11, "Bus", " Bus "}, Spot{21, "Dirt Bike", " Dirt Bike"},
                      Spot{22, "Dollar sign", " Dollar sign"}, Spot{23, "Doctor", " Doctor"},
                      Spot{24, "Fishing", " Gone Fishing"}, Spot{25, "USA Flag", " Flag"},
                      Spot{27, "Hammer", " Hammer "}, Spot{28, "Holiday", " Holiday "},
                      Spot{30, "Mailbox", " Mail"}, Spot{31, "Newmoon", " Moon1"},
                      Spot{32, "Firstqtrmoon", " Moon2"}, Spot{33, "Lastqtrmoon", " Moon3"},
                      Spot{34, "Fullmoon", " Moon4"}, Spot{35, "Halfmoon", " Moon5"},
                      Spot{36, "Phone2", " Phone "}, Spot{38, "4leafclover", " shamrock"},
                      Spot{39, "Sleeping bag", " Sleeping bag"},
                      Spot{42, "baseball", " Sports-Baseball"},
                      Spot{43, "basketball", " Sports-basketball"}, Spot{47, "T Bear", " T Bear"},
                      Spot{51, "Happy Face", " Misc 1"}, Spot{52, "Sad Sack", " Misc 2"},
                      Spot{62, "Lightbulb", " Misc 12"}, Spot{63, "Silverware", " Misc 15"},
                      Spot{71, "Scroll", " Misc 23"}),
    [](const ::testing::TestParamInfo<Spot>& i) {
        std::string n = i.param.key;
        std::erase(n, ' ');
        return n;
    });

TEST(Stickers, MiscThirteenAndFourteenDoNotExist) {
    for (const Sticker& st : sticker_table()) {
        EXPECT_NE(st.caption, " Misc 13");
        EXPECT_NE(st.caption, " Misc 14");
    }
}

TEST(Stickers, EveryCaptionStartsWithABlankAndKeysAreUnique) {
    QSet<QString> keys;
    for (const Sticker& st : sticker_table()) {
        EXPECT_TRUE(st.caption.startsWith(u' ')) << st.caption.toStdString();
        EXPECT_FALSE(st.key.isEmpty());
        keys.insert(st.key);
    }
    EXPECT_EQ(keys.size(), 73);
}

TEST(Stickers, LongestKeyIsFirstqtrmoonAndNoneExceedsTheField) {
    QString longest;
    for (const Sticker& st : sticker_table()) {
        EXPECT_LE(st.key.size(), 15) << st.key.toStdString();
        if (st.key.size() > longest.size()) longest = st.key;
    }
    EXPECT_EQ(longest, "Firstqtrmoon");
    EXPECT_EQ(longest.size(), 12);
}

TEST(Stickers, QuickAndSearchListsOfferOnlyTheSelectRow) {
    for (const char* form : {"frmQuick", "frmSearch"}) {
        StickerList l;
        fill_stickers(l, QString::fromLatin1(form));
        ASSERT_EQ(l.items.size(), 74u) << form;
        EXPECT_EQ(l.items[0].caption, " <select a virtual sticker>");
        EXPECT_EQ(l.items[0].key, "");
        EXPECT_EQ(l.items[0].picture, "");
        EXPECT_EQ(l.items[1].key, "Airplane");
        EXPECT_EQ(l.items[1].picture, "Airplane");
        EXPECT_EQ(l.items[73].caption, " Misc 24");
    }
}

TEST(Stickers, EditorAndToDoListsOfferBothSpecialRows) {
    for (const char* form : {"frmAppt1", "frmToDo"}) {
        StickerList l;
        fill_stickers(l, QString::fromLatin1(form));
        ASSERT_EQ(l.items.size(), 75u) << form;
        EXPECT_EQ(l.items[0].caption, " <select a virtual sticker>");
        EXPECT_EQ(l.items[1].caption, " <delete virtual sticker>");
        EXPECT_EQ(l.items[1].key, "");
        EXPECT_EQ(l.items[1].picture, "");
        EXPECT_EQ(l.items[2].key, "Airplane");
        EXPECT_EQ(l.items[74].key, "Speaker");
        EXPECT_EQ(l.items[74].picture, "Speaker");
    }
}

TEST(Stickers, FillLeavesTheSelectionToTheCaller) {
    StickerList l;
    l.list_index = 5;
    fill_stickers(l, QStringLiteral("frmAppt1"));
    EXPECT_EQ(l.list_index, 5);
    StickerList fresh;
    fill_stickers(fresh, QStringLiteral("frmQuick"));
    EXPECT_EQ(fresh.list_index, -1);
    EXPECT_EQ(fresh.selected_key(), "");
}

TEST(Stickers, RefillingDoesNotDuplicateRows) {
    StickerList l;
    fill_stickers(l, QStringLiteral("frmAppt1"));
    fill_stickers(l, QStringLiteral("frmAppt1"));
    EXPECT_EQ(l.items.size(), 75u);
}

TEST(Stickers, DeleteRowStoresNoKey) {
    StickerList l;
    fill_stickers(l, QStringLiteral("frmAppt1"));
    l.list_index = 1;
    EXPECT_EQ(l.items[1].caption, " <delete virtual sticker>");
    EXPECT_EQ(l.selected_key(), "");
    l.list_index = 0;
    EXPECT_EQ(l.selected_key(), "");
}

TEST(Stickers, SelectedRowGivesItsKey) {
    StickerList l;
    fill_stickers(l, QStringLiteral("frmQuick"));
    l.list_index = 39; // "4leafclover" behind the one special row
    EXPECT_EQ(l.selected_key(), "4leafclover");
}

TEST(Stickers, SelectTypeCutsTrailingBlanks) {
    StickerList l;
    fill_stickers(l, QStringLiteral("frmAppt1"));
    l.select_type(QStringLiteral("Car  "));
    EXPECT_EQ(l.items[size_t(l.list_index)].key, "Car");
    EXPECT_EQ(l.list_index, 16);
    EXPECT_EQ(l.selected_key(), "Car");
    l.select_type(QStringLiteral("Dirt Bike      "));
    EXPECT_EQ(l.selected_key(), "Dirt Bike");
}

TEST(Stickers, SelectTypeOfZeroBlankOrUnknownPicksTheFirstRow) {
    StickerList l;
    fill_stickers(l, QStringLiteral("frmAppt1"));
    for (const char* type : {"0", "0              ", "", "               ", "Meeting", "car"}) {
        l.list_index = 20;
        l.select_type(QString::fromLatin1(type));
        EXPECT_EQ(l.list_index, 0) << '"' << type << '"';
        EXPECT_EQ(l.selected_key(), "");
    }
}

TEST(Stickers, SelectTypeOnAnEmptyListSelectsNothing) {
    StickerList l;
    l.select_type(QStringLiteral("Car"));
    EXPECT_EQ(l.list_index, -1);
    EXPECT_EQ(l.selected_key(), "");
}

TEST(Stickers, EveryKeyHasItsOwnEmoji) {
    QSet<QString> seen;
    for (const Sticker& st : sticker_table()) {
        const QString e = picture_emoji(st.key);
        EXPECT_FALSE(e.isEmpty()) << st.key.toStdString();
        EXPECT_FALSE(seen.contains(e)) << st.key.toStdString() << " repeats a picture";
        seen.insert(e);
    }
}

TEST(Stickers, DetailLineKeysHaveEmoji) {
    EXPECT_EQ(picture_emoji(QStringLiteral("DtlTime")), QString::fromUtf8("\U0001F551"));
    EXPECT_EQ(picture_emoji(QStringLiteral("DtlReminder")), QString::fromUtf8("\U0001F514"));
    EXPECT_EQ(picture_emoji(QStringLiteral("DtlCount")), QString::fromUtf8("\U0001F522"));
}

TEST(Stickers, KnownPicturesMatchTheirKeys) {
    EXPECT_EQ(picture_emoji(QStringLiteral("Airplane")), QString::fromUtf8("\u2708\uFE0F"));
    EXPECT_EQ(picture_emoji(QStringLiteral("Birthday")), QString::fromUtf8("\U0001F382"));
    EXPECT_EQ(picture_emoji(QStringLiteral("Pumpkin")), QString::fromUtf8("\U0001F383"));
    EXPECT_EQ(picture_emoji(QStringLiteral("Newmoon")), QString::fromUtf8("\U0001F311"));
    EXPECT_EQ(picture_emoji(QStringLiteral("Fullmoon")), QString::fromUtf8("\U0001F315"));
    EXPECT_EQ(picture_emoji(QStringLiteral("USA Flag")), QString::fromUtf8("\U0001F1FA\U0001F1F8"));
    EXPECT_EQ(picture_emoji(QStringLiteral("4leafclover")), QString::fromUtf8("\U0001F340"));
    EXPECT_EQ(picture_emoji(QStringLiteral("Speaker")), QString::fromUtf8("\U0001F508"));
    EXPECT_NE(picture_emoji(QStringLiteral("Alarm")), picture_emoji(QStringLiteral("Alarmclock")));
}

TEST(Stickers, PaddedKeyFindsItsPicture) {
    EXPECT_EQ(picture_emoji(QStringLiteral("Car            ")),
              picture_emoji(QStringLiteral("Car")));
    EXPECT_FALSE(picture_emoji(QStringLiteral("Car            ")).isEmpty());
}

TEST(Stickers, UnknownOrEmptyKeyHasNoPicture) {
    EXPECT_EQ(picture_emoji(QStringLiteral("Meeting")), "");
    EXPECT_EQ(picture_emoji(QStringLiteral("0")), "");
    EXPECT_EQ(picture_emoji(QString()), "");
    EXPECT_EQ(picture_emoji(QStringLiteral("               ")), "");
    EXPECT_EQ(picture_emoji(QStringLiteral("car")), ""); // keys are matched as written
}

} // namespace
} // namespace orva
