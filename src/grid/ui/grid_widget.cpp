#include "grid/ui/grid_widget.h"

#include "grid/ui/text_wrap.h"

#include <QApplication>
#include <QLabel>

#include <QEvent>
#include <QFontMetrics>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>
#include <cmath>

namespace orva {

namespace {

// Marks the editors the delegate makes, so commit_edit finds the open one.
constexpr const char* cell_editor_property = "orva_cell_editor";

// One cell, or a merged block whose first cell is (row, col), as it is drawn.
struct CellPaint {
    int row = 0, col = 0;
    int last_row = 0, last_col = 0;
    int row_height = 0; // pixels of one row (the first of a block); 0: the whole rect
    bool current = false;
    bool selected = false;
    QColor highlight;
    const QWidget* widget = nullptr; // whose style draws check boxes
};

// The box of a Boolean cell, in the desktop style, centred in the cell.
void paint_check(QPainter& p, const QRect& inner, CheckBox box, const QWidget* widget) {
    const QStyle* style = widget ? widget->style() : QApplication::style();
    QStyleOptionViewItem opt;
    const int w =
        std::min(style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, widget), inner.width());
    const int h =
        std::min(style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, widget), inner.height());
    opt.rect = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, QSize(w, h), inner);
    opt.state =
        QStyle::State_Enabled | (box == CheckBox::Checked ? QStyle::State_On : QStyle::State_Off);
    if (widget) opt.palette = widget->palette();
    style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &opt, &p, widget);
}

QFont cell_font(const GridModel& m, int r, int c) {
    return m.cell_data(r, c, Qt::FontRole).value<QFont>();
}

// Where a cell's picture may go: the inner width over the cell's whole height
// above its bottom line. A centred picture that shares the cell with a text
// keeps clear of it, on the side of the text that leaves it the most room, so
// a mark never sits on a day number. Empty when there is no room at all.
QRect picture_area(const QRect& rect, const QRect& inner, Qt::Alignment picture_align,
                   const QString& text, Qt::Alignment text_align, const QFontMetrics& fm) {
    const QRect area(inner.left(), rect.top(), inner.width(), rect.height() - 1);
    // Blanks draw nothing: " 5" aligned right leaves its blank's room free.
    const QString shown = text.trimmed();
    if (!(picture_align & Qt::AlignHCenter) || shown.isEmpty()) return area;
    const QSize text_size(std::min(fm.horizontalAdvance(shown), inner.width()),
                          std::min(fm.height(), inner.height()));
    const QRect t = QStyle::alignedRect(Qt::LeftToRight, text_align, text_size, inner);
    const QRect sides[] = {
        QRect(area.topLeft(), QPoint(t.left() - 3, area.bottom())),
        QRect(QPoint(t.right() + 3, area.top()), area.bottomRight()),
        QRect(area.topLeft(), QPoint(area.right(), t.top() - 2)),
        QRect(QPoint(area.left(), t.bottom() + 2), area.bottomRight()),
    };
    QRect best;
    for (const QRect& side : sides)
        if (std::min(side.width(), side.height()) > std::min(best.width(), best.height()))
            best = side;
    return best;
}

