#include "shell/form_helpers.h"

#include "shell/app_state.h"

#include <QComboBox>
#include <QScreen>
#include <QSignalBlocker>
#include <QWidget>
#include <algorithm>

namespace orva {

void name_control(QWidget* w, const QString& name) {
    w->setObjectName(name);
    w->setAccessibleName(name);
}

QPoint on_screen(QPoint at, const QSize& size, const QWidget* near) {
    const QScreen* screen = near ? near->screen() : nullptr;
    if (!screen) return at;
    const QRect avail = screen->availableGeometry();
    at.setX(std::clamp(at.x(), avail.left(), std::max(avail.left(), avail.right() - size.width())));
    at.setY(std::clamp(at.y(), avail.top(), std::max(avail.top(), avail.bottom() - size.height())));
    return at;
}

void show_combo_list(QComboBox* box, const ComboList& list) {
    const QSignalBlocker hold(box);
    QStringList now;
    for (int i = 0; i < box->count(); ++i)
        now << box->itemText(i);
    if (now != list.items) {
        box->clear();
        box->addItems(list.items);
    }
    box->setCurrentIndex(list.list_index);
}

} // namespace orva
