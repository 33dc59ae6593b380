#pragma once

#include "appointments/stickers.h"
#include "state/app_state.h"

#include <QTime>

namespace orva {

// frmQuick ("Quick Add") as the logic sees it. It works on row appt_count of
// appt_tbl, the row just typed into a planner grid.
struct QuickForm {
    QString caption;        // the text of the new entry
    StickerList typeIcombo; // labelled "Sticker"
    QTime DTPicker1;        // labelled "End Time"
    bool picker_enabled = true;
};

void frmQuick_Load(const Shared& store, const PlannerState& view, QuickForm& f);
// OK: returns true when the form unloads; false after "End time is less than
// Start Time" (information style), with the form staying.
bool frmQuick_OK(Shared& store, QuickForm& f);
// Cancel: the selected cell of the planner grid is emptied; the row stays.
void frmQuick_Cancel(PlannerState& view, QuickForm& f);

inline const QString end_before_start_text = QStringLiteral("End time is less than Start Time");

// frmNotes ("Notes"): edits notes_text, at most notes_limit bytes of UTF-8.
struct NotesForm {
    QString rtNotes; // the text in the box
    QString font_name;
    double font_size = 10;
    bool font_bold = false;
    int cursor = 0; // position of the text cursor
    // Placement: offset in twips from the top-left corner of the control
    // named `anchor` ("frmAppt1" or "Frame2").
    QString anchor;
    int dx = 0, dy = 0;
};

// What the notes field holds, in bytes of UTF-8 (not characters).
inline constexpr int notes_limit = decltype(appt_rec::appt_notes)::width;

void frmNotes_Load(const OptionsState& options, EditorState& editing, NotesForm& f);
void frmNotes_OK(EditorState& editing, NotesForm& f);
void frmNotes_Cancel(EditorState& editing, NotesForm& f);

} // namespace orva
