#pragma once

#include <QString>
#include <QStringList>

namespace orva {

// How a message box looks. The literal texts of the program decide the style,
// so it travels with every message through this one seam.
enum class MsgStyle { Plain, Information, Warning, Critical, Question };

enum class Answer { Yes, No, Ok, Cancel };

// Everything modal goes through here: message boxes, Yes/No questions, file
// dialogs and the opening of forms. The window installs a Qt implementation;
// tests install a scripted one and read back the exact texts.
class Modal {
  public:
    virtual ~Modal() = default;

    virtual void message(const QString& text, MsgStyle style) = 0;

    // A question with Yes and No buttons.
    virtual Answer ask_yes_no(const QString& text, MsgStyle style) = 0;

    // The filter is in the program's "caption|pattern" form, for example
    // "cal Files (*.cal)|*.cal". An empty result means nothing was chosen.
    virtual QString save_file_dialog(const QString& filter) = 0;
    // file_name presets the dialog's name box ("*.wav").
    virtual QString open_file_dialog(const QString& filter,
                                     const QString& file_name = QString()) = 0;

    // Opens a form by its name ("frmAppt1") modally and returns when it closes.
    // Forms hand their results back through the shared variables, not here.
    virtual void open_form(const QString& name) = 0;
};

// The caption every message box of the program carries.
inline const QString app_title = QStringLiteral("Orva Calendar");

// The installed seam. Before anything is installed, a silent one answers No and
// chooses nothing, so headless code never blocks on a dialog.
Modal& modal();
void install_modal(Modal* m);

// Turns "caption|pattern|caption|pattern" into Qt's "caption (pattern);;..."
// form. Patterns are kept as written, case included.
QString to_qt_filter(const QString& filter);

} // namespace orva
