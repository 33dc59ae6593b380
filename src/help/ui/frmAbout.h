#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace orva {

class QtModal;

// The about box: the program's name and version, and OK.
class FrmAbout : public QDialog {
    Q_OBJECT
  public:
    explicit FrmAbout(QWidget* parent = nullptr);

  private:
    QLabel* lblName_ = nullptr;
    QLabel* lblVersion_ = nullptr;
    QLabel* lblDescription_ = nullptr;
    QPushButton* cmdOK_ = nullptr;
};

// Registers "frmAbout" with the seam: made afresh each time, shown with exec().
void register_frmAbout(QtModal& m);

} // namespace orva
