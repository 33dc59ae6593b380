#pragma once

#include <QString>
#include <vector>

namespace orva {

// A virtual sticker: the key stored in appt_type (at most 15 characters) that
// also names its picture, and the caption shown in a list.
struct Sticker {
    QString key;     // empty for the two special rows
    QString caption; // begins with a blank that keeps it clear of the picture
};

// The 73 keyed stickers in list order ("Airplane" .. "Speaker").
const std::vector<Sticker>& sticker_table();
inline const QString sticker_select_caption = QStringLiteral(" <select a virtual sticker>");
inline const QString sticker_delete_caption = QStringLiteral(" <delete virtual sticker>");

// A form's typeIcombo as the logic sees it: rows with key, caption and
// picture key, and the selected position (-1 none).
struct StickerList {
    struct Item {
        QString key;
        QString caption;
        QString picture; // the key again; empty for the special rows
    };
    std::vector<Item> items;
    int list_index = -1;
    // Key of the selected row; "" for a special row or no selection.
    QString selected_key() const;
    // Selects the row of `type` with trailing blanks cut; the first row when
    // it is empty, "0" or unknown.
    void select_type(const QString& type);
};

// Loads the list for the form named `form_name`: "frmSearch" and "frmQuick"
// get only the first special row, every other form both; then the table. The
// selection is left to the caller.
void fill_stickers(StickerList& list, const QString& form_name);

// The emoji that draws a sticker or other picture key, "" for a key with none.
// Besides the sticker keys it knows the detail-line keys ("DtlTime",
// "DtlReminder", "DtlCount") and the skins' corner pictures ("Globe", ...).
QString picture_emoji(const QString& key);

} // namespace orva
