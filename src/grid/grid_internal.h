#pragma once

#include "grid/grid.h"

#include <QString>
#include <QVariant>
#include <optional>
#include <utility>

namespace orva {

// What a cell carries beyond its text, shared by the grid layer's own sources
// and included by nothing else: the views reach a cell through Grid::Cell, so
// this layout can change without them noticing.
struct Grid::Attrs {
    QVariant data;
    std::optional<Color> back, fore;
    QString picture; // empty: none
    std::optional<int> pic_align, align;
    QString font_name; // empty: the grid's
    std::optional<double> font_size;
    std::optional<bool> bold, italic, underline;
    CellBorderSpec border;

    bool has_format() const {
        return back || fore || !picture.isEmpty() || pic_align || align || !font_name.isEmpty() ||
               font_size || bold || italic || underline || border != CellBorderSpec{};
    }
    void clear_format() {
        QVariant keep = std::move(data);
        *this = Attrs{};
        data = std::move(keep);
    }
};

} // namespace orva