void paint_cell(QPainter& p, const QRect& rect, const GridModel& m, const CellPaint& cp) {
    if (!m.has_cell(cp.row, cp.col) || rect.isEmpty()) return;
    const Grid& g = *m.grid();
    const int r = cp.row, c = cp.col;
    p.save();
    p.setClipRect(rect);
    p.fillRect(rect, qt_color(g.Cell(CellSetting::BackColor, r, c).toUInt()));

    // The cell owns the line on its right and bottom edge, as in the grid
    // control the planners were designed around.
    p.setPen(qt_color(g.GridColor()));
    p.drawLine(rect.topRight(), rect.bottomRight());
    p.drawLine(rect.bottomLeft(), rect.bottomRight());

    const QFont font = cell_font(m, r, c);
    const QFontMetrics fm(font, p.device());
    const QRect inner = rect.adjusted(2, 1, -3, -2);
    QRect text_rect = inner;
    const QString text = g.TextMatrix(r, c);
    const Qt::Alignment text_align =
        qt_alignment(Align(g.Cell(CellSetting::Alignment, r, c).toInt()), text);
    const bool boolean = g.ColDataType(c) == ColType::Boolean;
    if (boolean) {
        const CheckBox box = g.CellChecked(r, c);
        if (box != CheckBox::None && !inner.isEmpty()) paint_check(p, inner, box, cp.widget);
    }
    const QString key = boolean ? QString() : g.Cell(CellSetting::Picture, r, c).toString();
    if (!key.isEmpty() && inner.height() > 0) {
        const Qt::Alignment a =
            qt_alignment(Align(g.Cell(CellSetting::PictureAlignment, r, c).toInt()), QString());
        const QRect area = picture_area(rect, inner, a, text, text_align, fm);
        // As tall as the row, so a sticker reads on any back colour; a merged
        // block still shows it one row high, and a row made tall for its
        // purpose (the day's untimed row) no more than two lines of text.
        const int row_px = cp.row_height > 0 ? cp.row_height : rect.height();
        const int px = std::min({row_px - 1, 2 * fm.height(), area.width(), area.height()});
        const QPixmap pm = px > 0 ? m.picture(key, px) : QPixmap();
        if (!pm.isNull()) {
            QSize size = pm.deviceIndependentSize().toSize();
            if (size.height() > area.height() || size.width() > area.width())
                size.scale(area.size(), Qt::KeepAspectRatio);
            const QRect pr = QStyle::alignedRect(Qt::LeftToRight, a, size, area);
            p.drawPixmap(pr, pm);
            if (a & Qt::AlignLeft)
                text_rect.setLeft(pr.right() + 3);
            else if (a & Qt::AlignRight)
                text_rect.setRight(pr.left() - 3);
        }
    }

    if (!text.isEmpty() && !boolean) {
        p.setFont(font);
        p.setPen(qt_color(g.Cell(CellSetting::ForeColor, r, c).toUInt()));
        const int max_lines = fm.height() > 0 ? text_rect.height() / fm.height() : 1;
        if (g.WordWrap() && max_lines > 1 && fm.horizontalAdvance(text) > text_rect.width()) {
            // Whole words on as many lines as the cell holds.
            const QStringList lines = wrap_lines(text, fm, text_rect.width(), max_lines);
            const int block = int(lines.size()) * fm.height();
            int y = text_rect.top();
            if (text_align & Qt::AlignVCenter)
                y += (text_rect.height() - block) / 2;
            else if (text_align & Qt::AlignBottom)
                y += text_rect.height() - block;
            const Qt::Alignment across = text_align & Qt::AlignHorizontal_Mask;
            for (const QString& line : lines) {
                p.drawText(QRect(text_rect.left(), y, text_rect.width(), fm.height()),
                           int(across | Qt::AlignVCenter) | Qt::TextSingleLine, line);
                y += fm.height();
            }
        } else {
            // A text wider than its room is cut at its end, where a reader
            // expects it; centred, it would lose its start under the picture.
            const QString shown = fm.horizontalAdvance(text) > text_rect.width()
                                      ? fm.elidedText(text, Qt::ElideRight, text_rect.width())
                                      : text;
            p.drawText(text_rect, int(text_align) | Qt::TextSingleLine, shown);
        }
    }

    // A block takes its outer sides from the cells on its edges; inner lines
    // of the block would cut the merged text, so they are not drawn. Widths
    // are capped at half the cell: the planners ask for very wide inner lines
    // that only ever fall inside merged blocks.
    const CellBorderSpec first = g.border(r, c);
    const int right = g.border(r, cp.last_col).right;
    const int bottom = g.border(cp.last_row, c).bottom;
    if (first.left || first.top || right || bottom) {
        const QColor bc = qt_color(first.color);
        const int half_w = std::max(rect.width() / 2, 1), half_h = std::max(rect.height() / 2, 1);
        const int wl = std::min(first.left, half_w), wr = std::min(right, half_w);
        const int wt = std::min(first.top, half_h), wb = std::min(bottom, half_h);
        if (wl) p.fillRect(QRect(rect.left(), rect.top(), wl, rect.height()), bc);
        if (wr) p.fillRect(QRect(rect.right() - wr + 1, rect.top(), wr, rect.height()), bc);
        if (wt) p.fillRect(QRect(rect.left(), rect.top(), rect.width(), wt), bc);
        if (wb) p.fillRect(QRect(rect.left(), rect.bottom() - wb + 1, rect.width(), wb), bc);
    }

    if (cp.selected && !cp.current) {
        QColor tint = cp.highlight;
        tint.setAlpha(60);
        p.fillRect(rect, tint);
    }
    if (cp.current) {
        const QColor back = qt_color(g.Cell(CellSetting::BackColor, r, c).toUInt());
        QPen pen(back.lightness() < 128 ? Qt::white : Qt::black, 1, Qt::DotLine);
        p.setPen(pen);
        p.setBrush(Qt::NoBrush);
        p.drawRect(rect.adjusted(1, 1, -3, -3));
    }
    p.restore();
}

