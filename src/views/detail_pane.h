#pragma once

#include "state/app_state.h"

namespace orva {

// The detail pane Frame2 under the day planner: vsDtl (2 columns, 6 rows:
// text, time line, reminder line, count line, two blank rows) and the note
// box rtNotes, with the pictures imgDtlAppt, imgDtlNote, imgDtlPrior,
// imgDtlNext and prtdtlImg. Their state lives in AppState::controls.

// Picture keys of the three detail lines (rows 1..3 of vsDtl).
inline const QString dtl_picture_keys[3] = {
    QStringLiteral("DtlTime"), QStringLiteral("DtlReminder"), QStringLiteral("DtlCount")};

// Caption of Frame2 "", vsDtl cleared, rtNotes " ", the five pictures off.
void clear_detail(PlannerState& view);
// Shows the appointment in cell (row, col) of vsSched; row -1 does nothing.
void show_detail(const Shared& store, PlannerState& view, const OptionsState& options,
                 EditorState& editing, int row, int col);
// Builds vsDtl and rtNotes for appt_tbl row `index` shown on grid row `row`.
void fill_dtl(const Shared& store, PlannerState& view, const OptionsState& options, int index,
              int row);
// Twips that fill_dtl's six rows take together in a grid `grid_height`
// twips high: more than the grid itself, since the text row is twice the
// others and no row goes below 340.
int dtl_rows_height(int grid_height);
// The texts of the three lines, word for word.
QString dtl_time_line(const appt_rec& a, int grid_row);
QString dtl_duration(const QString& start, const QString& end);
QString dtl_reminder_line(const Shared& store, const appt_rec& a);
QString dtl_count_line(const Shared& store, const appt_rec& a);
// Shows Frame2 when the "appt" tab is selected.
void TabStrip1_Click(PlannerState& view);
// The walk through the day's cells.
void imgDtlNext_Click(const Shared& store, PlannerState& view, const OptionsState& options,
                      EditorState& editing);
void imgDtlPrior_Click(const Shared& store, PlannerState& view, const OptionsState& options,
                       EditorState& editing);
// Opens the editor for the current cell of vsSched, as a double click does.
void imgDtlAppt_Click(Shared& store, const PlannerState& view, EditorState& editing, RunState& run);
// The note editor path through frmNotes.
void imgDtlNote_Click(AppState& s);
void vsDtl_DblClick(Shared& store, PlannerState& view, EditorState& editing, RunState& run);
void vsDtl_KeyDown();
void rtNotes_DblClick(AppState& s); // also a key press in rtNotes

} // namespace orva
