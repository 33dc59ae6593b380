#include "shell/qt_modal.h"

#include <QFileDialog>
#include <QMessageBox>

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

void QtModal::register_form(const QString& name, std::function<void(QWidget*)> open) {
    forms_[name] = std::move(open);
}

void QtModal::message(const QString& text, MsgStyle style) {
    QMessageBox box(icon_of(style), app_title, text, QMessageBox::Ok, parent_);
    box.setObjectName(QStringLiteral("message"));
    box.exec();
}

Answer QtModal::ask_yes_no(const QString& text, MsgStyle style) {
    QMessageBox box(icon_of(style), app_title, text, QMessageBox::Yes | QMessageBox::No, parent_);
    box.setObjectName(QStringLiteral("question"));
    return box.exec() == QMessageBox::No ? Answer::No : Answer::Yes;
}

QString QtModal::save_file_dialog(const QString& filter) {
    return QFileDialog::getSaveFileName(parent_, app_title, QString(), to_qt_filter(filter));
}

QString QtModal::open_file_dialog(const QString& filter) {
    return QFileDialog::getOpenFileName(parent_, app_title, QString(), to_qt_filter(filter));
}

void QtModal::open_form(const QString& name) {
    if (auto it = forms_.find(name); it != forms_.end()) it->second(parent_);
}

} // namespace orva