class CellDelegate : public QStyledItemDelegate {
  public:
    explicit CellDelegate(GridWidget* view) : QStyledItemDelegate(view), view_(view) {}

    void paint(QPainter* p, const QStyleOptionViewItem& opt,
               const QModelIndex& index) const override {
        const GridModel& m = *view_->gridModel();
        CellPaint cp;
        cp.row = m.grid_row(index.row());
        cp.col = m.grid_col(index.column());
        cp.last_row = cp.row + std::max(view_->rowSpan(index.row(), index.column()), 1) - 1;
        cp.last_col = cp.col + std::max(view_->columnSpan(index.row(), index.column()), 1) - 1;
        cp.row_height = view_->rowHeight(index.row());
        // The grid's cursor may stand on any row of a merged block.
        const QModelIndex cur = view_->currentIndex();
        cp.current = cur.isValid() && cur.row() >= index.row() &&
                     cur.row() < index.row() + cp.last_row - cp.row + 1 &&
                     cur.column() >= index.column() &&
                     cur.column() < index.column() + cp.last_col - cp.col + 1;
        cp.selected = opt.state & QStyle::State_Selected;
        cp.highlight = opt.palette.color(QPalette::Highlight);
        cp.widget = view_;
        paint_cell(*p, opt.rect, m, cp);
    }

    // The view ticks boxes itself (GridWidget::toggle_check), so that a tick
    // is announced by beforeEdit like any other edit; the base class would
    // tick them behind its back.
    bool editorEvent(QEvent*, QAbstractItemModel*, const QStyleOptionViewItem&,
                     const QModelIndex&) override {
        return false;
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (editor) {
            editor->setFont(index.data(Qt::FontRole).value<QFont>());
            editor->setProperty(cell_editor_property, true);
        }
        return editor;
    }

  protected:
    // Seen here before the base class swallows Tab, Return and Escape, so a
    // planner can tell how an edit was ended.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress && view_->grid()) {
            const auto* ke = static_cast<QKeyEvent*>(event);
            emit view_->keyDownEdit(view_->grid()->Row(), view_->grid()->Col(), ke->key(),
                                    ke->modifiers());
        }
        return QStyledItemDelegate::eventFilter(watched, event);
    }

  private:
    GridWidget* view_;
};

// Paints the first fixed row or column like any other cell, merged blocks
// included, rather than as buttons in the desktop style.
class GridHeader : public QHeaderView {
  public:
    GridHeader(Qt::Orientation o, GridWidget* view) : QHeaderView(o, view), view_(view) {}

  protected:
    void paintSection(QPainter* p, const QRect& rect, int logical) const override {
        const GridModel& m = *view_->gridModel();
        if (!m.grid()) return;
        const bool across = orientation() == Qt::Horizontal;
        const int r = across ? 0 : m.grid_row(logical);
        const int c = across ? m.grid_col(logical) : 0;
        if (!m.has_cell(r, c)) return;
        const Grid::Span s = m.grid()->merged_range(r, c);
        CellPaint cp;
        cp.row = s.row1;
        cp.col = s.col1;
        cp.last_row = s.row2;
        cp.last_col = s.col2;
        cp.widget = view_;
        if (!across) cp.row_height = sectionSize(m.model_row(s.row1));
        QRect whole = rect;
        if (across && s.col2 > s.col1) {
            const int first = sectionViewportPosition(m.model_col(s.col1));
            const int last = m.model_col(s.col2);
            whole.setLeft(first);
            whole.setRight(sectionViewportPosition(last) + sectionSize(last) - 1);
        } else if (!across && s.row2 > s.row1) {
            const int first = sectionViewportPosition(m.model_row(s.row1));
            const int last = m.model_row(s.row2);
            whole.setTop(first);
            whole.setBottom(sectionViewportPosition(last) + sectionSize(last) - 1);
        }
        p->save();
        p->setClipRect(rect);
        paint_cell(*p, whole, m, cp);
        p->restore();
    }

