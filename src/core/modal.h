#pragma once

#include <QString>
#include <QStringList>

namespace orva {

// How a message box looks. The literal texts of the program decide the style,
// so it travels with every message through this one seam.
enum class MsgStyle { Plain, Information, Warning, Critical, Question };

enum class Answer { Yes, No, Ok, Cancel };

// What a print dialog settled: where the pages go, which way up, on what
// paper, and how many copies the user asked for. A printing routine prints
// the copies itself, one job each, so the printer's own count stays at one.
struct PrintSetup {
    QString printer_name; // empty: the system's default printer
    QString output_file;  // non-empty: a PDF file instead of a printer
    int orientation = 1;  // 1 portrait, 2 landscape
    int copies = 1;
    // The paper in twips as it stands in `orientation` (a landscape letter
    // page is 15840 wide); 0 when the dialog has not said, which leaves the
    // printer's own paper.
    int page_width = 0, page_height = 0;
    // In: whether the dialog offers the selection as what to print. Without
    // the offer the answer never says selection.
    bool selection_enabled = false;
    // In: the offered selection is preselected. Out: the user chose to print
    // only the selection.
    bool selection = false;
};

// What the user reads when a page could not be printed or its file written.
inline const QString print_failed_msg = QStringLiteral(
    "The page could not be printed. Check the printer, or the folder the file was to go to.");

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

    // The print dialog over `setup`, which presets it and takes the choice.
    // False when the user cancelled; `setup` is then as it was.
    virtual bool print_dialog(PrintSetup& setup) = 0;

    // The colour dialog starting at `color` (24 bits, red in the low byte).
    // False on Cancel, leaving `color` as it was.
    virtual bool choose_color(quint32& color) = 0;

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
