#pragma once

#include "appointments/stickers.h"
#include "core/modal.h"
#include "grid/grid.h"
#include "state/help_state.h"
#include "state/options_state.h"
#include "state/planner_state.h"
#include "store/shared.h"

#include <QString>
#include <functional>

namespace orva {

// The member of the calendar file that holds the sheet, in the grid layer's
// own save format.
inline const QString todo_member = QStringLiteral("todolist.tdo");
inline const QString todo_title = QStringLiteral("T-List");
inline const QString todo_heading = QStringLiteral(" My \"To Do\" list:");
// Row 1 of a new sheet, in upper case.
inline const QString todo_first_line =
    QStringLiteral("Begin by entering your list here!").toUpper();

// The columns of vsToDo.
namespace todo_col {
constexpr int check = 0;   // Boolean: no box, "0" an empty box, else ticked
constexpr int icon = 1;    // the type picture, aligned right-centre
constexpr int text = 2;    // the line; leading blanks are its level
constexpr int stamp = 3;   // the last edit, "date hh:mm AM/PM"; Timestamp hides it
constexpr int picture = 4; // hidden: the picture's number less one, or empty
constexpr int count = 5;
} // namespace todo_col

inline constexpr int todo_new_rows = 50;     // rows of a new sheet
inline constexpr int todo_row_height = 350;  // twips, the least height of a row
inline constexpr int todo_grid_width = 9360; // twips, the grid as the form is designed
inline constexpr int todo_stamp_width = 2400;

// frmToDo ("T-List") as the logic sees it: the sheet, the type list and the
// form's own variables. The dialog shows vsToDo through a GridWidget and
// forwards the user's input to the functions below.
struct ToDoForm {
    Grid vsToDo;
    StickerList typeIcombo;
    QString Label2 = todo_heading;
    int row_now = 0, col_now = todo_col::text; // the last current cell
    bool cancelled = false;                    // set by Command2: closing keeps nothing
    // The designed width of the text column in twips, set when the sheet
    // opens: half the grid's width + 200. Fitting never narrows it below this.
    int text_width = todo_grid_width / 2 + 200;
    // What the last print dialog settled, which the next one starts from.
    PrintSetup print_setup;
    // Prints the sheet as it stands behind the accepted print dialog (heading
    // row in, empty lines hidden). The form supplies it, since printing needs
    // a printer; none prints nothing.
    std::function<void(const Grid& sheet, const PrintSetup& setup)> print;
};

// The clipboard as Copy, Cut and Paste see it, since the logic cannot reach
// the real one: the form puts the clipboard's text in before a command and
// puts it back on the clipboard when `changed`.
struct ClipText {
    QString text;
    bool changed = false;
};

// Opening: the member read into the sheet (no calendar, no member or a
// damaged one: a new sheet of 50 rows), the columns, the type list with its
// first row selected, the options' font in columns 2 and 3, the icons back
// from column 4, the cursor on row 0 column 2, and the main form's mnuTlist
// disabled while the sheet is open.
void frmToDo_Load(Shared& store, PlannerState& view, const OptionsState& options, ToDoForm& f);

// Closing by any way: unless `cancelled`, the sheet is stored as the member in
// one transaction of the calendar file; mnuTlist is enabled again. Returns the
// store's error number (53 with no calendar open), which nobody is told.
int frmToDo_Unload(Shared& store, PlannerState& view, ToDoForm& f);

// Stores the sheet as the member, in one Archive::Command on cal_path: the
// file takes it whole or stays as it was. 53 when no calendar is open.
int save_todo(Shared& store, const Grid& sheet);

// OK clears `cancelled` and Cancel sets it; the form then closes.
void Command1_Click(ToDoForm& f);
void Command2_Click(ToDoForm& f);

// A button of Toolbar1 by its key ("Copy", "Cut", "Paste", "Color",
// "Italics", "Bold", "Font Size", "Insert", "Tab Right", "Tab Left",
// "Timestamp", "Checkmark", "Delete", "Print", "Help"). Commands work on the
// selection (rows Row..RowSel, columns Col..ColSel, either way round); Color
// and Checkmark on row_now, col_now; Help opens the viewer on the sheet's own
// topic. An unknown key does nothing.
void Toolbar1_ButtonClick(ToDoForm& f, const OptionsState& options, HelpState& help,
                          const QString& key, ClipText& clip);

// Print: empty lines hidden and the heading row put on top around the print
// dialog (print_Tsetup), the sheet printed through `f.print` when it is
// accepted, and everything put back as it was, cursor included.
void print_todo(ToDoForm& f);
// The print dialog over f.print_setup; false on Cancel.
bool print_Tsetup(ToDoForm& f);

// Image1: a row of one blank appended, selected, with the options' font.
void Image1_Click(ToDoForm& f, const OptionsState& options);

// A type chosen in typeIcombo for row_now: its picture in column 1 and its
// number in column 4; a row without a key takes both away.
void typeIcombo_Click(ToDoForm& f);

// The cursor moved (the grid already holds it): off columns 0 and 1 to column
// 2, the selection's far corner kept; noted in row_now, col_now.
void vsToDo_EnterCell(ToDoForm& f);
// An edit is to start at (row, col): in columns 0 and 1 the cursor goes to
// column 2. A text typed into the icon column would sit under its picture,
// so that edit is cancelled; a tick of column 0's box goes ahead.
void vsToDo_BeforeEdit(ToDoForm& f, int row, int col, bool& cancel);
// An edit of (row, col) was committed: the row takes the stamp, columns 2 and
// 3 are fitted.
void vsToDo_AfterEdit(ToDoForm& f, int row, int col);
// A mouse button is going down on the sheet: a right press is cancelled.
void vsToDo_BeforeMouseDown(ToDoForm& f, Qt::MouseButton button, bool& cancel);

// The stamp of an edit now: the date in the system's short form, a blank, the
// time as "hh:mm AM/PM".
QString todo_stamp();

// The picture's number of a sticker key: its place in sticker_table() from 1,
// as an image list numbers its pictures; 0 for a key that has none. Column 4
// holds this less one.
int todo_picture_number(const QString& key);
// The key of a column 4 text, "" when it names no picture.
QString todo_picture_key(const QString& cell);

} // namespace orva
