#include "grid/grid.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace orva {

void Grid::Sort(SortOrder order, int col) {
    Sort(order, col, col);
}

void Grid::Sort(SortOrder order) {
    Sort(order, s_.col, s_.col_sel);
}

void Grid::Sort(SortOrder order, int col1, int col2) {
    if (col1 > col2) std::swap(col1, col2);
    if (col1 < 0 || col2 >= s_.cols) return fail(err::subscript);
    sort_rows(order, col1, col2);
    touch();
}

void Grid::sort_rows(SortOrder order, int col1, int col2) {
    const int first = s_.fixed_rows;
    const int n = s_.rows - first;
    if (n < 2) return;
    const bool descending = order == SortOrder::GenericDescending ||
                            order == SortOrder::NumericDescending ||
                            order == SortOrder::StringDescending;
    const bool numeric =
        order == SortOrder::NumericAscending || order == SortOrder::NumericDescending;
    const bool generic =
        order == SortOrder::GenericAscending || order == SortOrder::GenericDescending;

    auto compare = [&](const QString& a, const QString& b) -> int {
        if (numeric) {
            const double x = a.trimmed().toDouble(), y = b.trimmed().toDouble();
            return x < y ? -1 : (y < x ? 1 : 0);
        }
        if (generic) {
            bool ok_a = false, ok_b = false;
            const double x = a.trimmed().toDouble(&ok_a), y = b.trimmed().toDouble(&ok_b);
            if (ok_a && ok_b) return x < y ? -1 : (y < x ? 1 : 0);
            return a.compare(b, Qt::CaseInsensitive);
        }
        return a.compare(b, Qt::CaseSensitive);
    };

    std::vector<int> order_of(n);
    std::iota(order_of.begin(), order_of.end(), first);
    std::stable_sort(order_of.begin(), order_of.end(), [&](int ra, int rb) {
        for (int c = col1; c <= col2; ++c) {
            const int k = compare(at(ra, c).text, at(rb, c).text);
            if (k != 0) return descending ? k > 0 : k < 0;
        }
        return false;
    });

    const int cols = s_.cols;
    std::vector<CellData> moved(size_t(n) * cols);
    std::vector<int> heights(n);
    std::vector<char> hidden(n), merge(n);
    for (int i = 0; i < n; ++i) {
        const int src = order_of[i];
        for (int c = 0; c < cols; ++c)
            moved[size_t(i) * cols + c] = std::move(at(src, c));
        heights[i] = s_.row_height[src];
        hidden[i] = s_.row_hidden[src];
        merge[i] = s_.merge_row[src];
    }
    std::move(moved.begin(), moved.end(), s_.cells.begin() + ptrdiff_t(first) * cols);
    std::copy(heights.begin(), heights.end(), s_.row_height.begin() + first);
    std::copy(hidden.begin(), hidden.end(), s_.row_hidden.begin() + first);
    std::copy(merge.begin(), merge.end(), s_.merge_row.begin() + first);
}

} // namespace orva
