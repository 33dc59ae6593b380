#pragma once

#include "core/modal.h"
#include "grid/grid.h"

#include <QString>
#include <functional>

namespace orva {

// What the print jobs of the main form share: the margins, what the last
// print dialog settled, and the hand that puts a grid on paper.
struct PrintState {
    int margin_lr = 720, margin_tb = 720; // twips, each side
    bool print_selection = false;         // the user chose to print the selection
    bool print_cancel = false;            // the dialog was cancelled
    // The printer as the last dialog left it; the next dialog starts from it.
    PrintSetup printer;
    // Prints one copy of a grid as `setup` says (its copy count is one), with
    // `name` as the document's name and the line at the foot of each page,
    // margins in twips. False when the printer or the file could not be
    // written. The window installs the grid layer's PrintGrid; unset, nothing
    // is printed and every copy fails.
    std::function<bool(const Grid& grid, const PrintSetup& setup, const QString& name,
                       int margin_lr, int margin_tb)>
        print_grid;
};

} // namespace orva
