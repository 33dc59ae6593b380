#pragma once

#include "state/reminder_state.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QPushButton;

namespace orva {

class GridWidget;
class QtModal;
struct AppState;

// The pop-up note of due reminders, on top of every other window and shown
// also while the main window is hidden. The logic fills it; the window shows
// the note and hands Check1 and OK back.
class FrmRemnote : public QDialog {
    Q_OBJECT
  public:
    explicit FrmRemnote(AppState& s, QWidget* parent = nullptr);

    // OK, Escape and the close box alike: the note goes, the sound stops.
    void accept() override;
    void reject() override;

  protected:
    void resizeEvent(QResizeEvent* e) override;
    void changeEvent(QEvent* e) override;

  private:
    void render();
    // The grid's extent in twips, from the widget's size.
    void take_extent();

    AppState& s_;
    GridWidget* gRmdr_ = nullptr;
    QCheckBox* Check1_ = nullptr;
    QPushButton* Command1_ = nullptr;
};

// "Second Reminder": the minutes to arm the note's reminder again.
class FrmReRmdr : public QDialog {
    Q_OBJECT
  public:
    explicit FrmReRmdr(AppState& s, QWidget* parent = nullptr);
    void accept() override;

  private:
    AppState& s_;
    ReRmdrForm f_;
    QComboBox* comboReRmdr_ = nullptr;
};

// Registers "frmRemnote" and "frmReRmdr" with the seam.
void register_frmRemnote(QtModal& m, AppState& s);

} // namespace orva
