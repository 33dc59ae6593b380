#pragma once

#include "appointments/quick_add.h"

#include <QDialog>

class QComboBox;
class QPushButton;
class QTimeEdit;

namespace orva {

class QtModal;

// "Quick Add": the sticker and end time of an entry just typed into a planner
// grid. The logic decides; the dialog copies its state to and from widgets
// named as the logic names them (typeIcombo, DTPicker1, Command1, Command2).
class FrmQuick : public QDialog {
    Q_OBJECT
  public:
    explicit FrmQuick(AppState& s, QWidget* parent = nullptr);

    const QuickForm& form() const { return f_; }

    // OK: stays open when the logic refuses the end time.
    void accept() override;
    // Cancel, Escape and the close box alike.
    void reject() override;

  private:
    void render();
    void collect();
    void place(QWidget* parent);

    AppState& s_;
    QuickForm f_;
    QComboBox* typeIcombo_ = nullptr;
    QTimeEdit* DTPicker1_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
};

// Registers "frmQuick" with the seam: made afresh each time, shown with exec().
void register_frmQuick(QtModal& m, AppState& s);

} // namespace orva
