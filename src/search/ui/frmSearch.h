#pragma once

#include "search/search.h"

#include <QDialog>
#include <array>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QToolButton;

namespace orva {

class GridWidget;
class QtModal;

// "Find Appointments": renders a SearchForm and forwards the user's input to
// it; the search itself, the list and the ways to the entry are the logic's.
class FrmSearch : public QDialog {
    Q_OBJECT
  public:
    explicit FrmSearch(AppState& s, QWidget* parent = nullptr);
    ~FrmSearch() override;

    SearchForm& form() { return f_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

  private:
    void render();
    void collect();
    void search();
    void grid_clicked(int row, int col);
    void print();
    int px(int twips, Qt::Orientation o = Qt::Horizontal) const;
    int twips(int px, Qt::Orientation o = Qt::Horizontal) const;

    AppState& s_;
    SearchForm f_;
    std::array<QRadioButton*, 4> SrchOpt_{};
    QButtonGroup* options_ = nullptr;
    QLineEdit* apptText_ = nullptr;
    QComboBox* typeIcombo_ = nullptr;
    QDateEdit* srchDTPicker1_ = nullptr;
    QDateEdit* srchDTPicker2_ = nullptr;
    QCheckBox* Check1_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* stopCmd_ = nullptr;
    QPushButton* ClearCmd_ = nullptr;
    QPushButton* hlpCmd_ = nullptr;
    QLabel* lblResults_ = nullptr;
    QLabel* lblHits_ = nullptr;
    QToolButton* imgPrint_ = nullptr;
    GridWidget* srchGrid_ = nullptr;
    int sized_height_ = 0; // the form height in twips last applied
};

void register_frmSearch(QtModal& m, AppState& s);

} // namespace orva
