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

    // Each cell's number is read once, not at every comparison: a list of
    // thousands of rows compares each row some dozen times.
    const int span = col2 - col1 + 1;
    struct Key {
        double value = 0;
        bool number = false;
        QString folded; // generic texts that are no number, case folded
    };
    std::vector<Key> keys;
    if (numeric || generic) {
        keys.resize(size_t(n) * span);
        for (int i = 0; i < n; ++i)
            for (int c = col1; c <= col2; ++c) {
                Key& k = keys[size_t(i) * span + (c - col1)];
                const QString& text = at(first + i, c).text;
                k.value = text.trimmed().toDouble(&k.number);
                if (generic && !k.number) k.folded = text.toCaseFolded();
            }
    }
    auto compare = [&](int ra, int rb, int c) -> int {
        const QString& a = at(ra, c).text;
        const QString& b = at(rb, c).text;
        if (numeric || generic) {
            const Key& x = keys[size_t(ra - first) * span + (c - col1)];
            const Key& y = keys[size_t(rb - first) * span + (c - col1)];
            if (numeric || (x.number && y.number))
                return x.value < y.value ? -1 : (y.value < x.value ? 1 : 0);
            // Comparing folded texts is the case-blind comparison, done once.
            return (x.number ? a.toCaseFolded() : x.folded)
                .compare(y.number ? b.toCaseFolded() : y.folded, Qt::CaseSensitive);
        }
        return a.compare(b, Qt::CaseSensitive);
    };

    std::vector<int> order_of(n);
    std::iota(order_of.begin(), order_of.end(), first);
    std::stable_sort(order_of.begin(), order_of.end(), [&](int ra, int rb) {
        for (int c = col1; c <= col2; ++c) {
            const int k = compare(ra, rb, c);
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
