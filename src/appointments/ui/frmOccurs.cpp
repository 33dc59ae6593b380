#include "appointments/ui/frmOccurs.h"
#include "core/ui/form_helpers.h"
#include "grid/ui/grid_model.h"

#include "core/ui/qt_modal.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <memory>
#include <vector>

namespace orva {

namespace {

// The editor is a top-level window of its own; a visible one is preferred
// over one that is closing.
QWidget* find_editor_window() {
    QWidget* hidden = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (w->objectName() != u"frmAppt1") continue;
        if (w->isVisible()) return w;
        if (!hidden) hidden = w;
    }
    return hidden;
}

} // namespace

FrmOccurs::FrmOccurs(AppState& s, ApptForm& editor, QWidget* parent)
    : QDialog(parent), s_(s), editor_(editor) {
    setObjectName(QStringLiteral("frmOccurs"));
    setAccessibleDescription(QStringLiteral("frmOccurs"));
    setWindowTitle(QStringLiteral("Recurring Appointment"));
    setModal(true);

    Option1_ = new QRadioButton(QStringLiteral("By period"), this);
    name_control(Option1_, QStringLiteral("Option1"));
    Option2_ = new QRadioButton(QStringLiteral("By weekday of the month"), this);
    name_control(Option2_, QStringLiteral("Option2"));

    occursCombo_ = new QComboBox(this);
    name_control(occursCombo_, QStringLiteral("occursCombo"), QStringLiteral("How often"));
    EveryCombo_ = new QComboBox(this);
    name_control(EveryCombo_, QStringLiteral("EveryCombo"), QStringLiteral("Interval"));
    Label1_ = new QLabel(this);
    name_control(Label1_, QStringLiteral("Label1"));
    Label1_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("on  September 30")));

    occursWCombo_ = new QComboBox(this);
    name_control(occursWCombo_, QStringLiteral("occursWCombo"),
                 QStringLiteral("Week of the month"));
    everyWkDCombo_ = new QComboBox(this);
    name_control(everyWkDCombo_, QStringLiteral("everyWkDCombo"), QStringLiteral("Weekday"));
    mthCombo_ = new QComboBox(this);
    name_control(mthCombo_, QStringLiteral("mthCombo"), QStringLiteral("Month"));

    untilDTPicker_ = new QDateEdit(this);
    // The same face as the editor's date picker beside it.
    untilDTPicker_->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
    name_control(untilDTPicker_, QStringLiteral("untilDTPicker"), QStringLiteral("End date"));
    untilDTPicker_->setCalendarPopup(true);
    auto* lblEndDate = new QLabel(QStringLiteral("End Date:"), this);
    name_control(lblEndDate, QStringLiteral("lblEndDate"));
    lblEndDate->setBuddy(untilDTPicker_);

    Command2_ = new QPushButton(QStringLiteral("OK"), this);
    name_control(Command2_, QStringLiteral("Command2"));
    Command2_->setDefault(true);
    Command1_ = new QPushButton(QStringLiteral("Cancel"), this);
    name_control(Command1_, QStringLiteral("Command1"));

    auto* grid = new QGridLayout;
    grid->addWidget(Option1_, 0, 0, 1, 3, Qt::AlignLeft);
    grid->addWidget(occursCombo_, 1, 0);
    grid->addWidget(EveryCombo_, 1, 1);
    grid->addWidget(Label1_, 1, 2);
    grid->addWidget(Option2_, 2, 0, 1, 3, Qt::AlignLeft);
    grid->addWidget(occursWCombo_, 3, 0);
    grid->addWidget(everyWkDCombo_, 3, 1);
    grid->addWidget(mthCombo_, 3, 2);
    grid->addWidget(lblEndDate, 4, 0, Qt::AlignRight);
    grid->addWidget(untilDTPicker_, 4, 1);
    grid->setRowMinimumHeight(2, Option2_->sizeHint().height() + 6);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command2_);
    buttons->addWidget(Command1_);
    auto* outer = new QVBoxLayout(this);
    outer->addLayout(grid);
    outer->addLayout(buttons);

    connect(Option1_, &QRadioButton::toggled, this, [this](bool on) {
        if (on) run([this] { Option1_Click(s_, editor_, f_); });
    });
    connect(Option2_, &QRadioButton::toggled, this, [this](bool on) {
        if (on) run([this] { Option2_Click(s_, editor_, f_); });
    });
    // activated, not currentIndexChanged: choosing the row already shown
    // runs the handler again, and setting a row from render() does not.
    connect(occursCombo_, &QComboBox::activated, this,
            [this] { run([this] { occursCombo_Click(s_, editor_, f_); }); });
    connect(mthCombo_, &QComboBox::activated, this,
            [this] { run([this] { mthCombo_Click(s_, editor_, f_); }); });
    connect(Command2_, &QPushButton::clicked, this, &FrmOccurs::accept);
    connect(Command1_, &QPushButton::clicked, this, &FrmOccurs::reject);

    frmOccurs_Load(s_.view(), s_.editing(), editor_, f_);
    render();
    place();
}

