#pragma once

#include "core/errors.h"
#include "grid/grid_types.h"

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <functional>
#include <memory>
#include <vector>

namespace orva {

// The headless table of the grid layer: one text per cell plus per-cell
// formatting, rows and columns counted from 0. Every planner computes into one
// of these; a GridWidget only renders it. No operation throws or aborts: a bad
// argument leaves error() set and the grid as it was. A copy carries contents,
// format and cursor but not the view hook: it is not shown anywhere.
class Grid {
  public:
    Grid(int rows = 0, int cols = 0);
    Grid(const Grid& other);
    Grid& operator=(const Grid& other); // keeps this grid's hook and tells its view
    ~Grid();

    // --- size and cursor ------------------------------------------------
    int Rows() const;
    void setRows(int n); // keeps what still fits
    int Cols() const;
    void setCols(int n);
    // The cursor cell; -1 when the grid has no rows (columns). Setting Row or
    // Col also collapses the selection onto it.
    int Row() const;
    void setRow(int r);
    int Col() const;
    void setCol(int c);
    // The far corner of the selection; equals Row/Col when one cell is selected.
    int RowSel() const;
    int ColSel() const;
    void Select(int row, int col);
    void Select(int row, int col, int rowsel, int colsel);
    // Fixed rows and columns are the headings; more fixed rows than rows grows
    // the grid.
    int FixedRows() const;
    void setFixedRows(int n);
    int FixedCols() const;
    void setFixedCols(int n);

    // --- contents -------------------------------------------------------
    // Reading or writing outside the grid sets error() to err::subscript and
    // returns an empty text.
    QString TextMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, const QString& text);
    // Reads give the value in effect: a colour, font or alignment the cell
    // does not set itself comes from its column or the grid (fixed colours for
    // fixed cells). Data and Picture read as empty when unset.
    QVariant Cell(CellSetting s, int row, int col) const;
    void setCell(CellSetting s, int row, int col, const QVariant& v);
    // Sets every cell of the range; corners may come in either order.
    void setCell(CellSetting s, int row1, int col1, int row2, int col2, const QVariant& v);
    // Whether the cell sets the attribute itself rather than inheriting it.
    bool cell_has(CellSetting s, int row, int col) const;
    // A column's data type, Text unless set. Only the view draws it
    // differently: a Boolean cell keeps its text like any other, and Clip,
    // Sort and the file carry that text.
    ColType ColDataType(int col) const;
    void setColDataType(int col, ColType t);
    // The box of a cell in a Boolean column, read from its text: empty or
    // all blanks shows none (the blank rows a list adds stay without one),
    // check_false an empty box, any other text a ticked one. None in every
    // other column.
    CheckBox CellChecked(int row, int col) const;
    // Writes the text of a box: "" for None, check_false, check_true. The
    // view ticks and clears a box through this, so a tick always reads back
    // as check_true.
    void setCellChecked(int row, int col, CheckBox box);
    static inline const QString check_true = QStringLiteral("-1"); // as the program's flags
    static inline const QString check_false = QStringLiteral("0");
    // The selected range (Row/Col to RowSel/ColSel, either way round) as
    // text: cells joined by a tab, rows by "\n", no line end after the last
    // row. Hidden rows and columns count. Empty when nothing is selected.
    QString Clip() const;
    // Writes a text of that form into the cells from the selection's top-left
    // corner on. A selected range holds the text to itself; a single selected
    // cell lets it run as far as it reaches, to the grid's edges, so a copied
    // block pastes whole where the user put the cursor. Pieces beyond either
    // are dropped. "\r\n" and "\r" end rows too, and a line end at the very
    // end of the text ends the last row rather than making an empty one.
    void setClip(const QString& text);
    // Appends a row (row < 0) or inserts it before `row`; the text is split on
    // tabs into cells from column 0. Extra pieces beyond Cols() are dropped.
    void AddItem(const QString& tabbed, int row = -1);
    void RemoveItem(int row);
    // Empties every cell's text, data and formatting (borders too); size,
    // widths, heights, hidden and merge flags stay.
    void Clear();
    // "^Appt Date/Time|^Description": headings in row 0, "^" centre, "<" left,
    // ">" right, which also becomes the column's alignment; sets Cols when the
    // string names more columns and Rows to 1 when the grid had none.
    void setFormatString(const QString& fs);
    // Text alignment of cells in the column that set none themselves.
    Align ColAlignment(int col) const;
    void setColAlignment(int col, Align a);
    // Rows from FixedRows() on, stable; a row moves with its height, hidden
    // and merge flags. Generic compares as numbers when both texts are numbers,
    // String is case-sensitive.
    void Sort(SortOrder order, int col);
    void Sort(SortOrder order, int col1, int col2); // by col1, then col1 + 1 ... col2
    void Sort(SortOrder order);                     // by the selected columns, Col() to ColSel()

