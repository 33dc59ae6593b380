#pragma once

#include <QPoint>
#include <QSize>
#include <QString>

class QWidget;

namespace orva {

// Gives a control its program name as object name and as the name screen
// readers announce.
void name_control(QWidget* w, const QString& name);

// Moves a window of `size` at `at` so that it lies wholly on the screen that
// shows `near`; `at` as it is when there is no such screen.
QPoint on_screen(QPoint at, const QSize& size, const QWidget* near);

} // namespace orva
