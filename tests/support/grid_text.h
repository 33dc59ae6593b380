#pragma once

#include "grid/grid.h"

#include <QString>
#include <QStringList>

namespace orva::testing {

// A row or column of a grid as one text, cells joined by "|", so an
// expectation shows the whole line when it fails.
inline QString row_text(const Grid& g, int row) {
    QStringList cells;
    for (int c = 0; c < g.Cols(); ++c)
        cells << g.TextMatrix(row, c);
    return cells.join(QLatin1Char('|'));
}

inline QString column_text(const Grid& g, int col) {
    QStringList cells;
    for (int r = 0; r < g.Rows(); ++r)
        cells << g.TextMatrix(r, col);
    return cells.join(QLatin1Char('|'));
}

} // namespace orva::testing
