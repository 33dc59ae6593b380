#include "grid/ui/grid_printer.h"

#include "core/ui/printer.h"
#include "grid/ui/text_wrap.h"

#include <QFile>
#include <QFont>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPainterPath>
#include <QPrinter>
#include <QStyle>
#include <algorithm>
#include <cmath>
#include <vector>

namespace orva {
namespace {

// Twips of a screen pixel: border widths are kept in screen pixels.
constexpr double twips_per_screen_px = 15;

QFont cell_font(const Grid& g, int row, int col, double scale) {
    QFont f(g.Cell(CellSetting::FontName, row, col).toString());
    f.setPointSizeF(std::max(1.0, g.Cell(CellSetting::FontSize, row, col).toDouble() * scale));
    f.setBold(g.Cell(CellSetting::FontBold, row, col).toBool());
    f.setItalic(g.Cell(CellSetting::FontItalic, row, col).toBool());
    f.setUnderline(g.Cell(CellSetting::FontUnderline, row, col).toBool());
    return f;
}

QRectF aligned(Qt::Alignment a, const QSizeF& size, const QRectF& in) {
    double x = in.left(), y = in.top();
    if (a & Qt::AlignHCenter)
        x += (in.width() - size.width()) / 2;
    else if (a & Qt::AlignRight)
        x = in.right() - size.width();
    if (a & Qt::AlignVCenter)
        y += (in.height() - size.height()) / 2;
    else if (a & Qt::AlignBottom)
        y = in.bottom() - size.height();
    return QRectF(QPointF(x, y), size);
}

// Where a picture may go in a cell: the inner width over the cell's height.
// A centred picture that shares the cell with a text keeps clear of it, on
// the side of the text with the most room, so a mark never covers a day
// number; the same rule as on screen.
QRectF picture_area(const QRectF& cell, const QRectF& inner, Qt::Alignment picture_align,
                    const QString& text, Qt::Alignment text_align, const QFontMetricsF& fm,
                    double gap) {
    const QRectF area(inner.left(), cell.top(), inner.width(), cell.height());
    const QString shown = text.trimmed();
    if (!(picture_align & Qt::AlignHCenter) || shown.isEmpty()) return area;
    const QSizeF text_size(std::min(fm.horizontalAdvance(shown), inner.width()),
                           std::min(fm.height(), inner.height()));
    const QRectF t = aligned(text_align, text_size, inner);
    const QRectF sides[] = {
        QRectF(area.topLeft(), QPointF(t.left() - gap, area.bottom())),
        QRectF(QPointF(t.right() + gap, area.top()), area.bottomRight()),
        QRectF(area.topLeft(), QPointF(area.right(), t.top() - gap)),
        QRectF(QPointF(area.left(), t.bottom() + gap), area.bottomRight()),
    };
    QRectF best;
    for (const QRectF& side : sides)
        if (std::min(side.width(), side.height()) > std::min(best.width(), best.height()))
            best = side;
    return best;
}

class Job {
  public:
    Job(const Grid& g, QPrinter& printer, QPainter& p, const PictureProvider& pictures,
        int margin_lr, int margin_tb)
        : g_(g), printer_(printer), p_(p), pictures_(pictures) {
        dpi_ = printer.resolution();
        const QRect paper = printer.pageLayout().fullRectPixels(dpi_);
        const double mx = unscaled(margin_lr), my = unscaled(margin_tb);
        area_ = QRectF(paper).adjusted(mx, my, -mx, -my);
        if (area_.width() <= 0 || area_.height() <= 0) area_ = QRectF(paper);
        footer_top_ = area_.bottom() + unscaled(60);

        double total = 0;
        for (int c = 0; c < g.Cols(); ++c) {
            if (g.ColHidden(c) || g.ColWidth(c) <= 0) continue;
            cols_.push_back(c);
            total += g.ColWidth(c);
        }
        const double room = area_.width() * 1440.0 / dpi_;
        scale_ = total > room && total > 0 ? room / total : 1.0;
        double x = area_.left();
        for (int c : cols_) {
            col_x_.push_back(x);
            col_w_.push_back(px(g.ColWidth(c)));
            x += col_w_.back();
        }
        row_h_.assign(size_t(std::max(g.Rows(), 0)), 0.0);
        for (int r = 0; r < g.Rows(); ++r)
            if (!g.RowHidden(r)) row_h_[size_t(r)] = height(r);
        paginate();
    }

