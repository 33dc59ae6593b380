#pragma once

#include "appointments/appt_editor.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimeEdit;
class QToolButton;

namespace orva {

class QtModal;

// The appointment editor on screen. The logic decides; the dialog copies its
// state to and from widgets named as the logic names them, and while it is
// open AppState::appt_form points at its form so the dialogs it opens can
// read and set the editor's controls.
class FrmAppt1 : public QDialog {
    Q_OBJECT
  public:
    explicit FrmAppt1(AppState& s, QWidget* parent = nullptr);
    ~FrmAppt1() override;

    const ApptForm& form() const { return f_; }

    // OK: validates and saves; stays open after a refusing message.
    void accept() override;
    // Cancel, Escape and the close box alike.
    void reject() override;

  private:
    void build();
    void connect_events();
    void render();
    // Runs a handler after the widgets' values have been taken in, then shows
    // what it left.
    template <class F> void run(F handler);
    void collect();

    AppState& s_;
    ApptForm f_;
    QLineEdit* Text1_ = nullptr;
    QComboBox* typeIcombo_ = nullptr;
    QDateEdit* apptDTPicker_ = nullptr;
    QTimeEdit* aptTimePick1_ = nullptr;
    QTimeEdit* aptTimePick2_ = nullptr;
    QCheckBox* Check1_ = nullptr;
    QCheckBox* Check2_ = nullptr;
    QLineEdit* Notes_ = nullptr;
    QLineEdit* txtApptDt_ = nullptr;
    QLabel* lblApptDt_ = nullptr;
    QLabel* imgApptDt_ = nullptr;
    QLabel* lblDateTime_ = nullptr;
    QLabel* lblRem_ = nullptr;
    QLabel* lblOccur_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
    QPushButton* Command3_ = nullptr;
    QToolButton* Command4_ = nullptr;
    QToolButton* cmdRem_ = nullptr;
    QPushButton* delCmd_ = nullptr;
    QToolButton* Image6_ = nullptr;
};

// Registers "frmAppt1" with the seam: made afresh each time, shown with exec().
void register_frmAppt1(QtModal& m, AppState& s);

} // namespace orva
