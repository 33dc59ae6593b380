#pragma once

#include "grid/grid.h"
#include "grid/ui/grid_model.h"

#include <QTableView>

class QLabel;

namespace orva {

// Shows a Grid it does not own and hands the user's input back as signals
// that carry GRID rows and columns (never view indexes); -1 means outside any
// cell. The grid must outlive the widget, or be taken away with
// setGrid(nullptr) first.
//
// Changes to the grid are gathered and applied once per turn of the event
// loop; while the grid's Redraw is 0 the widget does not paint at all.
// The first fixed row and column are shown frozen as the view's headers.
class GridWidget : public QTableView {
    Q_OBJECT
  public:
    explicit GridWidget(QWidget* parent = nullptr);
    ~GridWidget() override;

    void setGrid(Grid* grid);
    Grid* grid() const { return grid_; }
    GridModel* gridModel() const { return model_; }

    // Pictures named by a cell's Picture key; without a provider, or for a
    // key it does not know, cells show no picture.
    void set_picture_provider(PictureProvider provider);

    // Ticks or clears the box of a Boolean cell, as a left click on the cell
    // or Space on the current one does: beforeEdit first (which may cancel),
    // then the grid takes check_true or check_false and afterEdit follows.
    // False, doing nothing, when the cell has no box the user may tick (the
    // grid is not Editable, or the cell is fixed or has no box).
    bool toggle_check(int row, int col);

    // Whether a cell editor is open.
    bool is_editing() const { return state() == EditingState; }
    // Writes what the open cell editor holds into the grid (afterEdit
    // follows) and closes it, as leaving the cell would; for a window that
    // closes without the editor losing its focus first. Nothing when no
    // editor is open.
    void commit_edit();

    // Applies pending grid changes now rather than on the next event-loop turn.
    void refresh();

    // A grid whose redraw is off has its updates off too, and Qt then leaves
    // the place it took unpainted when it is hidden: the parent is asked to
    // paint it here.
    void setVisible(bool visible) override;

    // Twips to pixels at the screen's logical DPI: twips * dpi / 1440.
    int twips_to_px(int twips, Qt::Orientation o = Qt::Horizontal) const;
    // Pixels the columns (the fixed one included) can fill side by side
    // without a horizontal scroll bar: the width inside the frame, less the
    // room of a vertical scroll bar unless that is switched off.
    int columns_room() const;
    // Where a grid cell is drawn, in this widget's coordinates (headers
    // included); empty when the cell is hidden or outside the grid.
    QRect cell_rect(int row, int col) const;
    struct CellRef {
        int row = -1, col = -1;
    };
    // The grid cell at a point of this widget; -1s outside any cell. A point
    // in a merged block gives the row and column under it, not the block's
    // first cell: merging only changes how the cells are drawn.
    CellRef cell_at(const QPoint& widget_pos) const;

  signals:
    // A left button pressed and released on a cell. Mouse signals name the
    // cell under the pointer, also inside a merged block, and a left press
    // puts the grid's cursor there.
    void cellClicked(int row, int col);
    void cellDoubleClicked(int row, int col);
    // Before the view acts on a key; setting *swallow keeps the view from it.
    void keyDown(int row, int col, int key, Qt::KeyboardModifiers modifiers, bool* swallow);
    // A key typed into the cell editor while a cell is being edited.
    void keyDownEdit(int row, int col, int key, Qt::KeyboardModifiers modifiers);
    void mouseDown(int row, int col, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    void mouseUp(int row, int col, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    void mouseMoved(int row, int col, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
    // The right button went down on a cell; the cursor does not move.
    void rightClicked(int row, int col, const QPoint& global_pos);
    // Editing is about to start, or a box to be ticked; setting *cancel
    // prevents it.
    void beforeEdit(int row, int col, bool* cancel);
    // An edit was committed or a box ticked; the grid already holds the new
    // text.
    void afterEdit(int row, int col, const QString& text);
    // The user moved the cursor or the selection; the grid already knows.
    void cursorMoved(int row, int col);

  protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void keyboardSearch(const QString& search) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void scrollContentsBy(int dx, int dy) override;

  protected:
    void updateGeometries() override;

  private:
    void grid_changed();
    void apply_corner();
    void schedule_sync();
    void sync();
    void apply_geometry();
    void apply_spans();
    void apply_cursor();
    void apply_scroll();
    void note_cursor();
    void note_scroll();
    CellRef cell_of_index(const QModelIndex& index) const;
    CellRef cell_under(const QPoint& viewport_pos) const;
    CellRef header_cell(const QObject* header_viewport, const QPoint& pos) const;

    Grid* grid_ = nullptr;
    GridModel* model_ = nullptr;
    bool sync_queued_ = false;
    bool applying_ = false; // the widget itself is writing into the grid
    quint64 scroll_serial_seen_ = 0;
    CellRef pressed_cell_;
    QLabel* corner_ = nullptr; // cell (0, 0) where both headers meet
};

} // namespace orva