  private:
    GridWidget* view_;
};

} // namespace

GridWidget::GridWidget(QWidget* parent) : QTableView(parent), model_(new GridModel(this)) {
    setHorizontalHeader(new GridHeader(Qt::Horizontal, this));
    setVerticalHeader(new GridHeader(Qt::Vertical, this));
    setModel(model_);
    setItemDelegate(new CellDelegate(this));
    setShowGrid(false); // the delegate draws the lines in the grid's own colour
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setSelectionMode(QAbstractItemView::ContiguousSelection);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    // Double click belongs to the planner (it opens the editor), so only
    // typing starts an in-cell edit.
    setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    setMouseTracking(true);
    for (QHeaderView* h : {horizontalHeader(), verticalHeader()}) {
        h->setSectionResizeMode(QHeaderView::Fixed);
        h->setMinimumSectionSize(0);
        h->setHighlightSections(false);
        h->setSectionsClickable(false);
        h->viewport()->installEventFilter(this);
    }
    horizontalHeader()->setDefaultSectionSize(twips_to_px(Grid::default_col_width));
    verticalHeader()->setDefaultSectionSize(twips_to_px(Grid::default_row_height, Qt::Vertical));
    horizontalHeader()->hide();
    verticalHeader()->hide();
    connect(model_, &GridModel::textEdited, this,
            [this](int r, int c, const QString& text) { emit afterEdit(r, c, text); });
    // The view has no cell where the two headers meet; a label stands in for
    // cell (0, 0) so its text is drawn and read out like the others.
    corner_ = new QLabel(this);
    corner_->setObjectName(QStringLiteral("corner"));
    corner_->setAutoFillBackground(true);
    corner_->hide();
}

GridWidget::~GridWidget() {
    if (grid_) {
        grid_->set_changed_hook(nullptr);
        grid_->set_measure(nullptr);
    }
}

void GridWidget::setGrid(Grid* grid) {
    if (grid_ == grid) return;
    if (grid_) {
        grid_->set_changed_hook(nullptr);
        grid_->set_measure(nullptr);
    }
    grid_ = grid;
    applying_ = true;
    model_->setGrid(grid);
    applying_ = false;
    scroll_serial_seen_ = 0;
    if (grid_) {
        grid_->set_changed_hook([this] { grid_changed(); });
        grid_->set_measure([this](const QString& text, const QString& name, double points,
                                  bool bold, bool italic) {
            QFont f(name);
            f.setPointSizeF(points);
            f.setBold(bold);
            f.setItalic(italic);
            const QFontMetrics fm(f, this);
            return int(std::lround(fm.horizontalAdvance(text) * 1440.0 / logicalDpiX()));
        });
    }
    setUpdatesEnabled(!grid_ || grid_->Redraw() != 0);
    sync();
}

void GridWidget::set_picture_provider(PictureProvider provider) {
    model_->set_picture_provider(std::move(provider));
    viewport()->update();
}

int GridWidget::twips_to_px(int twips, Qt::Orientation o) const {
    const int dpi = o == Qt::Horizontal ? logicalDpiX() : logicalDpiY();
    return int(std::lround(twips * double(dpi) / 1440.0));
}

void GridWidget::refresh() {
    sync();
}

void GridWidget::setVisible(bool visible) {
    const bool uncover = !visible && isVisible() && !updatesEnabled() && parentWidget();
    const QRect place = geometry();
    QTableView::setVisible(visible);
    if (uncover) parentWidget()->update(place);
}

void GridWidget::grid_changed() {
    if (applying_ || !grid_) return;
    if (grid_->Redraw() == 0) {
        setUpdatesEnabled(false);
        return;
    }
    if (!updatesEnabled()) setUpdatesEnabled(true);
    schedule_sync();
}

void GridWidget::schedule_sync() {
    if (sync_queued_) return;
    sync_queued_ = true;
    // A refresh() in between may already have applied the change.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (sync_queued_) sync();
        },
        Qt::QueuedConnection);
}