    // --- geometry (twips; -1 means the default size) --------------------
    // Reads give the width in effect, so never -1.
    int ColWidth(int col) const;
    void setColWidth(int col, int twips);
    // Reads give the height in effect, never below RowHeightMin.
    int RowHeight(int row) const;
    void setRowHeight(int row, int twips);
    // The least height of every row in twips, 0 (the default) for none; a
    // row's own height stays as set and shows again when this is lowered.
    int RowHeightMin() const;
    void setRowHeightMin(int twips);
    bool RowHidden(int row) const;
    void setRowHidden(int row, bool hidden);
    bool ColHidden(int col) const;
    void setColHidden(int col, bool hidden);
    int TopRow() const;      // first scrollable row shown; set by ShowCell too
    void setTopRow(int row); // drops an earlier ShowCell request
    int LeftCol() const;     // first scrollable column shown, as the view reports it
    // The control's outer size on screen, in twips, as the window's layout
    // placed it; the planners size their columns and rows from it. 0 until
    // the layout has run. Setting it is not a change of the grid.
    int Width() const { return width_; }
    int Height() const { return height_; }
    void set_extent(int width_twips, int height_twips) {
        width_ = width_twips;
        height_ = height_twips;
    }
    // Asks the view to scroll the cell into view; the request is kept.
    void ShowCell(int row, int col);
    int shown_row() const { return shown_row_; }
    int shown_col() const { return shown_col_; }
    // Moves on every TopRow / ShowCell request, so a view acts on each once.
    quint64 scroll_serial() const { return scroll_serial_; }
    // Top / left edge of a cell in twips from the grid's top-left corner, with
    // the fixed rows (columns) always shown and the rest scrolled to TopRow
    // (LeftCol); hidden rows take no room. Negative above the scrolled area.
    int RowPos(int row) const;
    int ColPos(int col) const;
    // Widens the columns col1..col2 (col2 < 0: only col1) to their longest
    // text in the cell's font, plus a small margin; hidden rows count too.
    void AutoSize(int col1, int col2 = -1);
    // How AutoSize measures a text: width in twips. A view installs one that
    // knows the screen's fonts; without it a rough estimate from the point
    // size serves.
    using Measure = std::function<int(const QString& text, const QString& font_name, double points,
                                      bool bold, bool italic)>;
    void set_measure(Measure m);
    static constexpr int default_col_width = 1000; // twips
    static constexpr int default_row_height = 255;

    // --- merging and borders -------------------------------------------
    MergeMode MergeCells() const;
    void setMergeCells(MergeMode m);
    bool MergeRow(int row) const;
    void setMergeRow(int row, bool on);
    bool MergeCol(int col) const;
    void setMergeCol(int col, bool on);
    // The block of equal texts that (row, col) belongs to under the merge
    // settings: first and last row and column, inclusive. Empty texts never
    // merge, and a block never crosses from fixed cells into scrolling ones.
    // Vertical blocks come first; a horizontal block is looked for only when
    // the cell has no vertical partner.
    struct Span {
        int row1, col1, row2, col2;
        bool operator==(const Span&) const = default;
    };
    Span merged_range(int row, int col) const;
    // Border of the selected range: outer sides take left/top/right/bottom,
    // lines between cells inside take vertical/horizontal. Widths in pixels;
    // a negative width leaves that side as it was.
    void CellBorder(Color color, int left, int top, int right, int bottom, int vertical,
                    int horizontal);
    CellBorderSpec border(int row, int col) const;

    // --- grid-wide appearance ------------------------------------------
    Color BackColor() const;
    void setBackColor(Color c);
    Color ForeColor() const;
    void setForeColor(Color c);
    Color BackColorFixed() const;
    void setBackColorFixed(Color c);
    Color ForeColorFixed() const;
    void setForeColorFixed(Color c);
    Color GridColor() const;
    void setGridColor(Color c);
    QString FontName() const;
    void setFontName(const QString& n);
    double FontSize() const;
    void setFontSize(double pt);
    bool FontBold() const;
    void setFontBold(bool b);
    bool FontItalic() const;
    void setFontItalic(bool b);
    bool Editable() const;
    void setEditable(bool e);
    // Texts wider than their cell break between words onto the lines below
    // when the cell (a merged block, a tall row) has room for them.
    bool WordWrap() const;
    void setWordWrap(bool on);
    // Shown by the view when the pointer rests on the grid; a planner sets it
    // from its mouse-move handler. Setting it is not a change of the grid.
    QString ToolTipText() const { return tool_tip_; }
    void setToolTipText(const QString& t) { tool_tip_ = t; }

