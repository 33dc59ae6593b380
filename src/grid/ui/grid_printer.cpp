#include "grid/ui/grid_printer.h"

#include "core/ui/printer.h"

#include <QFont>
#include <QFontMetricsF>
#include <QMarginsF>
#include <QPageLayout>
#include <QPainter>
#include <QPainterPath>
#include <QPrinter>
#include <algorithm>
#include <vector>

namespace orva {
namespace {

QFont cell_font(const Grid& g, int row, int col, double scale) {
    QFont f(g.Cell(CellSetting::FontName, row, col).toString());
    f.setPointSizeF(std::max(1.0, g.Cell(CellSetting::FontSize, row, col).toDouble() * scale));
    f.setBold(g.Cell(CellSetting::FontBold, row, col).toBool());
    f.setItalic(g.Cell(CellSetting::FontItalic, row, col).toBool());
    f.setUnderline(g.Cell(CellSetting::FontUnderline, row, col).toBool());
    return f;
}

class Job {
  public:
    Job(const Grid& g, QPrinter& printer, QPainter& p, const PictureProvider& pictures)
        : g_(g), printer_(printer), p_(p), pictures_(pictures) {
        dpi_ = printer.resolution();
        page_ = printer.pageLayout().paintRectPixels(dpi_);
        for (int c = 0; c < g.Cols(); ++c)
            if (!g.ColHidden(c) && g.ColWidth(c) > 0) cols_.push_back(c);
        double total = 0;
        for (int c : cols_)
            total += g.ColWidth(c);
        const double room = page_.width() * 1440.0 / dpi_;
        scale_ = total > room && total > 0 ? room / total : 1.0;
    }

    // Device pixels of a length in twips, after the fit to the page width.
    double px(double twips) const { return twips * dpi_ / 1440.0 * scale_; }

    void title(const QString& text) {
        if (text.isEmpty()) return;
        QFont f(g_.FontName());
        f.setPointSizeF(std::max(8.0, g_.FontSize() + 3));
        f.setBold(true);
        p_.setFont(f);
        p_.setPen(Qt::black);
        const QRectF box(0, y_, page_.width(), QFontMetricsF(f, &printer_).height() * 1.6);
        p_.drawText(box, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
        y_ += box.height();
    }

    bool rows() {
        fixed_rows();
        for (int r = g_.FixedRows(); r < g_.Rows(); ++r) {
            if (g_.RowHidden(r)) continue;
            const double h = height(r);
            // A row taller than a page still goes on one, cut at its foot.
            if (y_ + h > page_.height() && y_ > fixed_height_) {
                if (!printer_.newPage()) return false;
                y_ = 0;
                fixed_rows();
            }
            row(r);
        }
        return true;
    }

  private:
    double height(int r) const {
        double h = px(g_.RowHeight(r));
        for (int c : cols_) {
            if (g_.TextMatrix(r, c).isEmpty()) continue;
            const QFontMetricsF m(cell_font(g_, r, c, scale_), &printer_);
            h = std::max(h, m.height() * 1.25);
        }
        return h;
    }

    void fixed_rows() {
        const double top = y_;
        for (int r = 0; r < g_.FixedRows() && r < g_.Rows(); ++r)
            if (!g_.RowHidden(r)) row(r);
        fixed_height_ = y_ - top;
    }

    void row(int r) {
        const double h = height(r);
        double x = 0;
        const double pad = px(60);
        for (int c : cols_) {
            const double w = px(g_.ColWidth(c));
            const QRectF cell(x, y_, w, h);
            const Color back = Color(g_.Cell(CellSetting::BackColor, r, c).toUInt());
            if (back != rgb(255, 255, 255)) p_.fillRect(cell, qt_color(back));
            p_.setPen(QPen(qt_color(g_.GridColor()), 0));
            p_.drawRect(cell);

            QRectF inner = cell.adjusted(pad, 0, -pad, 0);
            const QString key = g_.Cell(CellSetting::Picture, r, c).toString();
            if (!key.isEmpty() && pictures_) {
                const int side = int(std::min(h, w) * 0.8);
                const QPixmap pic = pictures_(key, side);
                if (!pic.isNull()) {
                    const QRectF at(inner.left(), cell.top() + (h - side) / 2, side, side);
                    p_.drawPixmap(at, pic, QRectF(pic.rect()));
                    inner.setLeft(inner.left() + side + pad);
                }
            }
            if (g_.ColDataType(c) == ColType::Boolean) {
                box(cell, g_.CellChecked(r, c));
                x += w;
                continue;
            }
            const QString text = g_.TextMatrix(r, c);
            if (!text.isEmpty()) {
                p_.setFont(cell_font(g_, r, c, scale_));
                p_.setPen(qt_color(Color(g_.Cell(CellSetting::ForeColor, r, c).toUInt())));
                const Qt::Alignment a =
                    qt_alignment(Align(g_.Cell(CellSetting::Alignment, r, c).toInt()), text);
                p_.drawText(inner, int(a) | Qt::TextSingleLine,
                            QFontMetricsF(p_.font(), &printer_)
                                .elidedText(text, Qt::ElideRight, inner.width()));
            }
            x += w;
        }
        y_ += h;
    }

    // A check box centred in its cell, ticked or empty; none for None.
    void box(const QRectF& cell, CheckBox b) {
        if (b == CheckBox::None) return;
        const double side = std::min({cell.width(), cell.height(), px(200) / scale_}) * 0.7;
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

    const Grid& g_;
    QPrinter& printer_;
    QPainter& p_;
    const PictureProvider& pictures_;
    int dpi_ = 600;
    QRect page_;
    std::vector<int> cols_;
    double scale_ = 1.0;
    double y_ = 0;
    double fixed_height_ = 0;
};

} // namespace

bool print_grid(const Grid& grid, const PrintSetup& setup, const QString& title, int margin_twips,
                const PictureProvider& pictures) {
    QPrinter printer(QPrinter::HighResolution);
    PrintSetup one = setup;
    one.copies = 1;
    apply_setup(printer, one);
    const double mm = margin_twips * 25.4 / 1440.0;
    printer.setPageMargins(QMarginsF(mm, mm, mm, mm), QPageLayout::Millimeter);
    QPainter p;
    if (!p.begin(&printer)) return false;
    Job job(grid, printer, p, pictures);
    job.title(title);
    const bool ok = job.rows();
    return p.end() && ok;
}

} // namespace orva
