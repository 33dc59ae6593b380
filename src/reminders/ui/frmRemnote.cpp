#include "reminders/ui/frmRemnote.h"

#include "appointments/ui/sticker_pictures.h"
#include "core/ui/form_helpers.h"
#include "core/ui/qt_modal.h"
#include "grid/ui/grid_widget.h"
#include "reminders/dispatch.h"
#include "state/app_state.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace orva {
namespace {

// Always on top, so that a reminder is seen over whatever the user is doing.
constexpr Qt::WindowFlags on_top = Qt::Dialog | Qt::WindowStaysOnTopHint |
                                   Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                   Qt::WindowCloseButtonHint;

} // namespace

FrmRemnote::FrmRemnote(AppState& s, QWidget* parent) : QDialog(parent, on_top), s_(s) {
    setObjectName(QStringLiteral("frmRemnote"));
    setAccessibleDescription(QStringLiteral("frmRemnote"));
    setModal(true);

    gRmdr_ = new GridWidget(this);
    name_control(gRmdr_, QStringLiteral("gRmdr"), QStringLiteral("Due reminders"));
    gRmdr_->set_picture_provider(planner_pictures());
    gRmdr_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Check1_ = new QCheckBox(QStringLiteral("Remind me again"), this);
    name_control(Check1_, QStringLiteral("Check1"));
    Command1_ = new QPushButton(QStringLiteral("OK"), this);
    name_control(Command1_, QStringLiteral("Command1"));
    Command1_->setDefault(true);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(Check1_);
    buttons->addStretch();
    buttons->addWidget(Command1_);
    auto* outer = new QVBoxLayout(this);
    outer->addWidget(gRmdr_);
    outer->addLayout(buttons);

    connect(Command1_, &QPushButton::clicked, this, &FrmRemnote::accept);
    connect(Check1_, &QCheckBox::clicked, this, [this](bool on) {
        s_.note.Check1 = on ? 1 : 0;
        Check1_Click(s_.reminders());
        render();
    });

    gRmdr_->setGrid(&s_.note.gRmdr);
    // Wide enough that the first column, at its share of the width, shows
    // the whole date and time beside the sticker.
    int longest = 0;
    const QFontMetrics fm = gRmdr_->fontMetrics();
    for (int r = 0; r < s_.note.gRmdr.Rows(); ++r)
        longest = std::max(longest, fm.horizontalAdvance(s_.note.gRmdr.TextMatrix(r, 0)));
    const int first_col_px = longest + 2 * fm.height() + 16;
    const int grid_px = std::max(10000 * logicalDpiX() / 1440, int(first_col_px / 0.35) + 1);
    resize(grid_px + 40, 2600 * logicalDpiY() / 1440);
    take_extent();
    frmRemnote_Load(s_.reminders());
    render();
}

void FrmRemnote::render() {
    setWindowTitle(s_.note.caption);
    Check1_->setVisible(s_.note.Check1_visible);
    Check1_->setEnabled(s_.note.Check1_enabled);
    Check1_->setChecked(s_.note.Check1 == 1);
    gRmdr_->refresh();
}

void FrmRemnote::resizeEvent(QResizeEvent* e) {
    QDialog::resizeEvent(e);
    take_extent();
    size_note(s_.reminders());
    gRmdr_->refresh();
}

void FrmRemnote::take_extent() {
    s_.note.gRmdr.set_extent(gRmdr_->columns_room() * 1440 / std::max(1, logicalDpiX()),
                             gRmdr_->height() * 1440 / std::max(1, logicalDpiY()));
}

void FrmRemnote::changeEvent(QEvent* e) {
    QDialog::changeEvent(e);
    // Each time it becomes active it goes on top again: another program's
    // topmost window may have come over it.
    if (e->type() == QEvent::ActivationChange && isActiveWindow()) raise();
}

void FrmRemnote::accept() {
    frmRemnote_OK(s_.reminders());
    gRmdr_->setGrid(nullptr);
    QDialog::accept();
}

void FrmRemnote::reject() {
    accept();
}

FrmReRmdr::FrmReRmdr(AppState& s, QWidget* parent) : QDialog(parent, on_top), s_(s) {
    setObjectName(QStringLiteral("frmReRmdr"));
    setAccessibleDescription(QStringLiteral("frmReRmdr"));
    setWindowTitle(QStringLiteral("Second Reminder"));
    setModal(true);

    auto* Label1 = new QLabel(QStringLiteral("Remind me again in:"), this);
    name_control(Label1, QStringLiteral("Label1"));
    comboReRmdr_ = new QComboBox(this);
    name_control(comboReRmdr_, QStringLiteral("comboReRmdr"), QStringLiteral("Minutes"));
    Label1->setBuddy(comboReRmdr_);
    auto* Label2 = new QLabel(QStringLiteral("Minutes"), this);
    name_control(Label2, QStringLiteral("Label2"));
    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    name_control(ok, QStringLiteral("Command1"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    name_control(cancel, QStringLiteral("Command2"));

    auto* row = new QHBoxLayout;
    row->addWidget(Label1);
    row->addWidget(comboReRmdr_);
    row->addWidget(Label2);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* outer = new QVBoxLayout(this);
    outer->addLayout(row);
    outer->addLayout(buttons);
    connect(ok, &QPushButton::clicked, this, &FrmReRmdr::accept);
    connect(cancel, &QPushButton::clicked, this, &FrmReRmdr::reject);

    frmReRmdr_Load(f_);
    comboReRmdr_->addItems(f_.comboReRmdr);
    comboReRmdr_->setCurrentIndex(f_.list_index);
}

void FrmReRmdr::accept() {
    f_.list_index = comboReRmdr_->currentIndex();
    frmReRmdr_OK(s_.store(), s_.reminders(), f_);
    QDialog::accept();
}

void register_frmRemnote(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmRemnote"), [&s](QWidget* parent) {
        FrmRemnote form(s, parent);
        form.exec();
    });
    m.register_form(QStringLiteral("frmReRmdr"), [&s](QWidget* parent) {
        FrmReRmdr form(s, parent);
        form.exec();
    });
}

} // namespace orva