    // --- drawing --------------------------------------------------------
    // 0 switches drawing off around bulk loads; 1 or 2 switch it on again and
    // tell the view once.
    int Redraw() const;
    void setRedraw(int mode);

    // The cell under the pointer, kept up to date by the view; -1 outside.
    int MouseRow() const { return mouse_row_; }
    int MouseCol() const { return mouse_col_; }
    void set_mouse_cell(int row, int col) {
        mouse_row_ = row;
        mouse_col_ = col;
    }
    // What the view has scrolled to by itself; not a change of the grid.
    void set_view_scroll(int top_row, int left_col);

    // --- files ----------------------------------------------------------
    // Writes the whole grid, contents and format, to a file and reads it back.
    // LoadGrid of a missing file sets err::not_found; of a damaged one
    // err::bad_file, leaving the grid as it was. SaveGrid that cannot write
    // sets err::bad_file. Both return success. Contents carries the size,
    // texts and data; Format the size and everything else.
    bool SaveGrid(const QString& path, GridSave what = GridSave::All) const;
    bool LoadGrid(const QString& path, GridSave what = GridSave::All);
    // The same form as bytes in memory, for a grid kept as a member of the
    // calendar file. load_bytes of damaged bytes sets err::bad_file and
    // leaves the grid as it was.
    QByteArray save_bytes(GridSave what = GridSave::All) const;
    bool load_bytes(const QByteArray& bytes, GridSave what = GridSave::All);
    static constexpr int file_version = 1;

    // --- errors ---------------------------------------------------------
    int error() const { return error_; }
    void clear_error() const { error_ = err::none; }

    // --- view hook ------------------------------------------------------
    // Called after a change while drawing is on, and whenever Redraw switches
    // (off or on), so a view can hold its painting. A view connects here; the
    // logic never needs to.
    void set_changed_hook(std::function<void()> hook);
    quint64 version() const { return version_; } // moves on every change

  private:
    struct Attrs;
    struct CellData {
        QString text;
        std::unique_ptr<Attrs> fmt; // absent for the many plain cells
        CellData();
        CellData(const CellData& o);
        CellData(CellData&&) noexcept;
        CellData& operator=(const CellData& o);
        CellData& operator=(CellData&&) noexcept;
        ~CellData();
        Attrs& attrs();
    };
    // Everything a copy, a save or a load carries; the hook and error stay.
    struct State {
        int rows = 0, cols = 0;
        int row = -1, col = -1, row_sel = -1, col_sel = -1;
        int fixed_rows = 0, fixed_cols = 0;
        MergeMode merge = MergeMode::Never;
        bool editable = false;
        bool word_wrap = false;
        Color back = rgb(255, 255, 255), fore = 0, back_fixed = rgb(212, 208, 200), fore_fixed = 0,
              grid_color = rgb(192, 192, 192);
        QString font_name = QStringLiteral("DejaVu Sans");
        double font_size = 9;
        bool font_bold = false, font_italic = false;
        std::vector<CellData> cells;            // row-major, rows x cols
        std::vector<int> col_width, row_height; // -1 default
        std::vector<char> row_hidden, col_hidden, merge_row, merge_col;
        std::vector<int> col_align; // Align, General by default
        std::vector<int> col_type;  // ColType, Text by default
        int row_height_min = 0;     // twips
    };
    friend struct GridFile;

    void touch();
    bool in_range(int row, int col) const;
    bool check(int row, int col) const; // in_range, else fail(subscript)
    void fail(int e) const { error_ = e; }
    CellData& at(int row, int col) { return s_.cells[size_t(row) * s_.cols + col]; }
    const CellData& at(int row, int col) const { return s_.cells[size_t(row) * s_.cols + col]; }
    static void resize(State& st, int rows, int cols);
    static void fix_cursor(State& st);
    bool same_text(int r1, int c1, int r2, int c2) const;
    bool merges_down(int row, int col) const;
    bool merges_right(int row, int col) const;
    void sort_rows(SortOrder order, int col1, int col2);

    State s_;
    int top_row_ = 0, left_col_ = 0;
    int shown_row_ = -1, shown_col_ = -1;
    quint64 scroll_serial_ = 0;
    int mouse_row_ = -1, mouse_col_ = -1;
    int width_ = 0, height_ = 0;
    int redraw_ = 1;
    QString tool_tip_;
    Measure measure_;
    mutable int error_ = 0;
    quint64 version_ = 0;
    std::function<void()> changed_;
};

} // namespace orva
