#include "core/ui/printer.h"

#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>
#include <algorithm>

namespace orva {

void apply_setup(QPrinter& printer, const PrintSetup& setup) {
    if (!setup.output_file.isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(setup.output_file);
    } else if (!setup.printer_name.isEmpty()) {
        printer.setPrinterName(setup.printer_name);
    }
    const bool landscape = setup.orientation == 2;
    if (setup.page_width > 0 && setup.page_height > 0) {
        // The size is told as the page stands; the paper is named upright.
        const double w = std::min(setup.page_width, setup.page_height) / 20.0;
        const double h = std::max(setup.page_width, setup.page_height) / 20.0;
        printer.setPageSize(
            QPageSize(QSizeF(w, h), QPageSize::Point, QString(), QPageSize::FuzzyMatch));
    }
    printer.setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setPrintRange(setup.selection ? QPrinter::Selection : QPrinter::AllPages);
    printer.setCopyCount(1);
}

PrintSetup setup_of(const QPrinter& printer) {
    PrintSetup s;
    if (printer.outputFormat() == QPrinter::PdfFormat)
        s.output_file = printer.outputFileName();
    else
        s.printer_name = printer.printerName();
    const QPageLayout layout = printer.pageLayout();
    s.orientation = layout.orientation() == QPageLayout::Landscape ? 2 : 1;
    s.copies = std::max(1, printer.copyCount());
    const QRectF paper = layout.fullRectPoints();
    s.page_width = qRound(paper.width() * 20);
    s.page_height = qRound(paper.height() * 20);
    s.selection = printer.printRange() == QPrinter::Selection;
    return s;
}

} // namespace orva
