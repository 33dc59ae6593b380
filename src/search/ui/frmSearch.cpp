#include "search/ui/frmSearch.h"

#include "appointments/ui/sticker_pictures.h"
#include "core/ui/form_helpers.h"
#include "core/ui/qt_modal.h"
#include "core/ui/tool_icons.h"
#include "grid/ui/grid_printer.h"
#include "grid/ui/grid_widget.h"
#include "help/help.h"
#include "help/help_topics.h"
#include "printing/print_setup.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace orva {
namespace {

const char* const option_captions[] = {
    "Find Appt Containing Text:",
    "Find Notes containing Text:",
    "Find Appointments by ICON:",
    "Find all appointments within date range",
};

// The hourglass for as long as it lives.
struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

} // namespace

FrmSearch::FrmSearch(AppState& s, QWidget* parent) : QDialog(parent), s_(s) {
    setObjectName(QStringLiteral("frmSearch"));
    setAccessibleDescription(QStringLiteral("frmSearch"));
    setWindowTitle(QStringLiteral("Find Appointments"));
    setModal(true);

    options_ = new QButtonGroup(this);
    for (int i = 0; i < 4; ++i) {
        SrchOpt_[i] = new QRadioButton(QString::fromLatin1(option_captions[i]), this);
        name_control(SrchOpt_[i], QStringLiteral("SrchOpt%1").arg(i));
        options_->addButton(SrchOpt_[i], i);
    }
    apptText_ = new QLineEdit(this);
    name_control(apptText_, QStringLiteral("apptText"), QStringLiteral("Text to find"));
    typeIcombo_ = new QComboBox(this);
    name_control(typeIcombo_, QStringLiteral("typeIcombo"), QStringLiteral("Sticker"));
    typeIcombo_->setIconSize(QSize(20, 20));

    auto* lblDates = new QLabel(QStringLiteral("Search dates:"), this);
    name_control(lblDates, QStringLiteral("lblDates"));
    srchDTPicker1_ = new QDateEdit(this);
    name_control(srchDTPicker1_, QStringLiteral("srchDTPicker1"), QStringLiteral("First date"));
    srchDTPicker2_ = new QDateEdit(this);
    name_control(srchDTPicker2_, QStringLiteral("srchDTPicker2"), QStringLiteral("Last date"));
    for (QDateEdit* d : {srchDTPicker1_, srchDTPicker2_}) {
        d->setCalendarPopup(true);
        d->setDisplayFormat(QLocale().dateFormat(QLocale::ShortFormat));
    }
    lblDates->setBuddy(srchDTPicker1_);
    Check1_ = new QCheckBox(QStringLiteral("Case Sensitive"), this);
    name_control(Check1_, QStringLiteral("Check1"));

    Command1_ = new QPushButton(QStringLiteral("Search"), this);
    name_control(Command1_, QStringLiteral("Command1"));
    Command1_->setDefault(true);
    stopCmd_ = new QPushButton(QStringLiteral("Stop"), this);
    name_control(stopCmd_, QStringLiteral("stopCmd"));
    ClearCmd_ = new QPushButton(QStringLiteral("Clear"), this);
    name_control(ClearCmd_, QStringLiteral("ClearCmd"));
    hlpCmd_ = new QPushButton(QStringLiteral("Help"), this);
    name_control(hlpCmd_, QStringLiteral("hlpCmd"));
    hlpCmd_->setAutoDefault(false);

    lblResults_ = new QLabel(QStringLiteral("Search Results:"), this);
    name_control(lblResults_, QStringLiteral("lblResults"));
    lblHits_ = new QLabel(this);
    name_control(lblHits_, QStringLiteral("lblHits"));
    imgPrint_ = new QToolButton(this);
    name_control(imgPrint_, QStringLiteral("imgPrint"));
    imgPrint_->setToolTip(QStringLiteral("Print"));
    imgPrint_->setIcon(tool_icon(QStringLiteral("document-print"), QStringLiteral("\U0001F5A8\uFE0F")));
    imgPrint_->setIconSize(QSize(20, 20));
    imgPrint_->setAutoRaise(true);
    name_control(imgPrint_, QStringLiteral("imgPrint"));

    srchGrid_ = new GridWidget(this);
    name_control(srchGrid_, QStringLiteral("srchGrid"), QStringLiteral("Search results"));
    srchGrid_->setGrid(&f_.srchGrid);
    srchGrid_->set_picture_provider(planner_pictures());
    srchGrid_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);

    auto* choose = new QGridLayout;
    choose->addWidget(SrchOpt_[0], 0, 0);
    choose->addWidget(apptText_, 0, 1, 2, 1, Qt::AlignVCenter);
    choose->addWidget(SrchOpt_[1], 1, 0);
    choose->addWidget(SrchOpt_[2], 2, 0);
    choose->addWidget(typeIcombo_, 2, 1);
    choose->addWidget(SrchOpt_[3], 3, 0, 1, 2);
    auto* dates = new QHBoxLayout;
    dates->addWidget(lblDates);
    dates->addWidget(srchDTPicker1_);
    dates->addWidget(srchDTPicker2_);
    dates->addSpacing(12);
    dates->addWidget(Check1_);
    dates->addStretch(1);
    choose->addLayout(dates, 4, 0, 1, 2);
    choose->setColumnStretch(1, 1);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(Command1_);
    buttons->addWidget(stopCmd_);
    buttons->addWidget(ClearCmd_);
    buttons->addStretch(1);
    buttons->addWidget(hlpCmd_);
    auto* top = new QHBoxLayout;
    top->addLayout(choose, 1);
    top->addSpacing(12);
    top->addLayout(buttons);

    auto* results = new QHBoxLayout;
    results->addWidget(lblResults_);
    results->addWidget(lblHits_, 1);
    results->addWidget(imgPrint_);

    auto* outer = new QVBoxLayout(this);
    outer->addLayout(top);
    outer->addLayout(results);
    outer->addWidget(srchGrid_, 1);
    outer->addStretch(0);

    connect(options_, &QButtonGroup::idClicked, this, [this](int id) { f_.srch_kind = id; });
    connect(Command1_, &QPushButton::clicked, this, &FrmSearch::search);
    connect(hlpCmd_, &QPushButton::clicked, this,
            [this] { show_help(s_.help(), topic_of_form(QStringLiteral("frmSearch"))); });
    connect(stopCmd_, &QPushButton::clicked, this, [this] { stopCmd_Click(f_); });
    connect(ClearCmd_, &QPushButton::clicked, this, [this] {
        collect();
        ClearCmd_Click(f_);
        render();
    });
    connect(imgPrint_, &QToolButton::clicked, this, &FrmSearch::print);
    connect(srchGrid_, &GridWidget::cellClicked, this, &FrmSearch::grid_clicked);
    f_.shown = [this] { render(); };

    Form_Load(f_);
    SrchOpt_[0]->setChecked(true);
    apptText_->setFocus();
    render();
}

