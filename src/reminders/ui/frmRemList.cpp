#include "reminders/ui/frmRemList.h"

#include "appointments/ui/sticker_pictures.h"
#include "core/ui/form_helpers.h"
#include "core/ui/qt_modal.h"
#include "grid/ui/grid_widget.h"

#include <QApplication>
#include <QButtonGroup>
#include <QDateEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSignalBlocker>
#include <algorithm>

namespace orva {
namespace {

constexpr int margin_px = 9;

// The hourglass for as long as it lives.
struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

} // namespace

FrmRemList::FrmRemList(AppState& s, QWidget* parent) : QDialog(parent), s_(s) {
    setObjectName(QStringLiteral("frmRemList"));
    setAccessibleDescription(QStringLiteral("frmRemList"));
    setWindowTitle(rem_list_title);
    setModal(true);

    top_ = new QWidget(this);
    top_->setObjectName(QStringLiteral("top"));
    auto* lblFrom = new QLabel(QStringLiteral("From:"), top_);
    name_control(lblFrom, QStringLiteral("lblFrom"));
    auto* lblTo = new QLabel(QStringLiteral("To:"), top_);
    name_control(lblTo, QStringLiteral("lblTo"));
    srchDTPicker1_ = new QDateEdit(top_);
    name_control(srchDTPicker1_, QStringLiteral("srchDTPicker1"), QStringLiteral("From date"));
    srchDTPicker2_ = new QDateEdit(top_);
    name_control(srchDTPicker2_, QStringLiteral("srchDTPicker2"), QStringLiteral("To date"));
    for (QDateEdit* d : {srchDTPicker1_, srchDTPicker2_}) {
        d->setCalendarPopup(true);
        d->setDisplayFormat(QLocale().dateFormat(QLocale::ShortFormat));
    }
    lblFrom->setBuddy(srchDTPicker1_);
    lblTo->setBuddy(srchDTPicker2_);

    options_ = new QButtonGroup(this);
    for (int i = 0; i < 3; ++i) {
        optDisplay_[i] = new QRadioButton(opt_display_captions[i], top_);
        name_control(optDisplay_[i], QStringLiteral("optDisplay%1").arg(i));
        options_->addButton(optDisplay_[i], i);
    }

    Command1_ = new QPushButton(QStringLiteral("Refresh"), top_);
    name_control(Command1_, QStringLiteral("Command1"));
    Command1_->setDefault(true);
    Command2_ = new QPushButton(QStringLiteral("Help"), top_);
    name_control(Command2_, QStringLiteral("Command2"));

    auto* band = new QGridLayout(top_);
    band->setContentsMargins(0, 0, 0, 0);
    auto* dates = new QHBoxLayout;
    dates->addWidget(lblFrom);
    dates->addWidget(srchDTPicker1_);
    dates->addSpacing(12);
    dates->addWidget(lblTo);
    dates->addWidget(srchDTPicker2_);
    dates->addStretch(1);
    auto* opts = new QHBoxLayout;
    for (QRadioButton* o : optDisplay_)
        opts->addWidget(o);
    opts->addStretch(1);
    band->addLayout(dates, 0, 0);
    band->addLayout(opts, 1, 0);
    band->addWidget(Command1_, 0, 1);
    band->addWidget(Command2_, 1, 1);
    band->setColumnStretch(0, 1);

    vsRmdr_ = new GridWidget(this);
    name_control(vsRmdr_, QStringLiteral("vsRmdr"), QStringLiteral("Reminders list"));
    vsRmdr_->setGrid(&f_.vsRmdr);
    vsRmdr_->set_picture_provider(planner_pictures());

    lblCnt_ = new QLabel(this);
    name_control(lblCnt_, QStringLiteral("lblCnt"));

    setTabOrder(srchDTPicker1_, srchDTPicker2_);

    connect(srchDTPicker1_, &QDateEdit::dateChanged, this, [this](QDate d) { f_.from_date = d; });
    connect(srchDTPicker2_, &QDateEdit::dateChanged, this, [this](QDate d) { f_.to_date = d; });
    connect(options_, &QButtonGroup::idClicked, this, [this](int id) { f_.optDisplay = id; });
    connect(Command1_, &QPushButton::clicked, this, &FrmRemList::refresh);
    connect(Command2_, &QPushButton::clicked, this, [this] { Command2_Click(s_.help()); });
    connect(vsRmdr_, &GridWidget::cellDoubleClicked, this, &FrmRemList::grid_double_clicked);
    // Enter on a cell does what a double click on it does, so the day and the
    // entry are in reach without a mouse.
    connect(vsRmdr_, &GridWidget::keyDown, this,
            [this](int row, int col, int key, Qt::KeyboardModifiers, bool* swallow) {
                if (key != Qt::Key_Return && key != Qt::Key_Enter) return;
                *swallow = true;
                grid_double_clicked(row, col);
            });

    setMinimumWidth(px(rem_list_min_width));
    QSize size(px(f_.width), px(f_.height, Qt::Vertical));
    if (const QScreen* screen = parent ? parent->screen() : QGuiApplication::primaryScreen())
        size = size.boundedTo(screen->availableGeometry().size());
    resize(size);
    {
        WaitCursor wait;
        Form_Load(s_, f_);
    }
    render();
    srchDTPicker1_->setFocus();
}

FrmRemList::~FrmRemList() {
    vsRmdr_->setGrid(nullptr);
}

int FrmRemList::px(int t, Qt::Orientation o) const {
    const int dpi = o == Qt::Horizontal ? logicalDpiX() : logicalDpiY();
    return t * dpi / 1440;
}

int FrmRemList::twips(int p, Qt::Orientation o) const {
    const int dpi = o == Qt::Horizontal ? logicalDpiX() : logicalDpiY();
    return dpi > 0 ? p * 1440 / dpi : p * 15;
}

void FrmRemList::render() {
    {
        const QSignalBlocker b1(srchDTPicker1_), b2(srchDTPicker2_);
        srchDTPicker1_->setDate(f_.from_date);
        srchDTPicker2_->setDate(f_.to_date);
    }
    if (f_.optDisplay >= 0 && f_.optDisplay < 3) optDisplay_[f_.optDisplay]->setChecked(true);
    lblCnt_->setText(f_.lblCnt);
    setCursor(f_.busy ? Qt::WaitCursor : Qt::ArrowCursor);
    place();
    vsRmdr_->refresh();
}

void FrmRemList::refresh() {
    f_.from_date = srchDTPicker1_->date();
    f_.to_date = srchDTPicker2_->date();
    {
        WaitCursor wait;
        Command1_Click(s_, f_);
    }
    render();
}

void FrmRemList::grid_double_clicked(int row, int col) {
    vsRmdr_DblClick(s_, f_, row, col);
    render();
}

void FrmRemList::place() {
    const int w = width(), h = height();
    const int top_h = top_->sizeHint().height();
    top_->setGeometry(margin_px, margin_px, w - 2 * margin_px, top_h);
    const int grid_y = margin_px + top_h + 6;
    f_.width = twips(w);
    f_.height = twips(h, Qt::Vertical);
    f_.grid_top = twips(grid_y, Qt::Vertical);
    Form_Resize(f_);
    const int grid_h = std::max(px(f_.vsRmdr.Height(), Qt::Vertical), 40);
    vsRmdr_->setGeometry(margin_px, grid_y, w - 2 * margin_px, grid_h);
    // The columns share what they can fill beside the scroll bar, as the day
    // grid's do.
    f_.vsRmdr.set_extent(twips(vsRmdr_->columns_room()), f_.vsRmdr.Height());
    size_cols(f_);
    const int count_h = lblCnt_->sizeHint().height();
    lblCnt_->setGeometry(margin_px, grid_y + grid_h + 6, w - 2 * margin_px, count_h);
}

void FrmRemList::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    place();
    vsRmdr_->refresh();
}

void register_frmRemList(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmRemList"), [&s](QWidget* parent) {
        FrmRemList form(s, parent);
        form.exec();
    });
}

} // namespace orva
