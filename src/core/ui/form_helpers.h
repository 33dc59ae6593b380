#pragma once

#include <QPoint>
#include <QSize>
#include <QString>

class QComboBox;
class QLineEdit;
class QWidget;

namespace orva {

struct ComboList;

// Gives a control its program name ("vsSched", "Label1") as object name and
// as accessible description, where tools look controls up, and lets a screen
// reader announce what a sighted user reads: `spoken` when given (grids,
// pickers, lists and boxes say what they are for: "Day planner"), otherwise
// a label's or a titled box's current text, a button's caption, or the
// tool-tip of a button that has only a picture.
void name_control(QWidget* w, const QString& name, const QString& spoken = {});

// Moves a window of `size` at `at` so that it lies wholly on the screen that
// shows `near`; `at` as it is when there is no such screen.
QPoint on_screen(QPoint at, const QSize& size, const QWidget* near);

// Holds a line edit to `bytes` bytes of UTF-8, the width of the field its text
// goes to, so what the user sees is what is stored. maxLength cannot do it: it
// counts UTF-16 units, and a Greek letter takes two bytes in one of them.
// What would overflow is cut from the end of what was just typed or pasted,
// between characters (see cut_to_bytes); a text set whole is cut at its end.
void limit_bytes(QLineEdit* edit, int bytes);

// Shows a list of the logic in a combo box: the items (refilled only when
// they differ, so an open list is not disturbed) and the selection, with the
// box's signals held.
void show_combo_list(QComboBox* box, const ComboList& list);

} // namespace orva
