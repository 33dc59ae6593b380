#pragma once

#include "reminders/rem_list.h"

#include <QDialog>
#include <array>

class QButtonGroup;
class QDateEdit;
class QLabel;
class QPushButton;
class QRadioButton;

namespace orva {

class GridWidget;
class QtModal;

// "Reminders  ": renders a RemListForm and forwards the user's input to it;
// reading the members, the list and the ways to the day and the entry are
// the logic's.
class FrmRemList : public QDialog {
    Q_OBJECT
  public:
    explicit FrmRemList(AppState& s, QWidget* parent = nullptr);
    ~FrmRemList() override;

    RemListForm& form() { return f_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void render();
    void refresh();
    void grid_double_clicked(int row, int col);
    // Places the top band, the grid and the count line for the window's size.
    void place();
    int px(int twips, Qt::Orientation o = Qt::Horizontal) const;
    int twips(int px, Qt::Orientation o = Qt::Horizontal) const;

    AppState& s_;
    RemListForm f_;
    QWidget* top_ = nullptr; // pickers, options and buttons
    QDateEdit* srchDTPicker1_ = nullptr;
    QDateEdit* srchDTPicker2_ = nullptr;
    std::array<QRadioButton*, 3> optDisplay_{};
    QButtonGroup* options_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
    GridWidget* vsRmdr_ = nullptr;
    QLabel* lblCnt_ = nullptr;
};

void register_frmRemList(QtModal& m, AppState& s);

} // namespace orva