void GridWidget::sync() {
    sync_queued_ = false;
    if (grid_ && grid_->Redraw() == 0) return; // comes back when drawing is on
    // A rebuild must leave the view where the user scrolled it; only a new
    // TopRow or ShowCell request moves it.
    const int h_scroll = horizontalScrollBar()->value();
    const int v_scroll = verticalScrollBar()->value();
    applying_ = true;
    model_->reload(state() == EditingState ? currentIndex() : QModelIndex());
    if (grid_) {
        apply_geometry();
        apply_spans();
        apply_cursor();
    }
    applying_ = false;
    if (grid_) {
        // Scroll ranges are laid out lazily; without this the old position
        // or a new request meets a range of zero and is lost.
        executeDelayedItemsLayout();
        updateGeometries();
        horizontalScrollBar()->setValue(h_scroll);
        verticalScrollBar()->setValue(v_scroll);
        apply_scroll();
    }
    apply_corner();
    viewport()->update();
    horizontalHeader()->viewport()->update();
    verticalHeader()->viewport()->update();
}

void GridWidget::updateGeometries() {
    QTableView::updateGeometries();
    apply_corner();
}

void GridWidget::apply_corner() {
    if (!corner_) return;
    const bool both = grid_ && !horizontalHeader()->isHidden() && !verticalHeader()->isHidden();
    corner_->setVisible(both);
    if (!both) return;
    const int fw = frameWidth();
    corner_->setGeometry(fw, fw, verticalHeader()->width(), horizontalHeader()->height());
    corner_->setText(grid_->TextMatrix(0, 0));
    corner_->setAccessibleName(corner_->text());
    QPalette pal = corner_->palette();
    pal.setColor(QPalette::Window, qt_color(grid_->BackColorFixed()));
    pal.setColor(QPalette::WindowText, qt_color(grid_->ForeColorFixed()));
    corner_->setPalette(pal);
    QFont f(grid_->FontName());
    f.setPointSizeF(grid_->FontSize());
    corner_->setFont(f);
    const QVariant align = grid_->Cell(CellSetting::Alignment, 0, 0);
    corner_->setAlignment(align.toInt() == int(Align::CenterCenter) ||
                                  align.toInt() == int(Align::CenterTop)
                              ? Qt::AlignCenter
                              : Qt::AlignLeft | Qt::AlignVCenter);
    corner_->raise();
}

void GridWidget::apply_geometry() {
    const Grid& g = *grid_;
    const int hr = model_->header_rows(), hc = model_->header_cols();
    QFont f(g.FontName());
    f.setPointSizeF(g.FontSize());
    f.setBold(g.FontBold());
    f.setItalic(g.FontItalic());
    if (font() != f) setFont(f);

    QHeaderView* hh = horizontalHeader();
    QHeaderView* vh = verticalHeader();
    hh->setVisible(hr > 0 && !g.RowHidden(0));
    if (hr) hh->setFixedHeight(twips_to_px(g.RowHeight(0), Qt::Vertical));
    vh->setVisible(hc > 0 && !g.ColHidden(0));
    if (hc) vh->setFixedWidth(twips_to_px(g.ColWidth(0)));
    // After a reset every section has the default size and is shown, so
    // only the others are touched: a long list resizes in linear time.
    for (int c = hc; c < g.Cols(); ++c) {
        const int px = twips_to_px(g.ColWidth(c));
        if (columnWidth(c - hc) != px) setColumnWidth(c - hc, px);
        if (g.ColHidden(c) != isColumnHidden(c - hc)) setColumnHidden(c - hc, g.ColHidden(c));
    }
    for (int r = hr; r < g.Rows(); ++r) {
        const int px = twips_to_px(g.RowHeight(r), Qt::Vertical);
        if (rowHeight(r - hr) != px) setRowHeight(r - hr, px);
        if (g.RowHidden(r) != isRowHidden(r - hr)) setRowHidden(r - hr, g.RowHidden(r));
    }
}

void GridWidget::apply_spans() {
    clearSpans();
    const Grid& g = *grid_;
    if (g.MergeCells() == MergeMode::Never) return;
    const int rows = g.Rows(), cols = g.Cols();
    const int hr = model_->header_rows(), hc = model_->header_cols();
    std::vector<char> merge_col(cols), merge_row(rows);
    bool any = false;
    for (int c = 0; c < cols; ++c) {
        merge_col[c] = g.MergeCol(c);
        any = any || merge_col[c];
    }
    for (int r = 0; r < rows; ++r) {
        merge_row[r] = g.MergeRow(r);
        any = any || merge_row[r];
    }
    if (!any) return;
    std::vector<char> covered(size_t(rows) * cols);
    for (int r = hr; r < rows; ++r) {
        for (int c = hc; c < cols; ++c) {
            if (covered[size_t(r) * cols + c] || (!merge_col[c] && !merge_row[r])) continue;
            const Grid::Span s = g.merged_range(r, c);
            if ((s.row1 == s.row2 && s.col1 == s.col2) || s.row1 != r || s.col1 != c) continue;
            for (int rr = s.row1; rr <= s.row2; ++rr)
                for (int cc = s.col1; cc <= s.col2; ++cc)
                    covered[size_t(rr) * cols + cc] = 1;
            setSpan(r - hr, c - hc, s.row2 - s.row1 + 1, s.col2 - s.col1 + 1);
        }
    }
}

