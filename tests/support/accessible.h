#pragma once

#include <QAccessible>
#include <QString>
#include <QWidget>

namespace orva::testing {

// What a screen reader is told about a widget, asked the way it asks: through
// the widget's accessible interface, not its properties.
inline QString spoken_name(QWidget* w) {
    QAccessibleInterface* i = w ? QAccessible::queryAccessibleInterface(w) : nullptr;
    return i ? i->text(QAccessible::Name) : QStringLiteral("<no interface>");
}
inline QString spoken_description(QWidget* w) {
    QAccessibleInterface* i = w ? QAccessible::queryAccessibleInterface(w) : nullptr;
    return i ? i->text(QAccessible::Description) : QStringLiteral("<no interface>");
}

} // namespace orva::testing