    int pages() const { return int(pages_.size()); }

    bool print(const QString& name) {
        for (int i = 0; i < pages(); ++i) {
            if (i > 0 && !printer_.newPage()) return false;
            page(pages_[size_t(i)]);
            footer(name, i + 1);
        }
        return true;
    }

  private:
    // Device pixels of a length in twips, after the fit to the page width.
    double px(double twips) const { return twips * dpi_ / 1440.0 * scale_; }
    double unscaled(double twips) const { return twips * dpi_ / 1440.0; }

    // A row's height: its own, or more where a one-row cell's text needs it.
    double height(int r) const {
        double h = px(g_.RowHeight(r));
        for (int c : cols_) {
            if (g_.TextMatrix(r, c).isEmpty()) continue;
            const Grid::Span sp = g_.merged_range(r, c);
            if (sp.row1 != sp.row2) continue; // the block's rows share the room
            const QFontMetricsF m(cell_font(g_, r, c, scale_), &printer_);
            h = std::max(h, m.height() * 1.25);
        }
        return h;
    }

    void paginate() {
        std::vector<int> fixed;
        double fixed_h = 0;
        for (int r = 0; r < g_.FixedRows() && r < g_.Rows(); ++r) {
            if (g_.RowHidden(r)) continue;
            fixed.push_back(r);
            fixed_h += row_h_[size_t(r)];
        }
        std::vector<int> rows = fixed;
        bool body = false;
        double y = fixed_h;
        // A rounding of a grid sized to the page exactly must not push its
        // last row over.
        const double room = area_.height() + 0.5;
        for (int r = std::max(g_.FixedRows(), 0); r < g_.Rows(); ++r) {
            if (g_.RowHidden(r)) continue;
            const double h = row_h_[size_t(r)];
            // A row taller than a page still goes on one, cut at its foot.
            if (body && y + h > room) {
                pages_.push_back(rows);
                rows = fixed;
                y = fixed_h;
            }
            rows.push_back(r);
            body = true;
            y += h;
        }
        pages_.push_back(rows);
    }

    void page(const std::vector<int>& rows) {
        std::vector<double> row_y(row_h_.size(), 0.0);
        double y = area_.top();
        for (int r : rows) {
            row_y[size_t(r)] = y;
            y += row_h_[size_t(r)];
        }
        p_.save();
        const double edge = unscaled(15);
        p_.setClipRect(area_.adjusted(-edge, -edge, edge, edge));
        for (size_t i = 0; i < rows.size(); ++i) {
            const int r = rows[i];
            for (size_t j = 0; j < cols_.size(); ++j) {
                const int c = cols_[j];
                const Grid::Span sp = g_.merged_range(r, c);
                // A block is drawn from its first row and column on this page.
                if (i > 0 && rows[i - 1] >= sp.row1) continue;
                if (j > 0 && cols_[j - 1] >= sp.col1) continue;
                size_t last_i = i, last_j = j;
                while (last_i + 1 < rows.size() && rows[last_i + 1] <= sp.row2)
                    ++last_i;
                while (last_j + 1 < cols_.size() && cols_[last_j + 1] <= sp.col2)
                    ++last_j;
                const int last_r = rows[last_i], last_c = cols_[last_j];
                const QRectF rect(
                    col_x_[j], row_y[size_t(r)], col_x_[last_j] + col_w_[last_j] - col_x_[j],
                    row_y[size_t(last_r)] + row_h_[size_t(last_r)] - row_y[size_t(r)]);
                cell(rect, r, c, last_r, last_c);
            }
        }
        p_.restore();
    }

