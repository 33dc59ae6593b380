// The grid layer's save format: the input is read with Grid::load_bytes, in
// each of the three ways a load can be asked for; a grid that loads is worked
// on a little, saved, loaded into a fresh grid and saved again, and the two
// saves must be the same bytes.

#include "fuzz_support.h"

#include "grid/grid.h"

using namespace orva;

namespace {

// Reads every cell's settings and merged block and sizes the columns, as a
// view and the printing do; a big grid gets a few cells only.
void work_on(Grid& g) {
    const bool small = qint64(g.Rows()) * g.Cols() <= 2500;
    const int rows = small ? g.Rows() : std::min(g.Rows(), 3);
    const int cols = small ? g.Cols() : std::min(g.Cols(), 3);
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < cols; ++c) {
            for (CellSetting s :
                 {CellSetting::Text, CellSetting::Data, CellSetting::BackColor,
                  CellSetting::ForeColor, CellSetting::Picture, CellSetting::PictureAlignment,
                  CellSetting::Alignment, CellSetting::FontName, CellSetting::FontSize,
                  CellSetting::FontBold, CellSetting::FontItalic, CellSetting::FontUnderline})
                (void)g.Cell(s, r, c);
            (void)g.merged_range(r, c);
            (void)g.border(r, c);
        }
    }
    if (small && g.Cols() > 0) g.AutoSize(0, g.Cols() - 1);
    (void)g.RowPos(g.Rows() - 1);
    (void)g.ColPos(g.Cols() - 1);
    g.ShowCell(g.Rows() - 1, g.Cols() - 1);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::init_process();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray input = fuzz::bytes_of(data, size);
    for (GridSave what : {GridSave::All, GridSave::Contents, GridSave::Format}) {
        Grid g(2, 2);
        g.setTextMatrix(0, 0, QStringLiteral("before"));
        if (!g.load_bytes(input, what)) {
            // A load that fails leaves the grid as it was.
            if (g.Rows() != 2 || g.TextMatrix(0, 0) != u"before") __builtin_trap();
            continue;
        }
        work_on(g);
        const QByteArray once = g.save_bytes(what);
        Grid again;
        if (!again.load_bytes(once, what)) __builtin_trap();
        if (again.save_bytes(what) != once) __builtin_trap();
    }
    return 0;
}
