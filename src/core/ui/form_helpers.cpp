#include "core/ui/form_helpers.h"

#include "core/controls.h"
#include "core/field_text.h"

#include <QComboBox>
#include <QLineEdit>
#include <QScreen>
#include <QSignalBlocker>
#include <QValidator>
#include <QWidget>
#include <algorithm>

namespace orva {
namespace {

// A validator may change the text it is given, and the line edit shows the
// changed text: a keystroke and a paste are cut alike.
class ByteLimit : public QValidator {
  public:
    ByteLimit(int bytes, QObject* parent) : QValidator(parent), bytes_(bytes) {}

    State validate(QString& input, int& pos) const override {
        if (utf8_size(input) <= bytes_) return Acceptable;
        // The cursor stands just after what arrived.
        const int at = std::clamp(pos, 0, int(input.size()));
        const qsizetype room = bytes_ - utf8_size(QStringView(input).mid(at));
        if (room < 0) {
            input = cut_to_bytes(input, bytes_);
            pos = std::min(pos, int(input.size()));
            return Acceptable;
        }
        const QString head = cut_to_bytes(input.left(at), room);
        input = head + input.mid(at);
        pos = int(head.size());
        return Acceptable;
    }

  private:
    int bytes_;
};

} // namespace

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

void limit_bytes(QLineEdit* edit, int bytes) {
    edit->setValidator(new ByteLimit(bytes, edit));
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