void GridWidget::apply_cursor() {
    const Grid& g = *grid_;
    const int hr = model_->header_rows(), hc = model_->header_cols();
    const QModelIndex cur = model_->index(g.Row() - hr, g.Col() - hc);
    if (!cur.isValid()) return;
    const int rs = std::clamp(g.RowSel() - hr, 0, model_->rowCount() - 1);
    const int cs = std::clamp(g.ColSel() - hc, 0, model_->columnCount() - 1);
    // Moving the current index would scroll the view to it; the grid's
    // cursor is not a request to scroll.
    const bool auto_scroll = hasAutoScroll();
    setAutoScroll(false);
    selectionModel()->setCurrentIndex(cur, QItemSelectionModel::NoUpdate);
    setAutoScroll(auto_scroll);
    const QModelIndex tl = model_->index(std::min(cur.row(), rs), std::min(cur.column(), cs));
    const QModelIndex br = model_->index(std::max(cur.row(), rs), std::max(cur.column(), cs));
    selectionModel()->select(QItemSelection(tl, br), QItemSelectionModel::ClearAndSelect);
}

void GridWidget::apply_scroll() {
    if (grid_->scroll_serial() == scroll_serial_seen_) return;
    scroll_serial_seen_ = grid_->scroll_serial();
    const int hr = model_->header_rows(), hc = model_->header_cols();
    if (grid_->shown_row() >= 0) {
        const QModelIndex idx = model_->index(std::max(grid_->shown_row() - hr, 0),
                                              std::max(grid_->shown_col() - hc, 0));
        if (idx.isValid()) scrollTo(idx, EnsureVisible);
    } else {
        const QModelIndex idx = model_->index(grid_->TopRow() - hr, std::max(columnAt(0), 0));
        if (idx.isValid()) scrollTo(idx, PositionAtTop);
    }
    note_scroll();
}

void GridWidget::note_scroll() {
    if (!grid_) return;
    const int hr = model_->header_rows(), hc = model_->header_cols();
    const int top = rowAt(0), left = columnAt(0);
    grid_->set_view_scroll(top < 0 ? hr : top + hr, left < 0 ? hc : left + hc);
}

void GridWidget::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    note_scroll();
}

void GridWidget::note_cursor() {
    if (applying_ || !grid_) return;
    const QModelIndex cur = currentIndex();
    if (!cur.isValid()) return;
    int rs = cur.row(), cs = cur.column();
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        if (!range.contains(cur)) continue;
        rs = range.top() == cur.row() ? range.bottom() : range.top();
        cs = range.left() == cur.column() ? range.right() : range.left();
        break;
    }
    const int r = model_->grid_row(cur.row()), c = model_->grid_col(cur.column());
    const bool moved = r != grid_->Row() || c != grid_->Col();
    applying_ = true;
    grid_->Select(r, c, model_->grid_row(rs), model_->grid_col(cs));
    applying_ = false;
    if (moved) emit cursorMoved(r, c);
}

void GridWidget::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    note_cursor();
}

void GridWidget::selectionChanged(const QItemSelection& selected,
                                  const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    note_cursor();
}

GridWidget::CellRef GridWidget::cell_of_index(const QModelIndex& index) const {
    if (!index.isValid()) return {};
    return {model_->grid_row(index.row()), model_->grid_col(index.column())};
}

GridWidget::CellRef GridWidget::header_cell(const QObject* header_viewport,
                                            const QPoint& pos) const {
    if (header_viewport == horizontalHeader()->viewport()) {
        const int logical = horizontalHeader()->logicalIndexAt(pos);
        if (logical < 0) return {};
        return {0, model_->grid_col(logical)};
    }
    if (header_viewport == verticalHeader()->viewport()) {
        const int logical = verticalHeader()->logicalIndexAt(pos);
        if (logical < 0) return {};
        return {model_->grid_row(logical), 0};
    }
    return {};
}

