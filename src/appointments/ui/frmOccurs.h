#pragma once

#include "appointments/recurrence.h"

#include <QDialog>

class QComboBox;
class QDateEdit;
class QLabel;
class QPushButton;
class QRadioButton;

namespace orva {

class QtModal;

// "Recurring Appointment": the rule of the entry open in the editor. The
// logic decides; the dialog copies its state to and from widgets named as
// the logic names them (Option1, occursCombo, untilDTPicker, Command2 ...).
class FrmOccurs : public QDialog {
    Q_OBJECT
  public:
    // `editor` is the loaded appointment editor; it must outlive the dialog.
    FrmOccurs(AppState& s, ApptForm& editor, QWidget* parent = nullptr);

    const OccursForm& form() const { return f_; }

    // OK (Command2): the rule goes to the shared variables and the editor.
    void accept() override;

  private:
    void render();
    void collect();
    void place();
    // Collects the widgets, runs one handler of the logic, shows the result.
    template <class Handler> void run(Handler handler);

    AppState& s_;
    ApptForm& editor_;
    OccursForm f_;
    QRadioButton* Option1_ = nullptr;
    QRadioButton* Option2_ = nullptr;
    QComboBox* occursCombo_ = nullptr;
    QComboBox* EveryCombo_ = nullptr;
    QComboBox* occursWCombo_ = nullptr;
    QComboBox* everyWkDCombo_ = nullptr;
    QComboBox* mthCombo_ = nullptr;
    QDateEdit* untilDTPicker_ = nullptr;
    QLabel* Label1_ = nullptr;
    QPushButton* Command2_ = nullptr;
    QPushButton* Command1_ = nullptr;
};

// Registers "frmOccurs" with the seam: made afresh over the editor that is
// loaded (AppState::appt_form) and shown with exec(); with no editor loaded
// nothing opens.
void register_frmOccurs(QtModal& m, AppState& s);

} // namespace orva
