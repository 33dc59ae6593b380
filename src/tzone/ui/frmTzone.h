#pragma once

#include "tzone/tzone.h"

#include <QDialog>

class QAction;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace orva {

class QtModal;
struct AppState;

// "Tzone - Find dates and times around the World": the time in two zones and
// how far apart they are. The logic (tzone.h) decides; the dialog shows the
// TzoneForm and forwards clicks, its controls named as the logic names them.
class FrmTzone : public QDialog {
    Q_OBJECT
  public:
    // Loads the zone table of the application folder app_path.
    explicit FrmTzone(const QString& app_path, QWidget* parent = nullptr);

    const TzoneForm& form() const { return f_; }

  private:
    void render();
    void list_clicked(int list);

    TzoneForm f_;
    QListWidget* List1_ = nullptr;
    QListWidget* List2_ = nullptr;
    QLineEdit* Text1_ = nullptr;
    QLineEdit* Text2_ = nullptr;
    QLineEdit* Text3_ = nullptr;
    QLineEdit* Text4_ = nullptr;
    QLabel* Label2_ = nullptr;
    QLabel* lblTz24_ = nullptr;
    QLabel* Label3_ = nullptr;
    QLabel* Label4_ = nullptr;
    QLabel* zone124Lbl_ = nullptr;
    QLabel* zone224lbl_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
    QAction* mnuExit_ = nullptr;
    QAction* mnuAbout_ = nullptr;
    QAction* mnuContent_ = nullptr;
};

// Registers "frmTzone" with the seam: made afresh each time, shown with exec().
void register_frmTzone(QtModal& m, AppState& s);

} // namespace orva
