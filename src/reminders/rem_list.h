#pragma once

#include "grid/grid.h"
#include "state/app_state.h"

#include <QDate>
#include <QString>
#include <utility>

namespace orva {

// The reminder list as the logic sees it. It reads the reminder members of
// its range straight from the calendar file, never rmdr_tbl, so it reaches
// months that are not loaded; it only looks and changes no reminder.
struct RemListForm {
    // The range, both ends inclusive, compared with the day a reminder is
    // due (its rmdr_date), not with its appointment's day. The pickers
    // srchDTPicker1 and srchDTPicker2 show these and write them on each change.
    QDate from_date, to_date;
    // 0 pending ("Active") only, 1 expired only, 2 all.
    int optDisplay = 2;
    Grid vsRmdr;
    QString lblCnt;
    // Window and grid in twips, as the window last reported them. It opens
    // wider than its least width, so that a long weekday with a long date
    // fits the share of its column.
    int width = 13500, height = 7200;
    int grid_top = 1200;
    bool busy = false;   // the hourglass is up during a refresh
    int months_read = 0; // months the last fill walked, with a member or not
};

inline const QString rem_list_title = QStringLiteral("Reminders  ");
inline const QString rmdr_format =
    QStringLiteral("Appt Date|^Time|^|^Subject|^Reminder set for:|^Status|");
inline constexpr int rmdr_cols = 13;
inline const QString opt_display_captions[3] = {
    QStringLiteral("Show Pending reminders"),
    QStringLiteral("Show expired reminders"),
    QStringLiteral("Show all "),
};
inline const QString rmdr_active = QStringLiteral("Active");
inline const QString rmdr_expired = QStringLiteral("Expired");
inline const QString from_after_to_msg = QStringLiteral("From date greater than To date");
inline const QString appt_not_found_msg = QStringLiteral(" appointment not found. ");
inline constexpr int rem_list_min_width = 10170;   // twips
inline constexpr int rmdr_row_height = 350;        // twips
inline constexpr int rmdr_picture_col_width = 900; // twips

// Ways in. imgRem (and mnuRemList, which runs its click) tells
// " Select and Open a Calendar first" when no calendar is open; the tray's
// sysRem opens the list whatever, and a list without a calendar is empty.
void imgRem_Click(AppState& s);
void sysRem_Click();

// Opening: the grid set up, the range from cur_date (the month in view when
// the month planner is up, otherwise cur_date's week, Monday to Sunday), all
// reminders shown, the list filled.
void Form_Load(AppState& s, RemListForm& f);

// The week of `d`, Monday to Sunday, as the pair of its first and last day.
std::pair<QDate, QDate> monday_to_sunday(const QDate& d);

// Empties the grid to its heading, drawing off, 13 columns with the seven
// hidden ones, then size_cols.
void init_rmdr(RemListForm& f);
// The shown columns as shares of the grid's width (Grid::Width, twips), the
// picture column a fixed 900 twips.
void size_cols(RemListForm& f);
// Every month from from_date to to_date's, compared as "yymm", then drawing on.
void fill_rmdr(Shared& s, RemListForm& f);
// Adds the qualifying rows of one month's member ("yymm") and keeps the whole
// list sorted by the entry's day and start. A month with no member adds
// nothing and says nothing; the count line is written either way.
void build_rmdr_list(Shared& s, RemListForm& f, const QString& yymm);
// One listed row from a member line, all 13 columns.
void add_rmdr_row(RemListForm& f, const rmdr_rec& r);

// The number below the heading with " reminder " for one, " reminders" else.
QString count_text(int rows);
// "Active", or "Expired" for a delivered reminder.
QString rmdr_status(const rmdr_rec& r);

// Refresh: a reversed range is told and changes nothing; otherwise the list
// is built anew.
void Command1_Click(Shared& s, RemListForm& f);
// Help: the help viewer, modal, at the reminder list's own topic.
void Command2_Click(HelpState& help);

// A double click: columns 0 and 1 go to the row's day, 2 and 3 open its
// entry, the others and the heading do nothing.
void vsRmdr_DblClick(AppState& s, RemListForm& f, int row, int col);
// The main window shows the row's day in the day planner, whatever planner
// was up. The list stays open.
void goto_rmdr_day(AppState& s, RemListForm& f, int row);
// The row's entry in the editor, its month loaded for it when it lies in
// another; afterwards the list and the planner are renewed when the editor
// remade reminders.
void open_rmdr_appt(AppState& s, RemListForm& f, int row);

// The window held to its least width, the grid's height following it.
void Form_Resize(RemListForm& f);

} // namespace orva
