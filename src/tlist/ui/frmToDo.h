#pragma once

#include "state/app_state.h"
#include "tlist/tlist.h"

#include <QDialog>

class QAction;
class QComboBox;
class QLabel;
class QPushButton;
class QToolBar;
class QToolButton;

namespace orva {

class GridWidget;
class QtModal;

// "T-List": the to-do sheet of the open calendar. The logic (tlist/tlist.h)
// holds the sheet and decides; the dialog shows vsToDo and forwards the
// toolbar, the pictures, the type list and the grid's events to it, and
// carries the clipboard's text to and from Copy, Cut and Paste.
//
// OK and the close box (and Escape) store the sheet; Cancel leaves the member
// as it was.
class FrmToDo : public QDialog {
    Q_OBJECT
  public:
    explicit FrmToDo(AppState& s, QWidget* parent = nullptr);
    ~FrmToDo() override;

    ToDoForm& form() { return f_; }
    GridWidget* grid_widget() const { return vsToDo_; }
    // The toolbar's action of a key ("Copy", "Tab Left"); null for none.
    QAction* tool(const QString& key) const;

    void accept() override; // Command1
    void reject() override; // the close box and Escape; Command2 after it sets `cancelled`

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void build_toolbar();
    void run_key(const QString& key);
    void render_types();
    void unload();

    AppState& s_;
    ToDoForm f_;
    bool unloaded_ = false;
    QToolBar* Toolbar1_ = nullptr;
    QLabel* Label2_ = nullptr;
    GridWidget* vsToDo_ = nullptr;
    QObject* sheet_viewport_ = nullptr;
    QToolButton* Image1_ = nullptr;
    QComboBox* typeIcombo_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
};

// Registers "frmToDo" with the seam: made afresh each time, shown with exec().
void register_frmToDo(QtModal& m, AppState& s);

} // namespace orva
