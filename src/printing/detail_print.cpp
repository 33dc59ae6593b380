#include "printing/detail_print.h"

#include "core/event_loop.h"
#include "printing/print_setup.h"

#include <QRegularExpression>
#include <algorithm>

namespace orva {
namespace {

constexpr int soft_break = 60; // a blank after this many characters ends the line
constexpr int hard_break = 85; // any character after this many does

// A row of " " and `text`, cell by cell: a tab in the text stays text.
void add_row(Grid& g, const QString& text) {
    g.AddItem(QStringLiteral(" "));
    if (g.Cols() > 1) g.setTextMatrix(g.Rows() - 1, 1, text);
}

} // namespace

QStringList notes_lines(const QString& notes) {
    static const QRegularExpression line_ends(QStringLiteral("[\r\n]+"));
    QString text = notes;
    text.replace(line_ends, QStringLiteral("\t"));
    QStringList lines;
    int start = 0, n = 0;
    for (int i = 0; i < text.size(); ++i) {
        // A long note keeps the window alive.
        yield_events();
        const QChar ch = text.at(i);
        if (n > soft_break && ch == QLatin1Char(' ')) {
            lines << text.mid(start, n);
            start = i;
            n = 1;
        } else if (ch == QLatin1Char('\t')) {
            lines << text.mid(start, n);
            start = i + 1;
            n = 0;
        } else if (n > hard_break) {
            lines << text.mid(start, n);
            start = i;
            n = 1;
        } else {
            ++n;
        }
    }
    if (start < text.size()) lines << text.mid(start);
    return lines;
}

void fill_dtl_print(PlannerState& view) {
    Grid& g = view.vsPrtGrid;
    const Grid& d = view.vsDtl;
    g.setRows(0);
    g.setCols(std::max(d.Cols(), 2));
    g.Clear();
    g.setFixedRows(0);
    g.setFixedCols(0);
    // The pane's cells carry the options' font; the list takes it whole.
    const bool shown = d.Rows() > 0 && d.Cols() > 1;
    g.setFontName(shown ? d.Cell(CellSetting::FontName, 0, 1).toString() : d.FontName());
    g.setFontSize(shown ? d.Cell(CellSetting::FontSize, 0, 1).toDouble() : d.FontSize());
    g.setFontBold(shown ? d.Cell(CellSetting::FontBold, 0, 1).toBool() : d.FontBold());
    g.setFontItalic(d.FontItalic());
    g.setBackColor(d.BackColor());
    if (shown) g.setForeColor(Color(d.Cell(CellSetting::ForeColor, 0, 1).toUInt()));
    for (int c = 0; c < g.Cols() && c < d.Cols(); ++c)
        g.setColWidth(c, d.ColWidth(c));
    const int room = letter_width - page_allowance - g.ColWidth(0);
    if (g.ColWidth(1) < room) g.setColWidth(1, room);

    g.AddItem(dtl_print_heading + QLatin1Char('\t') + dtl_print_heading);
    g.setMergeCells(MergeMode::Free);
    g.setMergeRow(0, true);
    g.AddItem(QStringLiteral(" \t "));
    for (int r = 0; r < d.Rows(); ++r) {
        add_row(g, d.TextMatrix(r, 1));
        const int row = g.Rows() - 1;
        g.setRowHeight(row, d.RowHeight(r));
        const QString picture = d.Cell(CellSetting::Picture, r, 0).toString();
        if (picture.isEmpty()) continue;
        g.setCell(CellSetting::Picture, row, 0, picture);
        g.setCell(CellSetting::PictureAlignment, row, 0,
                  d.Cell(CellSetting::PictureAlignment, r, 0));
    }
    add_row(g, QStringLiteral("  ") + view.ctl(QStringLiteral("Label1")).text.trimmed());
    add_row(g, dtl_print_notes);
    for (const QString& line : notes_lines(view.ctl(QStringLiteral("rtNotes")).text))
        add_row(g, line);
    g.AddItem(QStringLiteral(" \t "));
    g.clear_error();
}

void prtdtlImg_Click(AppState& s, WindowPort& w) {
    PrintJob job(s, w, s.vsPrtGrid);
    fill_dtl_print(s);
    if (!job.setup(1, true)) return;
    job.print(printed_on_text());
}

} // namespace orva