    void cell(const QRectF& rect, int r, int c, int last_r, int last_c) {
        if (rect.width() <= 0 || rect.height() <= 0) return;
        p_.save();
        p_.fillRect(rect, qt_color(Color(g_.Cell(CellSetting::BackColor, r, c).toUInt())));
        p_.setPen(QPen(qt_color(g_.GridColor()), unscaled(8)));
        p_.setBrush(Qt::NoBrush);
        p_.drawRect(rect);
        p_.setClipRect(rect, Qt::IntersectClip);

        const QFont font = cell_font(g_, r, c, scale_);
        const QFontMetricsF fm(font, &printer_);
        const double pad = px(40);
        const QRectF inner = rect.adjusted(pad, pad / 2, -pad, -pad / 2);
        QRectF text_rect = inner;
        const QString text = g_.TextMatrix(r, c);
        const Qt::Alignment text_align =
            qt_alignment(Align(g_.Cell(CellSetting::Alignment, r, c).toInt()), text);
        const bool boolean = g_.ColDataType(c) == ColType::Boolean;
        if (boolean) box(rect, g_.CellChecked(r, c));

        const QString key = boolean ? QString() : g_.Cell(CellSetting::Picture, r, c).toString();
        if (!key.isEmpty() && pictures_ && inner.height() > 0) {
            const Qt::Alignment a = qt_alignment(
                Align(g_.Cell(CellSetting::PictureAlignment, r, c).toInt()), QString());
            const QRectF area = picture_area(rect, inner, a, text, text_align, fm, pad);
            // As tall as the row, as on screen; a merged block shows it one
            // row high, a tall row no more than two lines of text.
            const double side =
                std::min({row_h_[size_t(r)] * 0.9, 2 * fm.height(), area.width(), area.height()});
            const QPixmap pm = side >= 1 ? pictures_(key, int(side)) : QPixmap();
            if (!pm.isNull()) {
                QSizeF size = pm.size();
                size.scale(QSizeF(side, side), Qt::KeepAspectRatio);
                const QRectF at = aligned(a, size, area);
                p_.drawPixmap(at, pm, QRectF(pm.rect()));
                if (a & Qt::AlignLeft)
                    text_rect.setLeft(at.right() + pad);
                else if (a & Qt::AlignRight)
                    text_rect.setRight(at.left() - pad);
            }
        }

        if (!text.isEmpty() && !boolean && text_rect.width() > 0) {
            p_.setFont(font);
            p_.setPen(qt_color(Color(g_.Cell(CellSetting::ForeColor, r, c).toUInt())));
            const int max_lines = fm.height() > 0 ? int(text_rect.height() / fm.height()) : 1;
            if (g_.WordWrap() && max_lines > 1 && fm.horizontalAdvance(text) > text_rect.width()) {
                const QStringList lines = wrap_lines(text, fm, text_rect.width(), max_lines);
                const double block = lines.size() * fm.height();
                double y = text_rect.top();
                if (text_align & Qt::AlignVCenter)
                    y += (text_rect.height() - block) / 2;
                else if (text_align & Qt::AlignBottom)
                    y += text_rect.height() - block;
                const Qt::Alignment across = text_align & Qt::AlignHorizontal_Mask;
                for (const QString& line : lines) {
                    p_.drawText(QRectF(text_rect.left(), y, text_rect.width(), fm.height()),
                                int(across | Qt::AlignVCenter) | Qt::TextSingleLine, line);
                    y += fm.height();
                }
            } else {
                const QString shown = fm.horizontalAdvance(text) > text_rect.width()
                                          ? fm.elidedText(text, Qt::ElideRight, text_rect.width())
                                          : text;
                p_.drawText(text_rect, int(text_align) | Qt::TextSingleLine, shown);
            }
        }
        borders(rect, r, c, last_r, last_c);
        p_.restore();
    }

    // A block takes its outer sides from the cells on its edges. Widths are
    // screen pixels, capped at half the cell: the planners ask for wide inner
    // lines that only ever fall inside merged blocks.
    void borders(const QRectF& rect, int r, int c, int last_r, int last_c) {
        const CellBorderSpec first = g_.border(r, c);
        const int right = g_.border(r, last_c).right;
        const int bottom = g_.border(last_r, c).bottom;
        if (!(first.left || first.top || right || bottom)) return;
        const QColor bc = qt_color(first.color);
        const double half_w = rect.width() / 2, half_h = rect.height() / 2;
        const auto w = [&](int screen_px, double cap) {
            return std::min(px(screen_px * twips_per_screen_px), cap);
        };
        if (first.left)
            p_.fillRect(QRectF(rect.left(), rect.top(), w(first.left, half_w), rect.height()), bc);
        if (right) {
            const double wr = w(right, half_w);
            p_.fillRect(QRectF(rect.right() - wr, rect.top(), wr, rect.height()), bc);
        }
        if (first.top)
            p_.fillRect(QRectF(rect.left(), rect.top(), rect.width(), w(first.top, half_h)), bc);
        if (bottom) {
            const double wb = w(bottom, half_h);
            p_.fillRect(QRectF(rect.left(), rect.bottom() - wb, rect.width(), wb), bc);
        }
    }

