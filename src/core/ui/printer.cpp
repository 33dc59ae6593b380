#include "core/ui/printer.h"

#include <QPageLayout>
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
    printer.setPageOrientation(setup.orientation == 2 ? QPageLayout::Landscape
                                                      : QPageLayout::Portrait);
    printer.setCopyCount(1);
}

PrintSetup setup_of(const QPrinter& printer) {
    PrintSetup s;
    if (printer.outputFormat() == QPrinter::PdfFormat)
        s.output_file = printer.outputFileName();
    else
        s.printer_name = printer.printerName();
    s.orientation = printer.pageLayout().orientation() == QPageLayout::Landscape ? 2 : 1;
    s.copies = std::max(1, printer.copyCount());
    return s;
}

} // namespace orva
