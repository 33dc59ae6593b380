#include "core/ui/qt_modal.h"

#include "core/ui/printer.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>

namespace orva {
namespace {

QMessageBox::Icon icon_of(MsgStyle style) {
    switch (style) {
    case MsgStyle::Information:
        return QMessageBox::Information;
    case MsgStyle::Warning:
        return QMessageBox::Warning;
    case MsgStyle::Critical:
        return QMessageBox::Critical;
    case MsgStyle::Question:
        return QMessageBox::Question;
    case MsgStyle::Plain:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

QWidget* QtModal::host() const {
    if (QWidget* w = QApplication::activeModalWidget()) return w;
    return parent_;
}

void QtModal::register_form(const QString& name, std::function<void(QWidget*)> open) {
    forms_[name] = std::move(open);
}

void QtModal::message(const QString& text, MsgStyle style) {
    QMessageBox box(icon_of(style), app_title, text, QMessageBox::Ok, host());
    box.setObjectName(QStringLiteral("message"));
    box.exec();
}

Answer QtModal::ask_yes_no(const QString& text, MsgStyle style) {
    QMessageBox box(icon_of(style), app_title, text, QMessageBox::Yes | QMessageBox::No, host());
    box.setObjectName(QStringLiteral("question"));
    return box.exec() == QMessageBox::No ? Answer::No : Answer::Yes;
}

QString QtModal::save_file_dialog(const QString& filter) {
    return QFileDialog::getSaveFileName(host(), app_title, QString(), to_qt_filter(filter));
}

QString QtModal::open_file_dialog(const QString& filter, const QString& file_name) {
    QFileDialog dialog(host(), app_title, QString(), to_qt_filter(filter));
    dialog.setObjectName(QStringLiteral("fileDialog"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    // The read-only box of other platforms' dialogs has no counterpart here.
    if (!file_name.isEmpty()) dialog.selectFile(file_name);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return dialog.selectedFiles().constFirst();
}

bool QtModal::print_dialog(PrintSetup& setup) {
    PrintSetup preset = setup;
    preset.selection = setup.selection_enabled && setup.selection;
    QPrinter printer(QPrinter::HighResolution);
    apply_setup(printer, preset);
    QPrintDialog dialog(&printer, host());
    dialog.setObjectName(QStringLiteral("printDialog"));
    dialog.setOption(QAbstractPrintDialog::PrintSelection, preset.selection_enabled);
    dialog.setPrintRange(preset.selection ? QAbstractPrintDialog::Selection
                                          : QAbstractPrintDialog::AllPages);
    // Saving a PDF is how a page reaches paper through another machine, so
    // the file stays among the choices.
    dialog.setOption(QAbstractPrintDialog::PrintToFile, true);
    // The jobs print whole documents; a range the dialog took would be lost.
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    if (dialog.exec() != QDialog::Accepted) return false;
    const bool offered = setup.selection_enabled;
    const bool chosen = dialog.printRange() == QAbstractPrintDialog::Selection;
    setup = setup_of(printer);
    setup.selection_enabled = offered;
    setup.selection = offered && chosen;
    return true;
}

bool QtModal::choose_color(quint32& color) {
    const QColor start(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF));
    const QColor chosen = QColorDialog::getColor(start, host(), app_title);
    if (!chosen.isValid()) return false;
    color = quint32(chosen.red()) | (quint32(chosen.green()) << 8) | (quint32(chosen.blue()) << 16);
    return true;
}

void QtModal::open_form(const QString& name) {
    if (auto it = forms_.find(name); it != forms_.end()) it->second(host());
}

} // namespace orva
