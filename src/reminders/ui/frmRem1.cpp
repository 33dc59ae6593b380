#include "reminders/ui/frmRem1.h"
#include "core/ui/form_helpers.h"

#include "core/ui/qt_modal.h"
#include "core/ui/tool_icons.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

namespace orva {

namespace {

constexpr int slowest = 1;
constexpr int fastest = 10;

// The messenger pictures by key of the list.
QIcon messenger_icon(const QString& key) {
    if (key == u"Flag") return tool_icon(QString(), QStringLiteral("\U0001F1FA\U0001F1F8"));
    if (key == u"Plane") return tool_icon(QString(), QStringLiteral("\u2708\uFE0F"));
    return tool_icon(QString(), QStringLiteral("\U0001F6AB"));
}

QLabel* make_label(const QString& text, const QString& name, QWidget* parent) {
    auto* l = new QLabel(text, parent);
    name_control(l, name);
    return l;
}

QPushButton* make_button(const QString& text, const QString& name, QWidget* parent) {
    auto* b = new QPushButton(text, parent);
    name_control(b, name);
    return b;
}

} // namespace

FrmRem1::FrmRem1(AppState& s, QWidget* parent) : QDialog(parent), s_(s) {
    setObjectName(QStringLiteral("frmRem1"));
    setAccessibleDescription(QStringLiteral("frmRem1"));
    setModal(true);

    lblAppt_ = make_label(QString(), QStringLiteral("lblAppt"), this);
    lblRemindMe_ = make_label(QString(), QStringLiteral("lblRemindMe"), this);
    lblNtimes_ = make_label(QString(), QStringLiteral("lblNtimes"), this);

    advComboN_ = new QComboBox(this);
    name_control(advComboN_, QStringLiteral("advComboN"), QStringLiteral("Reminder lead"));
    advComboN_->setMaxVisibleItems(15);
    lblRemindMe_->setBuddy(advComboN_);
    advComboInt_ = new QComboBox(this);
    name_control(advComboInt_, QStringLiteral("advComboInt"), QStringLiteral("Reminder lead unit"));

    frame_ = new QGroupBox(QStringLiteral("Special Effects (Optional):"), this);
    name_control(frame_, QStringLiteral("Frame1"));

    auto* Label10 = make_label(QStringLiteral("Alarm Sounds  "), QStringLiteral("Label10"), frame_);
    Label10->setToolTip(
        QStringLiteral("This sound will play when the pop-up reminder is displayed"));
    alarmTxt_ = new QLineEdit(frame_);
    name_control(alarmTxt_, QStringLiteral("alarmTxt"), QStringLiteral("Alarm sound file"));
    alarmTxt_->setToolTip(QStringLiteral(
        "The selected wav file will be played when the pop-up reminder is displayed"));
    alarmTxt_->setMinimumWidth(260);
    limit_bytes(alarmTxt_, sound_limit);
    Label10->setBuddy(alarmTxt_);
    Command5_ = make_button(QStringLiteral("Browse"), QStringLiteral("Command5"), frame_);

    prevwCmd0_ = make_button(QStringLiteral("Preview"), QStringLiteral("prevwCmd0"), frame_);
    prevwCmd1_ = make_button(QStringLiteral("Preview"), QStringLiteral("prevwCmd1"), frame_);
    prevwCmd1_->setToolTip(QStringLiteral("Preview selected animated messenger."));

    auto* lblMessengers =
        make_label(QStringLiteral("Animated messengers:"), QStringLiteral("lblMessengers"), frame_);
    animateIcombo_ = new QComboBox(frame_);
    name_control(animateIcombo_, QStringLiteral("animateIcombo"),
                 QStringLiteral("Animated messenger"));
    animateIcombo_->setToolTip(QStringLiteral("An animated messenger that will play immediately "
                                              "before the pop-up reminder is displayed"));
    animateIcombo_->setIconSize(QSize(24, 24));
    lblMessengers->setBuddy(animateIcombo_);

    Slider1_ = new QSlider(Qt::Horizontal, frame_);
    name_control(Slider1_, QStringLiteral("Slider1"), QStringLiteral("Messenger speed"));
    Slider1_->setRange(slowest, fastest);
    Slider1_->setPageStep(1);
    Slider1_->setTickPosition(QSlider::TicksBelow);
    Slider1_->setToolTip(QStringLiteral("Adjust speed of animated messenger"));

    Command1_ = make_button(QStringLiteral("OK"), QStringLiteral("Command1"), this);
    Command1_->setDefault(true);
    Command2_ = make_button(QStringLiteral("Cancel"), QStringLiteral("Command2"), this);

    auto* effects = new QGridLayout(frame_);
    effects->addWidget(Label10, 0, 0, 1, 3);
    effects->addWidget(alarmTxt_, 1, 0);
    effects->addWidget(Command5_, 1, 1);
    effects->addWidget(prevwCmd0_, 1, 2);
    effects->addWidget(lblMessengers, 2, 0, 1, 3);
    effects->addWidget(animateIcombo_, 3, 0);
    effects->addWidget(prevwCmd1_, 3, 2);
    effects->addWidget(Slider1_, 4, 0);
    effects->setColumnStretch(0, 1);

    auto* lead = new QHBoxLayout;
    lead->addWidget(lblRemindMe_);
    lead->addWidget(advComboN_);
    lead->addWidget(advComboInt_);
    lead->addStretch();
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1_);
    buttons->addWidget(Command2_);
    auto* outer = new QVBoxLayout(this);
    outer->addWidget(lblAppt_);
    outer->addLayout(lead);
    outer->addWidget(lblNtimes_);
    outer->addWidget(frame_);
    outer->addLayout(buttons);

