#pragma once

#include "core/modal.h"
#include "grid/grid.h"
#include "grid/ui/grid_model.h"

#include <QString>

class QPrinter;

namespace orva {

// PrintGrid of the grid layer: one copy of a grid as it stands, its shown
// rows and columns at their sizes, with merged blocks drawn once, texts,
// fonts, colours, alignments, pictures, check boxes and cell borders, and a
// thin grid line around every cell. Rows run on over as many pages as they
// need, the fixed rows repeated at the top of each; columns wider than the
// page together are scaled down, rows with them, to fit its width. `name` is
// the document's name and the line at the foot of every page (with the page
// number when there are more). Margins are in twips: left and right, top and
// bottom. The paper is the setup's, letter when it names none; the setup's
// copy count is not looked at: a caller wanting more prints more. Returns
// false when the printer or file could not be opened or written; a PDF file
// begun and not finished is removed.
bool PrintGrid(const Grid& grid, const PrintSetup& setup, const QString& name, int margin_lr,
               int margin_tb, const PictureProvider& pictures = {});

// The same onto a printer the caller has set up (output, paper, orientation).
bool PrintGrid(const Grid& grid, QPrinter& printer, const QString& name, int margin_lr,
               int margin_tb, const PictureProvider& pictures = {});

} // namespace orva