    // A check box centred in its cell, ticked or empty; none for None.
    void box(const QRectF& cell, CheckBox b) {
        if (b == CheckBox::None) return;
        const double side = std::min({cell.width(), cell.height(), px(200)}) * 0.7;
        const QRectF sq(cell.center().x() - side / 2, cell.center().y() - side / 2, side, side);
        p_.setPen(QPen(Qt::black, std::max(1.0, side / 12)));
        p_.setBrush(Qt::NoBrush);
        p_.drawRect(sq);
        if (b == CheckBox::Checked) {
            QPainterPath tick;
            tick.moveTo(sq.left() + side * 0.2, sq.top() + side * 0.55);
            tick.lineTo(sq.left() + side * 0.42, sq.top() + side * 0.78);
            tick.lineTo(sq.left() + side * 0.82, sq.top() + side * 0.25);
            p_.drawPath(tick);
        }
    }

    void footer(const QString& name, int number) {
        const bool numbered = pages() > 1;
        if (name.isEmpty() && !numbered) return;
        QFont f(g_.FontName());
        f.setPointSizeF(8);
        p_.setFont(f);
        p_.setPen(Qt::black);
        const QFontMetricsF fm(f, &printer_);
        const QRectF line(area_.left(), footer_top_, area_.width(), fm.height());
        QString right;
        if (numbered) right = QStringLiteral("%1 / %2").arg(number).arg(pages());
        const double right_w = right.isEmpty() ? 0 : fm.horizontalAdvance(right) + unscaled(240);
        p_.drawText(line.adjusted(0, 0, -right_w, 0), Qt::AlignLeft | Qt::TextSingleLine,
                    fm.elidedText(name, Qt::ElideRight, line.width() - right_w));
        if (!right.isEmpty()) p_.drawText(line, Qt::AlignRight | Qt::TextSingleLine, right);
    }

    const Grid& g_;
    QPrinter& printer_;
    QPainter& p_;
    const PictureProvider& pictures_;
    int dpi_ = 600;
    QRectF area_;
    double footer_top_ = 0;
    std::vector<int> cols_;
    std::vector<double> col_x_, col_w_, row_h_;
    std::vector<std::vector<int>> pages_;
    double scale_ = 1.0;
};

} // namespace

bool PrintGrid(const Grid& grid, QPrinter& printer, const QString& name, int margin_lr,
               int margin_tb, const PictureProvider& pictures) {
    printer.setDocName(name);
    // Margins are ours: the grid stands where they put it, the foot line in
    // the bottom one.
    printer.setFullPage(true);
    QPainter p;
    if (!p.begin(&printer)) return false;
    Job job(grid, printer, p, pictures, margin_lr, margin_tb);
    const bool drawn = job.print(name);
    const bool ended = p.end();
    grid.clear_error();
    if (drawn && ended) return true;
    if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty())
        QFile::remove(printer.outputFileName());
    return false;
}

bool PrintGrid(const Grid& grid, const PrintSetup& setup, const QString& name, int margin_lr,
               int margin_tb, const PictureProvider& pictures) {
    QPrinter printer(QPrinter::HighResolution);
    PrintSetup one = setup;
    one.copies = 1;
    if (one.page_width <= 0 || one.page_height <= 0) {
        // A platform that names no paper prints on letter, the size the
        // print jobs lay their grids out for.
        one.page_width = one.orientation == 2 ? 15840 : 12240;
        one.page_height = one.orientation == 2 ? 12240 : 15840;
    }
    apply_setup(printer, one);
    return PrintGrid(grid, printer, name, margin_lr, margin_tb, pictures);
}

} // namespace orva
