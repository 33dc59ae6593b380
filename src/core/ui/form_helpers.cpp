#include "core/ui/form_helpers.h"

#include "core/controls.h"
#include "core/field_text.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QEvent>
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

// A button with only a picture speaks its tool-tip, also once the tip has
// changed.
class TipAsName : public QObject {
  public:
    explicit TipAsName(QAbstractButton* b) : QObject(b), b_(b) { b_->installEventFilter(this); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == b_ && event->type() == QEvent::ToolTipChange)
            b_->setAccessibleName(b_->text().isEmpty() ? b_->toolTip() : QString());
        return false;
    }

  private:
    QAbstractButton* b_;
};

// A drop-down list that says what it is for. Qt's own interface for a combo
// box on Linux reports the selected item as its name and leaves the rest to a
// label beside it, which the navigator's month and year lists do not have;
// this one gives the name it was given, the item as its value.
class NamedComboBox : public QAccessibleWidget {
  public:
    explicit NamedComboBox(QComboBox* box) : QAccessibleWidget(box, QAccessible::ComboBox) {}

    QString text(QAccessible::Text t) const override {
        if (t == QAccessible::Value) return box()->currentText();
        return QAccessibleWidget::text(t);
    }
    QStringList actionNames() const override {
        return QStringList{showMenuAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override {
        if (action == showMenuAction())
            box()->showPopup();
        else
            QAccessibleWidget::doAction(action);
    }

  private:
    QComboBox* box() const { return static_cast<QComboBox*>(widget()); }
};

// Asked before Qt's own factory, which was installed with the application.
QAccessibleInterface* named_controls(const QString& class_name, QObject* object) {
    auto* box = class_name == u"QComboBox" ? qobject_cast<QComboBox*>(object) : nullptr;
    if (box && !box->accessibleName().isEmpty()) return new NamedComboBox(box);
    return nullptr;
}

} // namespace

void name_control(QWidget* w, const QString& name, const QString& spoken) {
    w->setObjectName(name);
    if (!spoken.isEmpty()) {
        static const bool installed = [] {
            QAccessible::installFactory(named_controls);
            return true;
        }();
        Q_UNUSED(installed);
        // Before anything else is told to accessibility: the first change
        // makes Qt create the control's interface and keep it, and the
        // factory picks the interface by this name.
        w->setAccessibleName(spoken);
    } else if (auto* b = qobject_cast<QAbstractButton*>(w)) {
        new TipAsName(b);
        if (b->text().isEmpty() && !b->toolTip().isEmpty()) b->setAccessibleName(b->toolTip());
    }
    // Labels, titled boxes and captioned buttons keep no name of their own:
    // Qt then reads their text as it stands, after every change.
    w->setAccessibleDescription(name);
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