    connect(Command1_, &QPushButton::clicked, this, &FrmRem1::accept);
    connect(Command2_, &QPushButton::clicked, this, &FrmRem1::reject);
    connect(prevwCmd0_, &QPushButton::clicked, this, [this] {
        collect();
        prevwCmd_Click(s_, f_, 0);
    });
    connect(prevwCmd1_, &QPushButton::clicked, this, [this] {
        collect();
        prevwCmd_Click(s_, f_, 1);
    });
    connect(Command5_, &QPushButton::clicked, this, [this] {
        collect();
        Command5_Click(f_);
        render();
    });
    // activated, not currentIndexChanged: a choice of the item already shown
    // is a selection too, and filling the list is none.
    connect(animateIcombo_, &QComboBox::activated, this, [this](int index) {
        f_.animateIcombo.list_index = index;
        animateIcombo_Click(s_, f_);
    });
    connect(Slider1_, &QSlider::valueChanged, this, [this](int value) {
        f_.Slider1 = value;
        Slider1_Change(s_, f_);
    });

    frmRem1_Load(s_, f_);
    render();
    place(parent);
}

void FrmRem1::render() {
    setWindowTitle(f_.caption);
    lblAppt_->setText(f_.lblAppt);
    lblRemindMe_->setText(f_.lblRemindMe);
    lblNtimes_->setText(f_.lblNtimes);
    lblNtimes_->setVisible(f_.lblNtimes_visible);
    {
        const QSignalBlocker block(advComboN_);
        advComboN_->clear();
        advComboN_->addItems(f_.advComboN.items);
        advComboN_->setCurrentIndex(f_.advComboN.list_index);
    }
    {
        const QSignalBlocker block(advComboInt_);
        advComboInt_->clear();
        advComboInt_->addItems(f_.advComboInt.items);
        advComboInt_->setCurrentIndex(f_.advComboInt.list_index);
    }
    {
        const QSignalBlocker block(animateIcombo_);
        animateIcombo_->clear();
        for (int i = 0; i < f_.animateIcombo.items.size(); ++i) {
            const QString key = i < f_.animate_keys.size() ? f_.animate_keys[i] : QString();
            animateIcombo_->addItem(messenger_icon(key), f_.animateIcombo.items[i], key);
        }
        animateIcombo_->setCurrentIndex(f_.animateIcombo.list_index);
    }
    alarmTxt_->setText(f_.alarmTxt);
    {
        const QSignalBlocker block(Slider1_);
        Slider1_->setValue(f_.Slider1);
    }
}

void FrmRem1::collect() {
    f_.advComboN.list_index = advComboN_->currentIndex();
    f_.advComboInt.list_index = advComboInt_->currentIndex();
    f_.animateIcombo.list_index = animateIcombo_->currentIndex();
    f_.alarmTxt = alarmTxt_->text();
}

void FrmRem1::accept() {
    collect();
    if (!frmRem1_OK(s_, f_)) return;
    QDialog::accept();
}

void FrmRem1::reject() {
    collect();
    frmRem1_Cancel(f_);
    QDialog::reject();
}

void FrmRem1::place(QWidget* parent) {
    if (!parent) return;
    // Over the editor, which is the window the seam opens it from.
    QWidget* top = parent->window();
    adjustSize();
    move(on_screen(top->frameGeometry().center() - rect().center(), frameGeometry().size(), top));
}

void register_frmRem1(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmRem1"), [&s](QWidget* parent) {
        FrmRem1 form(s, parent);
        form.exec();
    });
}

} // namespace orva