int GridWidget::columns_room() const {
    int room = width() - 2 * frameWidth();
    // Counted whether or not the bar shows now: a grid that fits only while
    // the bar is away would bring a horizontal bar with it when it comes.
    if (verticalScrollBarPolicy() != Qt::ScrollBarAlwaysOff) {
        room -= style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, verticalScrollBar());
        if (style()->styleHint(QStyle::SH_ScrollView_FrameOnlyAroundContents, nullptr, this))
            room -= style()->pixelMetric(QStyle::PM_ScrollView_ScrollBarSpacing, nullptr, this);
    }
    return std::max(room, 0);
}

QRect GridWidget::cell_rect(int row, int col) const {
    if (!grid_ || !model_->has_cell(row, col)) return {};
    const int hr = model_->header_rows(), hc = model_->header_cols();
    int x = 0, w = 0, y = 0, h = 0;
    if (hc && col == 0) {
        if (!verticalHeader()->isVisible()) return {};
        x = verticalHeader()->geometry().x();
        w = verticalHeader()->width();
    } else {
        const int mc = col - hc;
        if (isColumnHidden(mc)) return {};
        x = viewport()->geometry().x() + columnViewportPosition(mc);
        w = columnWidth(mc);
    }
    if (hr && row == 0) {
        if (!horizontalHeader()->isVisible()) return {};
        y = horizontalHeader()->geometry().y();
        h = horizontalHeader()->height();
    } else {
        const int mr = row - hr;
        if (isRowHidden(mr)) return {};
        y = viewport()->geometry().y() + rowViewportPosition(mr);
        h = rowHeight(mr);
    }
    return {x, y, w, h};
}

GridWidget::CellRef GridWidget::cell_under(const QPoint& pos) const {
    // indexAt would give a merged block's first cell wherever the block is hit.
    const int r = rowAt(pos.y()), c = columnAt(pos.x());
    if (r < 0 || c < 0) return {};
    return {model_->grid_row(r), model_->grid_col(c)};
}

GridWidget::CellRef GridWidget::cell_at(const QPoint& pos) const {
    if (viewport()->geometry().contains(pos))
        return cell_under(pos - viewport()->geometry().topLeft());
    for (const QHeaderView* h : {horizontalHeader(), verticalHeader()}) {
        if (h->isVisible() && h->geometry().contains(pos))
            return header_cell(h->viewport(), h->viewport()->mapFrom(this, pos));
    }
    return {};
}

bool GridWidget::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    const bool starts = index.isValid() && state() != EditingState &&
                        (model_->flags(index) & Qt::ItemIsEditable) &&
                        (trigger == AllEditTriggers || (editTriggers() & trigger));
    if (starts) {
        bool cancel = false;
        const CellRef cell = cell_of_index(index);
        emit beforeEdit(cell.row, cell.col, &cancel);
        if (cancel) return false;
    }
    return QTableView::edit(index, trigger, event);
}

void GridWidget::commit_edit() {
    if (state() != EditingState) return;
    // Closed editors linger hidden until they are deleted; the open one shows.
    const auto editors = viewport()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* editor : editors) {
        if (!editor->property(cell_editor_property).toBool() || editor->isHidden()) continue;
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
        return;
    }
}

