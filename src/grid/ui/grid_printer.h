#pragma once

#include "core/modal.h"
#include "grid/grid.h"
#include "grid/ui/grid_model.h"

#include <QString>

namespace orva {

// Prints one copy of a grid as it stands: its shown rows and columns, texts,
// fonts, colours, alignments and pictures, with a grid line around every
// cell, a bold title above the first page, and the fixed rows repeated at the
// top of each page. Columns wider than the page together are scaled down to
// fit its width; rows run on over as many pages as they need. Margins are in
// twips on every side. Returns false when the printer or file could not be
// opened or written.
bool print_grid(const Grid& grid, const PrintSetup& setup, const QString& title, int margin_twips,
                const PictureProvider& pictures = {});

inline const QString print_failed_msg =
    QStringLiteral("The page could not be printed. Check the printer, or the folder the file was to go to.");

} // namespace orva
