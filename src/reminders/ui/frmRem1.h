#pragma once

#include "reminders/reminder_setup.h"

#include <QDialog>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;

namespace orva {

class QtModal;
struct AppState;

// "Reminder Setup": lead, unit, alarm sound and messenger of the entry in the
// editor. The logic decides; the dialog copies its state to and from widgets
// named as the logic names them.
class FrmRem1 : public QDialog {
    Q_OBJECT
  public:
    explicit FrmRem1(AppState& s, QWidget* parent = nullptr);

    const RemForm& form() const { return f_; }

    // OK: stays open when the user declines a zero lead.
    void accept() override;
    // Cancel, Escape and the close box alike.
    void reject() override;

  private:
    void render();
    void collect();
    void place(QWidget* parent);

    AppState& s_;
    RemForm f_;
    QLabel* lblAppt_ = nullptr;
    QLabel* lblRemindMe_ = nullptr;
    QLabel* lblNtimes_ = nullptr;
    QComboBox* advComboN_ = nullptr;
    QComboBox* advComboInt_ = nullptr;
    QGroupBox* frame_ = nullptr;
    QLineEdit* alarmTxt_ = nullptr;
    QPushButton* Command5_ = nullptr;
    QPushButton* prevwCmd0_ = nullptr;
    QPushButton* prevwCmd1_ = nullptr;
    QComboBox* animateIcombo_ = nullptr;
    QSlider* Slider1_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
};

// Registers "frmRem1" (the reminder setup) with the seam: made afresh each
// time, shown with exec().
void register_frmRem1(QtModal& m, AppState& s);

} // namespace orva