FrmSearch::~FrmSearch() {
    // A search still yielding inside this form must not come back to it.
    f_.srch_stop = true;
    ++f_.run_serial;
    srchGrid_->setGrid(nullptr);
}

int FrmSearch::px(int t, Qt::Orientation o) const {
    const int dpi = o == Qt::Horizontal ? logicalDpiX() : logicalDpiY();
    return t * dpi / 1440;
}

int FrmSearch::twips(int p, Qt::Orientation o) const {
    const int dpi = o == Qt::Horizontal ? logicalDpiX() : logicalDpiY();
    return dpi > 0 ? p * 1440 / dpi : p * 15;
}

void FrmSearch::render() {
    typeIcombo_->blockSignals(true);
    if (typeIcombo_->count() != int(f_.typeIcombo.items.size())) {
        typeIcombo_->clear();
        for (const auto& item : f_.typeIcombo.items)
            typeIcombo_->addItem(sticker_icon(item.picture), item.caption, item.key);
    }
    typeIcombo_->setCurrentIndex(f_.typeIcombo.list_index);
    typeIcombo_->blockSignals(false);
    if (apptText_->text() != f_.apptText) apptText_->setText(f_.apptText);
    srchDTPicker1_->setDate(f_.srchDTPicker1);
    srchDTPicker2_->setDate(f_.srchDTPicker2);
    Check1_->setChecked(f_.Check1);
    lblHits_->setText(f_.lblHits);

    const auto apply = [this](QWidget* w, const QString& name) {
        const Control& c = f_.ctl(name);
        w->setVisible(c.visible);
        w->setEnabled(c.enabled);
    };
    apply(srchGrid_, QStringLiteral("srchGrid"));
    apply(stopCmd_, QStringLiteral("stopCmd"));
    apply(lblResults_, QStringLiteral("lblResults"));
    apply(imgPrint_, QStringLiteral("imgPrint"));
    // Stop keeps its place while hidden, so the buttons do not jump.
    if (!stopCmd_->isVisible()) {
        QSizePolicy keep = stopCmd_->sizePolicy();
        keep.setRetainSizeWhenHidden(true);
        stopCmd_->setSizePolicy(keep);
    }
    setCursor(f_.busy ? Qt::WaitCursor : Qt::ArrowCursor);

    if (f_.height != sized_height_) {
        sized_height_ = f_.height;
        resize(std::max(width(), px(f_.width)), px(f_.height, Qt::Vertical));
    }
    srchGrid_->refresh();
}

