#include "printing/print_setup.h"

#include "core/clock.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <algorithm>

namespace orva {
namespace {

// The band's text colour as the window designs it, for a band no skin has
// coloured yet.
constexpr Color band_text = rgb(192, 255, 192);

} // namespace

QString printed_on_text() {
    return QStringLiteral("Orva Calendar: ") + QStringLiteral(" printed on ") +
           QLocale().toString(clock().today(), QLocale::LongFormat);
}

void print_setup(PrintState& p, int orientation, bool no_selection) {
    PrintSetup preset = p.printer;
    preset.orientation = orientation == 2 ? 2 : 1;
    preset.copies = 1;
    preset.selection_enabled = !no_selection;
    preset.selection = false;
    if (preset.orientation != p.printer.orientation && preset.page_width > 0)
        std::swap(preset.page_width, preset.page_height);
    p.print_selection = false;
    if (!modal().print_dialog(preset)) {
        p.print_cancel = true;
        return;
    }
    p.print_cancel = false;
    p.print_selection = !no_selection && preset.selection;
    p.printer = preset;
    p.printer.copies = std::max(1, preset.copies);
}

QSize page_twips(const PrintSetup& printer) {
    if (printer.page_width > 0 && printer.page_height > 0)
        return QSize(printer.page_width, printer.page_height);
    return printer.orientation == 2 ? QSize(letter_height, letter_width)
                                    : QSize(letter_width, letter_height);
}

bool copy_through_file(const Grid& source, Grid& target, const QString& app_path) {
    target.Clear();
    bool copied = false;
    if (!app_path.isEmpty()) {
        const QString path = QDir(app_path).filePath(print_copy_file);
        copied = source.SaveGrid(path) && target.LoadGrid(path);
        QFile::remove(path);
    }
    source.clear_error();
    target.clear_error();
    if (!copied) {
        target.setRows(0);
        target.setCols(0);
    }
    return copied;
}

void copy_cell_colors(const Grid& source, Grid& target) {
    const int rows = std::min(source.Rows(), target.Rows());
    const int cols = std::min(source.Cols(), target.Cols());
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c) {
            target.setCell(CellSetting::BackColor, r, c, source.Cell(CellSetting::BackColor, r, c));
            target.setCell(CellSetting::ForeColor, r, c, source.Cell(CellSetting::ForeColor, r, c));
        }
}

LabelColors label1_colors(const PlannerState& view) {
    // The band always has a colour of its own here (the transparent skin is
    // never offered), so its text is printed as it shows.
    const auto it = view.skin.labels.find(QStringLiteral("Label1"));
    if (it != view.skin.labels.end()) return it->second;
    return {view.label1_back_color, band_text};
}

void add_title_row(Grid& g, const PlannerState& view, const QString& text, int cells,
                   double points) {
    QStringList pieces;
    for (int c = 0; c < std::max(cells, g.Cols()); ++c)
        pieces << (c < cells ? text : QStringLiteral(" "));
    g.AddItem(pieces.join(QLatin1Char('\t')), 0);
    if (g.Cols() == 0) return;
    const int last = g.Cols() - 1;
    const LabelColors band = label1_colors(view);
    g.setCell(CellSetting::FontBold, 0, 0, 0, last, true);
    g.setCell(CellSetting::FontSize, 0, 0, 0, last, points);
    g.setCell(CellSetting::BackColor, 0, 0, 0, last, band.back);
    g.setCell(CellSetting::ForeColor, 0, 0, 0, last, band.text);
    // As the band shows its caption, whatever the column's own alignment.
    g.setCell(CellSetting::Alignment, 0, 0, 0, last, int(Align::LeftCenter));
    if (g.MergeCells() == MergeMode::Never) g.setMergeCells(MergeMode::Free);
    g.setMergeRow(0, true);
}

bool print_copies(const PrintSetup& setup,
                  const std::function<bool(const PrintSetup& one)>& print_one) {
    PrintSetup one = setup;
    one.copies = 1;
    for (int copy = 1; copy <= std::max(1, setup.copies); ++copy)
        if (!print_one || !print_one(one)) return false;
    return true;
}

bool print_copies(const PrintState& p, const Grid& g, const QString& name) {
    return print_copies(p.printer, [&](const PrintSetup& one) {
        return p.print_grid && p.print_grid(g, one, name, p.margin_lr, p.margin_tb);
    });
}

PrintJob::PrintJob(AppState& s, WindowPort& w, Grid& print_grid) : s_(s), w_(w), g_(print_grid) {
    w_.set_busy(true);
    s_.timer1_enabled = false;
    s_.margin_lr = 720;
    s_.margin_tb = 720;
}

PrintJob::~PrintJob() {
    s_.timer1_enabled = true;
    w_.set_busy(false);
    g_.Clear();
    g_.setRows(0);
    g_.setCols(0);
    g_.set_extent(1, 1);
    g_.clear_error();
}

bool PrintJob::copy(const Grid& source) {
    if (copy_through_file(source, g_, s_.app_path)) return true;
    w_.set_busy(false);
    modal().message(print_copy_failed_msg, MsgStyle::Critical);
    return false;
}

bool PrintJob::setup(int orientation, bool no_selection) {
    w_.set_busy(false);
    print_setup(s_, orientation, no_selection);
    if (s_.print_cancel) return false;
    w_.set_busy(true);
    return true;
}

void PrintJob::print(const QString& name) {
    if (print_copies(s_, g_, name)) return;
    w_.set_busy(false);
    modal().message(print_failed_msg, MsgStyle::Critical);
}

} // namespace orva
