#pragma once

#include "state/app_state.h"

#include <QString>
#include <QStringList>

namespace orva {

// The detail pane's print (prtdtlImg): the selected appointment's details as
// a small two-column list in vsPrtGrid, notes last.

inline const QString dtl_print_heading = QStringLiteral("Appointment Details ");
inline const QString dtl_print_notes = QStringLiteral("NOTES:  ");

// The printed lines of a note. Each run of carriage returns and line feeds
// ends a line. Walking the rest with n the characters of the line so far: a
// blank that comes with n above 60 ends the line before it (the blank opens
// the next); any other character that comes with n above 85 does the same;
// so a long line breaks at the first blank after 60 characters, or after 86
// when none comes. Every character is printed, line ends excepted; no line
// is empty but one the note itself left so.
QStringList notes_lines(const QString& notes);

// Fills vsPrtGrid from vsDtl, Label1 and rtNotes: the heading row (merged),
// a blank row, one row per row of vsDtl with its picture, the date, the
// notes heading, the note's lines and a last blank row. Fonts, back colour
// and column widths follow vsDtl; the text column is at least as wide as a
// letter page leaves, so a line of 86 characters fits.
void fill_dtl_print(PlannerState& view);

// The detail pane's print picture: fill_dtl_print, the print dialog, then
// the copies with "printed on" at the foot, the main tick off meanwhile.
// vsPrtGrid is emptied after.
void prtdtlImg_Click(AppState& s, WindowPort& w);

} // namespace orva