template <class Handler> void FrmOccurs::run(Handler handler) {
    collect();
    handler();
    render();
}

void FrmOccurs::render() {
    const QList<QWidget*> all{Option1_,      Option2_,       occursCombo_, EveryCombo_,
                              occursWCombo_, everyWkDCombo_, mthCombo_,    untilDTPicker_};
    std::vector<std::unique_ptr<QSignalBlocker>> blocked;
    for (QWidget* w : all)
        blocked.push_back(std::make_unique<QSignalBlocker>(w));

    Option1_->setChecked(f_.Option1);
    Option2_->setChecked(f_.Option2);
    show_combo_list(occursCombo_, f_.occursCombo);
    show_combo_list(EveryCombo_, f_.EveryCombo);
    show_combo_list(occursWCombo_, f_.occursWCombo);
    show_combo_list(everyWkDCombo_, f_.everyWkDCombo);
    show_combo_list(mthCombo_, f_.mthCombo);
    occursCombo_->setEnabled(f_.occursCombo_enabled);
    EveryCombo_->setEnabled(f_.EveryCombo_enabled);
    occursWCombo_->setEnabled(f_.occursWCombo_enabled);
    everyWkDCombo_->setEnabled(f_.everyWkDCombo_enabled);
    mthCombo_->setEnabled(f_.mthCombo_enabled);

    untilDTPicker_->setDateRange(f_.untilDTPicker_min, f_.untilDTPicker_max);
    untilDTPicker_->setDate(f_.untilDTPicker);
    untilDTPicker_->setEnabled(f_.untilDTPicker_enabled);
    if (QCalendarWidget* cal = untilDTPicker_->calendarWidget()) {
        QPalette pal = cal->palette();
        pal.setColor(QPalette::Base, qt_color(f_.untilDTPicker_CalendarBackColor));
        pal.setColor(QPalette::Window, qt_color(f_.untilDTPicker_CalendarBackColor));
        cal->setPalette(pal);
    }
    Label1_->setText(f_.Label1);
}

void FrmOccurs::collect() {
    f_.Option1 = Option1_->isChecked();
    f_.Option2 = Option2_->isChecked();
    f_.occursCombo.list_index = occursCombo_->currentIndex();
    f_.EveryCombo.list_index = EveryCombo_->currentIndex();
    f_.occursWCombo.list_index = occursWCombo_->currentIndex();
    f_.everyWkDCombo.list_index = everyWkDCombo_->currentIndex();
    f_.mthCombo.list_index = mthCombo_->currentIndex();
    f_.untilDTPicker = untilDTPicker_->date();
}

void FrmOccurs::accept() {
    collect();
    frmOccurs_OK(s_, editor_, f_);
    QDialog::accept();
}

void FrmOccurs::place() {
    QWidget* editor = find_editor_window();
    if (!editor) return;
    adjustSize();
    const QPoint offset(3600 * editor->logicalDpiX() / 1440, 400 * editor->logicalDpiY() / 1440);
    move(on_screen(editor->frameGeometry().topLeft() + offset, frameGeometry().size(), editor));
}

void register_frmOccurs(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmOccurs"), [&s](QWidget* parent) {
        if (!s.appt_form) return;
        FrmOccurs form(s, *s.appt_form, parent);
        form.exec();
    });
}

} // namespace orva
