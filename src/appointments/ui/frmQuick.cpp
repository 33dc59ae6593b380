#include "appointments/ui/frmQuick.h"
#include "core/ui/form_helpers.h"

#include "appointments/ui/sticker_pictures.h"
#include "core/ui/qt_modal.h"
#include "grid/ui/grid_widget.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimeEdit>
#include <algorithm>

namespace orva {

FrmQuick::FrmQuick(AppState& s, QWidget* parent) : QDialog(parent), s_(s) {
    setObjectName(QStringLiteral("frmQuick"));
    setAccessibleDescription(QStringLiteral("frmQuick"));
    setModal(true);

    typeIcombo_ = new QComboBox(this);
    name_control(typeIcombo_, QStringLiteral("typeIcombo"), QStringLiteral("Sticker"));
    typeIcombo_->setIconSize(QSize(20, 20));
    auto* lblSticker = new QLabel(QStringLiteral("Sticker"), this);
    name_control(lblSticker, QStringLiteral("lblSticker"));
    lblSticker->setBuddy(typeIcombo_);

    DTPicker1_ = new QTimeEdit(this);
    name_control(DTPicker1_, QStringLiteral("DTPicker1"), QStringLiteral("End time"));
    DTPicker1_->setDisplayFormat(QStringLiteral("h:mm AP"));
    auto* lblEndTime = new QLabel(QStringLiteral("End Time"), this);
    name_control(lblEndTime, QStringLiteral("lblEndTime"));
    lblEndTime->setBuddy(DTPicker1_);

    Command1_ = new QPushButton(QStringLiteral("OK"), this);
    name_control(Command1_, QStringLiteral("Command1"));
    Command1_->setDefault(true);
    Command2_ = new QPushButton(QStringLiteral("Cancel"), this);
    name_control(Command2_, QStringLiteral("Command2"));

    auto* grid = new QGridLayout;
    grid->addWidget(lblSticker, 0, 0);
    grid->addWidget(typeIcombo_, 0, 1);
    grid->addWidget(lblEndTime, 1, 0);
    grid->addWidget(DTPicker1_, 1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1_);
    buttons->addWidget(Command2_);
    auto* outer = new QVBoxLayout(this);
    outer->addLayout(grid);
    outer->addLayout(buttons);

    connect(Command1_, &QPushButton::clicked, this, &FrmQuick::accept);
    connect(Command2_, &QPushButton::clicked, this, &FrmQuick::reject);

    frmQuick_Load(s_.store(), s_.view(), f_);
    render();
    place(parent);
}

void FrmQuick::render() {
    setWindowTitle(f_.caption);
    typeIcombo_->clear();
    for (const auto& item : f_.typeIcombo.items)
        typeIcombo_->addItem(sticker_icon(item.picture), item.caption, item.key);
    typeIcombo_->setCurrentIndex(f_.typeIcombo.list_index);
    DTPicker1_->setTime(f_.DTPicker1);
    DTPicker1_->setEnabled(f_.picker_enabled);
}

void FrmQuick::collect() {
    f_.typeIcombo.list_index = typeIcombo_->currentIndex();
    f_.DTPicker1 = DTPicker1_->time();
}

void FrmQuick::accept() {
    collect();
    if (!frmQuick_OK(s_, f_)) return;
    QDialog::accept();
}

void FrmQuick::reject() {
    collect();
    frmQuick_Cancel(s_, f_);
    QDialog::reject();
}

void FrmQuick::place(QWidget* parent) {
    if (!parent) return;
    QWidget* top = parent->window();
    const QString grid_name = (s_.view_week || s_.view_month) && !s_.view_day
                                  ? QStringLiteral("vsOvervw")
                                  : QStringLiteral("vsSched");
    QWidget* grid = top->findChild<QWidget*>(grid_name);
    adjustSize();
    if (!grid) {
        move(on_screen(top->frameGeometry().center() - rect().center(), size(), top));
        return;
    }
    // quick_left / quick_top are the cell's place in the grid's own layout,
    // which knows nothing of scrolling; the widget knows where the cell is
    // drawn now, so it is asked first.
    QRect cell;
    if (auto* gw = qobject_cast<GridWidget*>(grid); gw && gw->grid())
        cell = gw->cell_rect(gw->grid()->Row(), gw->grid()->Col());
    QPoint local;
    if (!cell.isEmpty()) {
        local = cell.bottomLeft() + QPoint(0, 1);
    } else {
        const int row_px = Grid::default_row_height * grid->logicalDpiY() / 1440;
        local = QPoint(s_.quick_left * grid->logicalDpiX() / 1440,
                       s_.quick_top * grid->logicalDpiY() / 1440 + row_px);
        local.setX(std::clamp(local.x(), 0, std::max(0, grid->width() - 1)));
        local.setY(std::clamp(local.y(), 0, std::max(0, grid->height() - 1)));
    }
    move(on_screen(grid->mapToGlobal(local), frameGeometry().size(), grid));
}

void register_frmQuick(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmQuick"), [&s](QWidget* parent) {
        FrmQuick form(s, parent);
        form.exec();
    });
}

} // namespace orva
