#pragma once

#include "core/modal.h"

#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>

namespace orva {

// The modal seam on screen: message boxes, questions and file dialogs over the
// main window, and the registry of forms that open_form() shows modally.
class QtModal final : public Modal {
  public:
    void set_parent(QWidget* parent) { parent_ = parent; }
    // A form is made afresh each time it opens and shown with exec().
    void register_form(const QString& name, std::function<void(QWidget* parent)> open);

    void message(const QString& text, MsgStyle style) override;
    Answer ask_yes_no(const QString& text, MsgStyle style) override;
    QString save_file_dialog(const QString& filter) override;
    QString open_file_dialog(const QString& filter, const QString& file_name = QString()) override;
    bool print_dialog(PrintSetup& setup) override;
    bool choose_color(quint32& color) override;
    void open_form(const QString& name) override;

  private:
    // The window a box or form opens over: the topmost modal form when one is
    // open (a message of the editor belongs over the editor), else the main
    // window.
    QWidget* host() const;
    QPointer<QWidget> parent_;
    std::map<QString, std::function<void(QWidget*)>> forms_;
};

} // namespace orva
