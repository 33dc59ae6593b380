#include "appointments/stickers.h"

#include "store/records.h"

#include <QHash>

namespace orva {

namespace {

struct Row {
    const char* key;
    const char* caption;
    const char16_t* emoji;
};

// The blanks behind " Bus ", " Hammer ", " Holiday " and " Phone " belong to
// the captions, and Misc 13 and 14 never existed: users know the list so.
constexpr Row rows[] = {
    {"Airplane", " Airplane", u"\u2708\uFE0F"},
    {"Alarm", " Alarm", u"\u23F0"},
    {"Alarmclock", " Alarmclock", u"\U0001F570\uFE0F"},
    {"reminder", " Appointment Reminder", u"\U0001F4C5"},
    {"Audio", " Audio", u"\U0001F3A7"},
    {"Backpack", " Backpack", u"\U0001F392"},
    {"Ballons", " Ballons", u"\U0001F388"},
    {"Bicycle", " Bicycle", u"\U0001F6B2"},
    {"Binoculars", " Binoculars", u"\U0001F52D"},
    {"Birthday", " Birthday", u"\U0001F382"},
    {"Boat", " Boat", u"\u26F5"},
    {"Bus", " Bus ", u"\U0001F68C"},
    {"Camera", " Camera", u"\U0001F4F7"},
    {"Candle", " Candle", u"\U0001F56F\uFE0F"},
    {"Car", " Car", u"\U0001F697"},
    {"Cards", " Cards", u"\U0001F0CF"},
    {"Celebration", " Celebration", u"\U0001F389"},
    {"Church", " Church", u"\u26EA"},
    {"Coffee", " Coffee", u"\u2615"},
    {"Computer", " Computer", u"\U0001F4BB"},
    {"Dentist", " Dentist", u"\U0001F9B7"},
    {"Dirt Bike", " Dirt Bike", u"\U0001F3CD\uFE0F"},
    {"Dollar sign", " Dollar sign", u"\U0001F4B2"},
    {"Doctor", " Doctor", u"\U0001FA7A"},
    {"Fishing", " Gone Fishing", u"\U0001F3A3"},
    {"USA Flag", " Flag", u"\U0001F1FA\U0001F1F8"},
    {"Gift", " Gift", u"\U0001F381"},
    {"Hammer", " Hammer ", u"\U0001F528"},
    {"Holiday", " Holiday ", u"\U0001F3D6\uFE0F"},
    {"Lilly", " Lilly", u"\U0001F337"},
    {"Mailbox", " Mail", u"\U0001F4EB"},
    {"Newmoon", " Moon1", u"\U0001F311"},
    {"Firstqtrmoon", " Moon2", u"\U0001F313"},
    {"Lastqtrmoon", " Moon3", u"\U0001F317"},
    {"Fullmoon", " Moon4", u"\U0001F315"},
    {"Halfmoon", " Moon5", u"\U0001F319"},
    {"Phone2", " Phone ", u"\u260E\uFE0F"},
    {"Pumpkin", " Pumpkin", u"\U0001F383"},
    {"4leafclover", " shamrock", u"\U0001F340"},
    {"Sleeping bag", " Sleeping bag", u"\U0001F6CC"},
    {"Sports", " Sports", u"\U0001F3C6"},
    {"Tent", " Tent", u"\u26FA"},
    {"baseball", " Sports-Baseball", u"\u26BE"},
    {"basketball", " Sports-basketball", u"\U0001F3C0"},
    {"football", " Sports-Football", u"\U0001F3C8"},
    {"golf", " Sports-golf", u"\u26F3"},
    {"soccer", " Sports-soccer", u"\u26BD"},
    {"T Bear", " T Bear", u"\U0001F9F8"},
    {"Truck", " Truck", u"\U0001F69A"},
    {"TV", " TV", u"\U0001F4FA"},
    {"Vacation", " Vacation", u"\U0001F9F3"},
    {"Happy Face", " Misc 1", u"\U0001F60A"},
    {"Sad Sack", " Misc 2", u"\U0001F61E"},
    {"Snowflake", " Misc 3", u"\u2744\uFE0F"},
    {"Pen Tip", " Misc 4", u"\u2712\uFE0F"},
    {"Note1", " Misc 5", u"\U0001F4DD"},
    {"wrench", " Misc 6", u"\U0001F527"},
    {"House", " Misc 7", u"\U0001F3E0"},
    {"Openbook", " Misc 8", u"\U0001F4D6"},
    {"Notes", " Misc 9", u"\U0001F5D2\uFE0F"},
    {"Info", " Misc 10", u"\u2139\uFE0F"},
    {"Question", " Misc 11", u"\u2753"},
    {"Lightbulb", " Misc 12", u"\U0001F4A1"},
    {"Silverware", " Misc 15", u"\U0001F374"},
    {"Lock", " Misc 16", u"\U0001F512"},
    {"Music", " Misc 17", u"\U0001F3B5"},
    {"Heart", " Misc 18", u"\u2764\uFE0F"},
    {"Key", " Misc 19", u"\U0001F511"},
    {"Pin", " Misc 20", u"\U0001F4CC"},
    {"Trash", " Misc 21", u"\U0001F5D1\uFE0F"},
    {"Hand", " Misc 22", u"\u270B"},
    {"Scroll", " Misc 23", u"\U0001F4DC"},
    {"Speaker", " Misc 24", u"\U0001F508"},
};

// Pictures of the detail pane's lines; they share the image list with the
// stickers but are not offered in any list.
constexpr Row detail_rows[] = {
    {"DtlTime", "", u"\U0001F551"},
    {"DtlReminder", "", u"\U0001F514"},
    {"DtlCount", "", u"\U0001F522"},
};

// Corner pictures of the skins (themePic), drawn like the stickers so that
// the band shows the same emoji font as the planners.
constexpr Row skin_rows[] = {
    {"Flag", "", u"\U0001F1FA\U0001F1F8"}, {"Ctree", "", u"\U0001F332"},
    {"Xmasbells", "", u"\U0001F514"},      {"Valentine", "", u"\U0001F498"},
    {"Easter_lilly", "", u"\U0001F337"},   {"pumpkin2", "", u"\U0001F383"},
    {"Globe", "", u"\U0001F30D"},          {"St_patrick_hat", "", u"\U0001F3A9"},
    {"Sun", "", u"\u2600\uFE0F"},          {"Thanksgiving1", "", u"\U0001F983"},
};

const QHash<QString, QString>& emoji_by_key() {
    static const QHash<QString, QString> map = [] {
        QHash<QString, QString> m;
        for (const Row& r : rows)
            m.insert(QString::fromLatin1(r.key), QString::fromUtf16(r.emoji));
        for (const Row& r : detail_rows)
            m.insert(QString::fromLatin1(r.key), QString::fromUtf16(r.emoji));
        // "Snowflake" is a sticker already and serves both.
        for (const Row& r : skin_rows)
            m.insert(QString::fromLatin1(r.key), QString::fromUtf16(r.emoji));
        return m;
    }();
    return map;
}

} // namespace

const std::vector<Sticker>& sticker_table() {
    static const std::vector<Sticker> table = [] {
        std::vector<Sticker> t;
        t.reserve(std::size(rows));
        for (const Row& r : rows)
            t.push_back({QString::fromLatin1(r.key), QString::fromLatin1(r.caption)});
        return t;
    }();
    return table;
}

QString StickerList::selected_key() const {
    if (list_index < 0 || list_index >= int(items.size())) return {};
    return items[size_t(list_index)].key;
}

void StickerList::select_type(const QString& type) {
    if (items.empty()) {
        list_index = -1;
        return;
    }
    list_index = 0;
    const QString key = rtrim(type);
    // A quick entry holds "0", which no row carries: it means no sticker.
    if (key.isEmpty() || key == u"0") return;
    for (size_t i = 0; i < items.size(); ++i) {
        if (!items[i].key.isEmpty() && items[i].key == key) {
            list_index = int(i);
            return;
        }
    }
}

void fill_stickers(StickerList& list, const QString& form_name) {
    list.items.clear();
    list.items.push_back({QString(), sticker_select_caption, QString()});
    if (form_name != u"frmSearch" && form_name != u"frmQuick")
        list.items.push_back({QString(), sticker_delete_caption, QString()});
    for (const Sticker& st : sticker_table())
        list.items.push_back({st.key, st.caption, st.key});
}

QString picture_emoji(const QString& key) {
    return emoji_by_key().value(rtrim(key));
}

} // namespace orva
