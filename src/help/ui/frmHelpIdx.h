#pragma once

#include "help/help.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QSplitter;
class QTabWidget;
class QTextBrowser;
class QTextEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace orva {

class QtModal;
struct AppState;
struct HelpState;

// "Orva Calendar Help ": the outline of topics beside the topic shown, with
// buttons to step through them, hide the outline and print. The logic
// (help.h) decides; the dialog shows the HelpForm and forwards clicks, and
// prints the topics itself.
class FrmHelpIdx : public QDialog {
    Q_OBJECT
  public:
    // Reads the help archive of app_path; the topic handed over in `help`,
    // when there is one, is shown first and the hand-over emptied.
    FrmHelpIdx(const QString& app_path, HelpState& help, QWidget* parent = nullptr);

    const HelpForm& form() const { return f_; }
    HelpForm& form() { return f_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void build();
    void fill_outline();
    void render();
    void line_clicked(QTreeWidgetItem* item);
    void print_shown();
    void print_all();

    HelpForm f_;
    QTabWidget* TabStrip1_ = nullptr;
    QTreeWidget* vsHelpIndex_ = nullptr;
    QTextBrowser* rtfContents_ = nullptr;
    QTextEdit* rtfPrint_ = nullptr;
    QSplitter* split_ = nullptr;
    QPushButton* hlpCmd_ = nullptr;
    QPushButton* priorCmd_ = nullptr;
    QPushButton* nextCmd_ = nullptr;
    QPushButton* prtCmd_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QLabel* imgOpenbook_ = nullptr;
    QLabel* imgClosebook_ = nullptr;
    std::vector<QTreeWidgetItem*> items_; // by outline line
    QString shown_;                       // the rich text rtfContents holds
};

// Registers "frmHelpIdx" with the seam: made afresh each time, shown with
// exec(), opening on the topic in the state's hand-over.
void register_frmHelpIdx(QtModal& m, AppState& s);

} // namespace orva