bool GridWidget::toggle_check(int row, int col) {
    if (!grid_ || !model_->has_cell(row, col)) return false;
    const QModelIndex index = model_->index(model_->model_row(row), model_->model_col(col));
    if (!index.isValid() || !(model_->flags(index) & Qt::ItemIsUserCheckable)) return false;
    bool cancel = false;
    emit beforeEdit(row, col, &cancel);
    // The handler may have changed the grid under the box.
    if (cancel || !model_->has_cell(row, col) || !(model_->flags(index) & Qt::ItemIsUserCheckable))
        return true;
    const bool ticked = grid_->CellChecked(row, col) == CheckBox::Checked;
    model_->setData(index, ticked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    return true;
}

// Typing a letter must not move the cursor to a cell that starts with it.
void GridWidget::keyboardSearch(const QString&) {}

void GridWidget::keyPressEvent(QKeyEvent* event) {
    bool swallow = false;
    const int r = grid_ ? grid_->Row() : -1, c = grid_ ? grid_->Col() : -1;
    emit keyDown(r, c, event->key(), event->modifiers(), &swallow);
    if (swallow) {
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Space && !(event->modifiers() & ~Qt::KeypadModifier) &&
        toggle_check(r, c)) {
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

void GridWidget::mousePressEvent(QMouseEvent* event) {
    const CellRef cell = cell_under(event->position().toPoint());
    if (grid_) grid_->set_mouse_cell(cell.row, cell.col);
    emit mouseDown(cell.row, cell.col, event->button(), event->modifiers());
    if (event->button() == Qt::RightButton) {
        emit rightClicked(cell.row, cell.col, event->globalPosition().toPoint());
        event->accept();
        return;
    }
    pressed_cell_ = event->button() == Qt::LeftButton ? cell : CellRef{};
    QTableView::mousePressEvent(event);
    // The view puts its cursor on a merged block's first cell; the grid's
    // cursor goes to the row that was clicked, which is what the planners
    // read as the current row. A range being extended keeps its anchor.
    const bool extending = event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
    if (grid_ && event->button() == Qt::LeftButton && cell.row >= 0 && !extending &&
        (grid_->Row() != cell.row || grid_->Col() != cell.col)) {
        grid_->Select(cell.row, cell.col);
        emit cursorMoved(cell.row, cell.col);
    }
}

void GridWidget::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    const CellRef cell = cell_under(event->position().toPoint());
    emit mouseUp(cell.row, cell.col, event->button(), event->modifiers());
    const CellRef pressed = pressed_cell_;
    pressed_cell_ = {};
    if (event->button() == Qt::LeftButton && pressed.row >= 0 && cell.row >= 0) {
        // Released where it was pressed, as a button takes a click.
        if (pressed.row == cell.row && pressed.col == cell.col) toggle_check(cell.row, cell.col);
        emit cellClicked(cell.row, cell.col);
    }
}

void GridWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    const CellRef cell = cell_under(event->position().toPoint());
    if (grid_) grid_->set_mouse_cell(cell.row, cell.col);
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && cell.row >= 0)
        emit cellDoubleClicked(cell.row, cell.col);
}

void GridWidget::mouseMoveEvent(QMouseEvent* event) {
    const CellRef cell = cell_under(event->position().toPoint());
    if (grid_) grid_->set_mouse_cell(cell.row, cell.col);
    emit mouseMoved(cell.row, cell.col, event->buttons(), event->modifiers());
    QTableView::mouseMoveEvent(event);
}

bool GridWidget::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* he = static_cast<QHelpEvent*>(event);
        const QString tip = grid_ ? grid_->ToolTipText() : QString();
        if (tip.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(he->globalPos(), tip, viewport());
        return true;
    }
    if (event->type() == QEvent::Leave && grid_) grid_->set_mouse_cell(-1, -1);
    return QTableView::viewportEvent(event);
}

bool GridWidget::eventFilter(QObject* watched, QEvent* event) {
    const bool header =
        watched == horizontalHeader()->viewport() || watched == verticalHeader()->viewport();
    if (header && grid_) {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove: {
            const auto* me = static_cast<QMouseEvent*>(event);
            const CellRef cell = header_cell(watched, me->position().toPoint());
            grid_->set_mouse_cell(cell.row, cell.col);
            if (event->type() == QEvent::MouseButtonPress) {
                emit mouseDown(cell.row, cell.col, me->button(), me->modifiers());
                if (me->button() == Qt::RightButton)
                    emit rightClicked(cell.row, cell.col, me->globalPosition().toPoint());
            } else if (event->type() == QEvent::MouseButtonRelease) {
                emit mouseUp(cell.row, cell.col, me->button(), me->modifiers());
                if (me->button() == Qt::LeftButton && cell.row >= 0)
                    emit cellClicked(cell.row, cell.col);
            } else if (event->type() == QEvent::MouseButtonDblClick) {
                if (me->button() == Qt::LeftButton && cell.row >= 0)
                    emit cellDoubleClicked(cell.row, cell.col);
            } else {
                emit mouseMoved(cell.row, cell.col, me->buttons(), me->modifiers());
            }
            break;
        }
        default:
            break;
        }
    }
    return QTableView::eventFilter(watched, event);
}

} // namespace orva
