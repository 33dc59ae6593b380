#pragma once

#include "state/app_state.h"

#include <QString>
#include <QTime>

namespace orva {

// The day planner on vsSched: 49 rows (0 untimed, 1..48 the half hours from
// midnight), 20 columns (0 the time labels, odd ones 3-pixel spacers whose
// cells all hold the data "blank", even ones 2..18 appointment columns). A
// cell's data is the appt_tbl row it shows; nothing else is kept in the grid.

// Data of every spacer cell.
inline const QString blank_data = QStringLiteral("blank");

inline constexpr int day_rows = 49;
inline constexpr int day_cols = 20;
inline constexpr int scroll_row = 15; // 07:00 is the top row after a rebuild
inline constexpr Color block_border_color = rgb(0, 0, 125);

// The fixed label of grid row r (0..48): " " for row 0, then " 12:00 am",
// " 12:30 am", " 01:00 am" ... " 11:30 pm", whatever the locale.
QString day_row_label(int row);

// "hh:mm" to a grid row: five blanks (or empty) give 0; otherwise hour x 2 + 1,
// one more when the minute is above 29.
int start_slot(const QString& t);
// The last row of a block that starts at `start`: an end on the hour or half
// hour closes the block with the slot before it unless the block is
// zero-length. A blank end gives 0.
int end_slot(const QString& end, const QString& start);

// Clears the rows and writes the 49 labelled rows with the spacers' data,
// the options' font and the row heights (270 twips up to size 10, 400 above;
// row 0 800).
void build_day_rows(PlannerState& view, const OptionsState& options);
// Merge, hiding and selection behaviour of an empty day: every column from 1
// hidden, then 1 and 2 shown.
void format_day_grid(PlannerState& view);
// Lays every appointment of cur_date into the grid, in the order of
// appt_start then appt_id, and recounts the status bar. The caller clears
// first_row / first_col before and calls size_sched_cols after.
void fill_day(const Shared& store, PlannerState& view, const OptionsState& options);
// The same for edit_date; reports where the entry `id` came to lie
// (row, col untouched when it is not there), then sizes the columns,
// restores the font and recounts.
void fill_day_find(const Shared& store, PlannerState& view, const OptionsState& options,
                   const EditorState& editing, const QString& id, int& row, int& col);
// Lays one appointment; see the column search and the merge guard inside.
void place_appt(PlannerState& view, const OptionsState& options, const QString& start,
                const QString& end, const QString& id, const QString& type, const QString& text,
                int index, QString& first_row, QString& first_col);
// Widths of the shown appointment columns: at most three share vsSched's
// width; the spare free column gets 320 twips.
void size_sched_cols(PlannerState& view);
// Paints the free cells of the clock's half hour with now_color and takes the
// colour off the row painted before.
void mark_now_row(PlannerState& view);
// The tool-tip for the cell under the mouse: "h:mm am/pm - h:mm am/pm  text"
// on an appointment, cleared elsewhere.
void sched_tip(const Shared& store, PlannerState& view, int row, int col);
// Every field of a one-time entry typed into a planner but its times: `day`
// as both dates, no rule, no reminder, sticker "0".
void fill_quick_row(appt_rec& a, const QDate& day, const QString& id, const QString& text);
// Fills appt_tbl row `index` for a text typed into cell (row, col).
void quick_appt_rec(Shared& store, const PlannerState& view, int index, const QString& id, int row,
                    int col);
// The options' font on the grid object (name, size, bold, italic, colour).
void set_sched_font(PlannerState& view, const OptionsState& options);
// The options' font name, size, bold and italic on any grid object.
void apply_grid_font(const OptionsState& options, Grid& g);
// grid_font_size as points; 9 when it is no number.
double grid_font_points(const OptionsState& options);
// The hand-over of a new entry on cur_date: no reminder yet, messenger 1.
void hand_over_new(Shared& store, EditorState& editing);

// Label1 takes the long date of `d`.
void set_label1(PlannerState& view, WindowPort& w, const QDate& d);
// Label1 takes `text`, the title of the month and week planners.
void set_label1_text(PlannerState& view, WindowPort& w, const QString& text);
// The fill of every day rebuild: first_row / first_col cleared, fill_day,
// the columns sized and the first block put into the pane.
void fill_day_core(const Shared& store, PlannerState& view, const OptionsState& options,
                   EditorState& editing);

// After a change of the store: the day grid built again from appt_tbl for
// cur_date with its sizing and the now-marker, and the navigator's day marks
// redrawn for the month just reloaded.
void rebuild_day(const Shared& store, PlannerState& view, const OptionsState& options,
                 EditorState& editing);

// The day's first block into the detail pane when the "appt" tab is selected:
// Frame2 shown, cur_row/cur_col from first_row/first_col, show_detail.
void show_first_block(const Shared& store, PlannerState& view, const OptionsState& options,
                      EditorState& editing);

// The Day tool picture: shows the day planner for cur_date, switching the
// layout when another planner (or none) was up, and saves the options.
void imageDay_Click(Shared& store, PlannerState& view, OptionsState& options, EditorState& editing,
                    WindowPort& w);

// Events of vsSched, with grid rows and columns.
void vsSched_Click(const Shared& store, PlannerState& view, const OptionsState& options,
                   EditorState& editing, int row, int col);
void vsSched_DblClick(Shared& store, const PlannerState& view, EditorState& editing, RunState& run,
                      int row, int col);
// Returns true when the edit is to be cancelled.
bool vsSched_BeforeEdit(PlannerState& view, int row, int col);
// `before` is the cell's text when the edit began.
void vsSched_AfterEdit(AppState& s, WindowPort& w, int row, int col, const QString& before);
// Tab with no row selected goes to the clock's row; Delete deletes the
// selected entry. Returns true when the key was used.
bool vsSched_KeyDown(AppState& s, int key);
void vsSched_MouseDown(PlannerState& view, int button, int row, int col);
void vsSched_MouseUp(PlannerState& view);
void vsSched_MouseMove(const Shared& store, PlannerState& view, const OptionsState& options,
                       int buttons, int row, int col);

// The hand-over of a double click on (row, col) without opening anything:
// edit_start, new_appt, edit_index, edit_date, rem_* as the editor expects.
void sched_hand_over(Shared& store, const PlannerState& view, EditorState& editing, int row,
                     int col);

// Opens the editor through the modal seam with the main tick stopped. A save
// switches the tick on again; Cancel leaves it off.
void open_editor(EditorState& editing, RunState& run);

// " Select and Open a Calendar first"
inline const QString no_calendar_text = QStringLiteral(" Select and Open a Calendar first");
inline const QString dbl_click_to_edit_text = QStringLiteral(
    "Double click to edit appointment or click the Edit Details button in the Appointment "
    "Details tab.");

// "  " + the long date of the system's locale: the text of Label1.
QString long_date_label(const QDate& d);

// Format(t, "h:mm am/pm") and Format(t, "hh:mm am/pm") of the program.
QString format_h_mm_ampm(const QTime& t);
QString format_hh_mm_ampm(const QTime& t);
// The same on an "hh:mm" field: a text that is no time comes back as it
// stands, so an untimed entry's five blanks stay blanks.
QString format_field_ampm(const QString& field, bool two_digit_hour);

} // namespace orva
