#pragma once

#include <QtGlobal>

namespace orva {

// A colour as the program stores it: 24 bits, red in the low byte, blue in the
// high one, so RGB(0,0,125) is 125 << 16.
using Color = quint32;
constexpr Color rgb(int r, int g, int b) {
    return Color(r & 0xFF) | (Color(g & 0xFF) << 8) | (Color(b & 0xFF) << 16);
}
constexpr int red_of(Color c) {
    return int(c & 0xFF);
}
constexpr int green_of(Color c) {
    return int((c >> 8) & 0xFF);
}
constexpr int blue_of(Color c) {
    return int((c >> 16) & 0xFF);
}

// Cell and picture alignments, numbered as the grid's callers store them.
enum class Align : int {
    LeftTop = 0,
    LeftCenter = 1,
    LeftBottom = 2,
    CenterTop = 3,
    CenterCenter = 4,
    CenterBottom = 5,
    RightTop = 6,
    RightCenter = 7,
    RightBottom = 8,
    General = 9, // text left, numbers right
};

// The per-cell attributes reachable through Cell().
enum class CellSetting {
    Text,
    Data,             // any value the logic hangs on a cell; never shown
    BackColor,        // Color; unset means the grid's own
    ForeColor,        // Color
    Picture,          // picture key (QString); empty means none
    PictureAlignment, // Align
    Alignment,        // Align of the text
    FontName,
    FontSize, // points, double
    FontBold,
    FontItalic,
    FontUnderline,
};

// How equal neighbouring texts merge; only the rows and columns switched on
// with MergeRow / MergeCol take part.
enum class MergeMode {
    Never = 0,
    Free = 1,
    RestrictRows = 2,
    RestrictColumns = 3,
    RestrictAll = 4
};

enum class SortOrder {
    GenericAscending = 1,
    GenericDescending = 2,
    NumericAscending = 3,
    NumericDescending = 4,
    StringAscending = 7,
    StringDescending = 8
};

// What a column's cells hold. A Boolean column shows each cell as a check box
// read from its text (see Grid::CellChecked) instead of the text itself.
enum class ColType { Text = 0, Boolean = 1 };

// The box a cell of a Boolean column shows.
enum class CheckBox { None, Unchecked, Checked };

// What SaveGrid / LoadGrid carry.
enum class GridSave { All = 0, Contents = 1, Format = 2 };

// A box around a cell: widths in pixels (0 none), drawn in one colour. The
// inner lines of a range are stored on the cells they separate.
struct CellBorderSpec {
    Color color = 0;
    int left = 0, top = 0, right = 0, bottom = 0;
    bool operator==(const CellBorderSpec&) const = default;
};

} // namespace orva
