#include "appointments/ui/frmAppt1.h"

#include "appointments/delete_copy.h"
#include "appointments/quick_add.h"
#include "appointments/ui/sticker_pictures.h"
#include "core/ui/form_helpers.h"
#include "core/ui/qt_modal.h"
#include "core/ui/tool_icons.h"
#include "grid/ui/grid_model.h"
#include "help/help.h"
#include "help/help_topics.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimeEdit>
#include <QToolButton>

namespace orva {

namespace {

QToolButton* picture_button(QWidget* parent, const QString& name, const QString& tip,
                            const QString& theme, const QString& emoji) {
    auto* b = new QToolButton(parent);
    name_control(b, name);
    b->setToolTip(tip);
    b->setIcon(tool_icon(theme, emoji));
    b->setIconSize(QSize(24, 24));
    b->setAutoRaise(true);
    return b;
}

QLabel* caption_label(QWidget* parent, const QString& name, const QString& text) {
    auto* l = new QLabel(text, parent);
    name_control(l, name);
    return l;
}

QTimeEdit* time_picker(QWidget* parent, const QString& name, const QString& tip,
                       const QString& spoken) {
    auto* t = new QTimeEdit(parent);
    name_control(t, name, spoken);
    t->setDisplayFormat(QStringLiteral("h:mm AP"));
    t->setToolTip(tip);
    return t;
}

} // namespace

FrmAppt1::FrmAppt1(AppState& s, QWidget* parent) : QDialog(parent), s_(s) {
    setObjectName(QStringLiteral("frmAppt1"));
    setAccessibleDescription(QStringLiteral("frmAppt1"));
    setModal(true);
    build();
    s_.appt_form = &f_;
    init_appt_form(s_.store(), s_.options(), s_.editing(), s_.run(), f_);
    render();
    connect_events();
    // The prompt is there to be typed over.
    if (f_.Text1 == text1_prompt) Text1_->selectAll();
    Text1_->setFocus();
    adjustSize();
    if (parent) {
        QWidget* top = parent->window();
        move(on_screen(top->frameGeometry().center() - rect().center(), frameGeometry().size(),
                       top));
    }
}

FrmAppt1::~FrmAppt1() {
    // Unloading ends the copy mode whichever way the form went.
    s_.appt_copy = false;
    if (s_.appt_form == &f_) s_.appt_form = nullptr;
}

void FrmAppt1::build() {
    Text1_ = new QLineEdit(this);
    name_control(Text1_, QStringLiteral("Text1"), QStringLiteral("Description"));
    limit_bytes(Text1_, text1_limit);
    Text1_->setToolTip(QStringLiteral("Appointment description or subject."));
    auto* lblText = caption_label(this, QStringLiteral("lblText"), QStringLiteral("Description:"));
    lblText->setBuddy(Text1_);

    typeIcombo_ = new QComboBox(this);
    name_control(typeIcombo_, QStringLiteral("typeIcombo"), QStringLiteral("Sticker"));
    typeIcombo_->setIconSize(QSize(20, 20));
    typeIcombo_->setToolTip(QStringLiteral("Appointment Icons"));
    auto* lblSticker =
        caption_label(this, QStringLiteral("lblSticker"), QStringLiteral("Sticker:"));
    lblSticker->setBuddy(typeIcombo_);

    apptDTPicker_ = new QDateEdit(this);
    name_control(apptDTPicker_, QStringLiteral("apptDTPicker"), QStringLiteral("Start date"));
    apptDTPicker_->setCalendarPopup(true);
    apptDTPicker_->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
    apptDTPicker_->setToolTip(QStringLiteral(
        "For single appts this is appt date.  For recurring appts, this is the original appt "
        "date."));
    lblDateTime_ =
        caption_label(this, QStringLiteral("lblDateTime"), QStringLiteral("Start Date:"));
    lblDateTime_->setBuddy(apptDTPicker_);

    txtApptDt_ = new QLineEdit(this);
    name_control(txtApptDt_, QStringLiteral("txtApptDt"), QStringLiteral("Appointment date"));
    txtApptDt_->setReadOnly(true);
    txtApptDt_->setToolTip(QStringLiteral("Actual appointment date."));
    // Room for the longest long date, so it is read from its beginning.
    txtApptDt_->setMinimumWidth(
        txtApptDt_->fontMetrics().horizontalAdvance(long_date_text(QDate(2026, 9, 30))) + 16);
    lblApptDt_ = caption_label(this, QStringLiteral("lblApptDt"), QStringLiteral("Appt Date:"));
    lblApptDt_->setBuddy(txtApptDt_);
    imgApptDt_ = new QLabel(this);
    name_control(imgApptDt_, QStringLiteral("imgApptDt"));
    imgApptDt_->setPixmap(
        tool_icon(QStringLiteral("view-calendar-day"), QStringLiteral("\U0001F4C6"))
            .pixmap(20, 20));

    Check1_ = new QCheckBox(QStringLiteral("Timed"), this);
    name_control(Check1_, QStringLiteral("Check1"));
    Check1_->setToolTip(QStringLiteral("Appointment has a specific time"));
    Check2_ = new QCheckBox(QStringLiteral("All Day"), this);
    name_control(Check2_, QStringLiteral("Check2"));
    Check2_->setToolTip(QStringLiteral("All day event "));

    aptTimePick1_ = time_picker(this, QStringLiteral("aptTimePick1"), QStringLiteral("Start time"),
                                QStringLiteral("Start time"));
    aptTimePick2_ = time_picker(this, QStringLiteral("aptTimePick2"), QStringLiteral("End Time"),
                                QStringLiteral("End time"));
    auto* lblStart = caption_label(this, QStringLiteral("lblStart"), QStringLiteral("Start:"));
    lblStart->setBuddy(aptTimePick1_);
    auto* lblEnd = caption_label(this, QStringLiteral("lblEnd"), QStringLiteral("End:"));
    lblEnd->setBuddy(aptTimePick2_);

    Command4_ = picture_button(this, QStringLiteral("Command4"),
                               QStringLiteral("Set recurring appointment"),
                               QStringLiteral("view-refresh"), QStringLiteral("\U0001F501"));
    lblOccur_ = caption_label(this, QStringLiteral("lblOccur"), QString());
    lblOccur_->setWordWrap(true);
    cmdRem_ =
        picture_button(this, QStringLiteral("cmdRem"), QStringLiteral("Add or Edit Reminders"),
                       QStringLiteral("alarm-symbolic"), QStringLiteral("\u23F0"));
    lblRem_ = caption_label(this, QStringLiteral("lblRem"), QString());
    lblRem_->setWordWrap(true);

    Notes_ = new QLineEdit(this);
    name_control(Notes_, QStringLiteral("Notes"), QStringLiteral("Notes"));
    limit_bytes(Notes_, notes_limit);
    Image6_ = picture_button(this, QStringLiteral("Image6"), QStringLiteral("Edit Notes"),
                             QStringLiteral("document-edit"), QStringLiteral("\U0001F4DD"));
    auto* lblNotes = caption_label(this, QStringLiteral("lblNotes"), QStringLiteral("Notes:"));
    lblNotes->setBuddy(Notes_);

    Command1_ = new QPushButton(QStringLiteral("OK"), this);
    name_control(Command1_, QStringLiteral("Command1"));
    Command1_->setDefault(true);
    Command2_ = new QPushButton(QStringLiteral("Cancel"), this);
    name_control(Command2_, QStringLiteral("Command2"));
    Command3_ = new QPushButton(QStringLiteral("Help"), this);
    name_control(Command3_, QStringLiteral("Command3"));
    delCmd_ = new QPushButton(QStringLiteral("Delete  "), this);
    name_control(delCmd_, QStringLiteral("delCmd"));

    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(4, 1);
    int r = 0;
    grid->addWidget(lblText, r, 0);
    grid->addWidget(Text1_, r++, 1, 1, 4);
    grid->addWidget(lblSticker, r, 0);
    grid->addWidget(typeIcombo_, r++, 1, 1, 4);
    grid->addWidget(lblDateTime_, r, 0);
    grid->addWidget(apptDTPicker_, r, 1);
    auto* appt_dt = new QHBoxLayout;
    appt_dt->addWidget(imgApptDt_);
    appt_dt->addWidget(lblApptDt_);
    grid->addLayout(appt_dt, r, 3);
    grid->addWidget(txtApptDt_, r++, 4);
    grid->addWidget(Check1_, r, 1);
    grid->addWidget(Check2_, r++, 4);
    grid->addWidget(lblStart, r, 0);
    grid->addWidget(aptTimePick1_, r, 1);
    grid->addWidget(lblEnd, r, 3);
    grid->addWidget(aptTimePick2_, r++, 4);
    grid->addWidget(Command4_, r, 0, Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(lblOccur_, r++, 1, 1, 4);
    grid->addWidget(cmdRem_, r, 0, Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(lblRem_, r++, 1, 1, 4);
    auto* notes_caption = new QHBoxLayout;
    notes_caption->addWidget(Image6_);
    notes_caption->addWidget(lblNotes);
    grid->addLayout(notes_caption, r, 0);
    grid->addWidget(Notes_, r++, 1, 1, 4);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(delCmd_);
    buttons->addStretch();
    buttons->addWidget(Command3_);
    buttons->addWidget(Command1_);
    buttons->addWidget(Command2_);
    auto* outer = new QVBoxLayout(this);
    outer->addLayout(grid);
    outer->addSpacing(6);
    outer->addLayout(buttons);
    setMinimumWidth(560);

    // The drop-down calendar takes the back colour of the day grid.
    if (QCalendarWidget* cal = apptDTPicker_->calendarWidget()) {
        QPalette p = cal->palette();
        p.setColor(QPalette::Base, qt_color(s_.vsSched.BackColor()));
        cal->setPalette(p);
    }
}

template <class F> void FrmAppt1::run(F handler) {
    collect();
    handler();
    render();
}

void FrmAppt1::connect_events() {
    connect(Text1_, &QLineEdit::textEdited, this, [this] { collect(); });
    connect(Notes_, &QLineEdit::textEdited, this, [this] { collect(); });
    connect(typeIcombo_, &QComboBox::activated, this, [this] { collect(); });
    connect(apptDTPicker_, &QDateEdit::dateChanged, this,
            [this] { run([this] { apptDTPicker_Change(s_, f_); }); });
    connect(aptTimePick1_, &QTimeEdit::timeChanged, this,
            [this] { run([this] { aptTimePick1_Change(s_.options(), s_.editing(), f_); }); });
    connect(aptTimePick2_, &QTimeEdit::timeChanged, this,
            [this] { run([this] { aptTimePick2_Change(s_, f_); }); });
    connect(Check1_, &QCheckBox::clicked, this, [this] { run([this] { Check1_Click(f_); }); });
    connect(Check2_, &QCheckBox::clicked, this, [this] { run([this] { Check2_Click(s_, f_); }); });
    connect(Command4_, &QToolButton::clicked, this,
            [this] { run([this] { Command4_Click(f_); }); });
    connect(cmdRem_, &QToolButton::clicked, this,
            [this] { run([this] { cmdRem_Click(s_, f_); }); });
    connect(Image6_, &QToolButton::clicked, this,
            [this] { run([this] { Image6_Click(s_, f_); }); });
    connect(Command1_, &QPushButton::clicked, this, &FrmAppt1::accept);
    connect(Command2_, &QPushButton::clicked, this, &FrmAppt1::reject);
    connect(Command3_, &QPushButton::clicked, this,
            [this] { show_help(s_.help(), topic_of_form(QStringLiteral("frmAppt1"))); });
    connect(delCmd_, &QPushButton::clicked, this, [this] {
        collect();
        QApplication::setOverrideCursor(Qt::WaitCursor);
        const bool deleted = delCmd_Click(s_);
        QApplication::restoreOverrideCursor();
        if (deleted) QDialog::done(QDialog::Accepted);
    });
}

void FrmAppt1::collect() {
    f_.Text1 = Text1_->text();
    f_.Notes = Notes_->text();
    f_.typeIcombo.list_index = typeIcombo_->currentIndex();
    f_.apptDTPicker = apptDTPicker_->date();
    f_.aptTimePick1 = aptTimePick1_->time();
    f_.aptTimePick2 = aptTimePick2_->time();
    f_.Check1 = Check1_->isChecked();
    f_.Check2 = Check2_->isChecked();
}

void FrmAppt1::render() {
    const QList<QWidget*> all = findChildren<QWidget*>();
    std::vector<std::unique_ptr<QSignalBlocker>> hold;
    for (QWidget* w : all)
        hold.push_back(std::make_unique<QSignalBlocker>(w));

    setWindowTitle(f_.caption);
    if (Text1_->text() != f_.Text1) Text1_->setText(f_.Text1);
    if (typeIcombo_->count() != int(f_.typeIcombo.items.size())) {
        typeIcombo_->clear();
        for (const auto& item : f_.typeIcombo.items)
            typeIcombo_->addItem(sticker_icon(item.picture), item.caption, item.key);
    }
    typeIcombo_->setCurrentIndex(f_.typeIcombo.list_index);
    apptDTPicker_->setDateRange(f_.apptDTPicker_min, f_.apptDTPicker_max);
    apptDTPicker_->setDate(f_.apptDTPicker);
    aptTimePick1_->setTime(f_.aptTimePick1);
    aptTimePick2_->setTime(f_.aptTimePick2);
    aptTimePick1_->setEnabled(f_.pickers_enabled);
    aptTimePick2_->setEnabled(f_.pickers_enabled);
    Check1_->setChecked(f_.Check1);
    Check2_->setChecked(f_.Check2);
    Check2_->setEnabled(f_.Check2_enabled);
    if (Notes_->text() != f_.Notes) Notes_->setText(f_.Notes);
    if (txtApptDt_->text() != f_.txtApptDt) {
        txtApptDt_->setText(f_.txtApptDt);
        txtApptDt_->setCursorPosition(0);
    }
    for (QWidget* w : {static_cast<QWidget*>(txtApptDt_), static_cast<QWidget*>(lblApptDt_),
                       static_cast<QWidget*>(imgApptDt_)})
        w->setVisible(f_.appt_dt_shown);
    lblDateTime_->setText(f_.lblDateTime);
    lblRem_->setText(f_.lblRem);
    lblOccur_->setText(f_.lblOccur);
    delCmd_->setEnabled(f_.delCmd_enabled);
}

void FrmAppt1::accept() {
    collect();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool saved = Command1_Click(s_, f_);
    QApplication::restoreOverrideCursor();
    if (!saved) {
        render();
        return;
    }
    QDialog::accept();
}

void FrmAppt1::reject() {
    collect();
    Command2_Click(s_, f_);
    QDialog::reject();
}

void register_frmAppt1(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmAppt1"), [&s](QWidget* parent) {
        FrmAppt1 form(s, parent);
        form.exec();
    });
}

} // namespace orva