void FrmSearch::collect() {
    f_.srch_kind = std::max(0, options_->checkedId());
    f_.apptText = apptText_->text();
    f_.typeIcombo.list_index = typeIcombo_->currentIndex();
    f_.srchDTPicker1 = srchDTPicker1_->date();
    f_.srchDTPicker2 = srchDTPicker2_->date();
    f_.Check1 = Check1_->isChecked();
}

void FrmSearch::search() {
    collect();
    WaitCursor wait;
    Command1_Click(s_, f_);
    render();
}

void FrmSearch::grid_clicked(int row, int col) {
    srchGrid_Click(s_, f_, row, col);
    if (f_.unload) {
        accept();
        return;
    }
    render();
}

void FrmSearch::print() {
    // No tick while a job is under way: a reminder's note would land in the
    // middle of it.
    const bool ticking = s_.timer1_enabled;
    s_.timer1_enabled = false;
    struct TickBack {
        AppState& s;
        bool on;
        ~TickBack() {
            if (on) s.timer1_enabled = true;
        }
    } tick_back{s_, ticking};
    print_setup(s_, 1, true);
    if (s_.print_cancel) return;
    const QString title = print_title(f_);
    PrintSetup setup = s_.printer;
    setup.orientation = setup.orientation == 1 ? 1 : 2;
    const bool printed = print_copies(setup, [&](const PrintSetup& one) {
        return PrintGrid(f_.srchGrid, one, title, print_margin, print_margin, planner_pictures());
    });
    if (!printed) modal().message(print_failed_msg, MsgStyle::Critical);
}

void FrmSearch::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    f_.width = twips(width());
    f_.height = twips(height(), Qt::Vertical);
    sized_height_ = f_.height;
    if (!srchGrid_->isVisible()) return;
    const QPoint at = srchGrid_->mapTo(this, QPoint(0, 0));
    f_.grid_left = twips(at.x());
    f_.grid_top = twips(at.y(), Qt::Vertical);
    f_.srchGrid.set_extent(twips(srchGrid_->width()), twips(srchGrid_->height(), Qt::Vertical));
    // The widget's own room decides what fits beside the scroll bar.
    share_columns(f_.srchGrid, twips(srchGrid_->columns_room()));
    srchGrid_->refresh();
}

void FrmSearch::closeEvent(QCloseEvent* event) {
    f_.srch_stop = true;
    QDialog::closeEvent(event);
}

void FrmSearch::reject() {
    f_.srch_stop = true;
    QDialog::reject();
}

void register_frmSearch(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmSearch"), [&s](QWidget* parent) {
        FrmSearch form(s, parent);
        form.exec();
    });
}

} // namespace orva
