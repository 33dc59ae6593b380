#pragma once

#include "state/app_state.h"

#include <QSize>
#include <QString>
#include <functional>

namespace orva {

// What all print jobs of the main form share: the print dialog, the copy of
// a grid through a grid file, the line at the foot of the page, the copies
// loop and the job's start and end.

// Page sizes of the jobs, in twips.
inline constexpr int print_margin = 720;     // margin_lr and margin_tb
inline constexpr int portrait_page = 11520;  // the day's page, margins in
inline constexpr int landscape_grid = 13680; // the day's grid on a landscape page
inline constexpr int letter_width = 12240;
inline constexpr int letter_height = 15840;
inline constexpr int page_allowance = 1440;  // the page less both margins
inline constexpr int set_grid_width = 10800; // pSet_wk and pSet_mth on letter
inline constexpr int set_grid_height = 14400;
inline constexpr int day_label_width = 1080; // column 0 of the day on paper
inline constexpr int day_last_row_height = 245;
inline constexpr int month_title_height = 860;
inline constexpr double title_points = 16;

// The grid file a job copies its grid through, in the data folder. It lives
// only between the save and the load.
inline const QString print_copy_file = QStringLiteral("Orvatempprt.grd");

// Told when the copy cannot be made (the data folder refuses the file).
inline const QString print_copy_failed_msg = QStringLiteral(
    "The page could not be prepared for printing: the data folder could not be written.");

// "Orva Calendar: " + " printed on " + the long date of today: the document's
// name and the line at the foot of each page.
QString printed_on_text();

// The print dialog, preset from the printer the last dialog settled, in
// `orientation` (1 portrait, 2 landscape), with one copy, and offering the
// selection unless `no_selection`. Sets print_cancel; on OK also
// print_selection and the printer.
void print_setup(PrintState& p, int orientation, bool no_selection);

// The paper of the printer as it stands, in twips; letter (in its
// orientation) when the dialog has not said.
QSize page_twips(const PrintSetup& printer);

// Copies `source` into `target` by saving it as the grid file in `app_path`
// and loading that back; the file is removed before this returns, whatever
// happened. False when the file could not be written or read (or there is
// no data folder); `target` is then empty.
bool copy_through_file(const Grid& source, Grid& target, const QString& app_path);

// Every cell of `target` takes the back and fore colour that the same cell
// of `source` shows, its own or inherited (a fixed cell's grey included), so
// the copy looks the same after its fixed rows and columns are undone.
void copy_cell_colors(const Grid& source, Grid& target);

// The band's colours (Label1): the skin's, else its designed teal with pale
// green text.
LabelColors label1_colors(const PlannerState& view);

// A title row at row 0 of `g`: `text` in the first `cells` cells (" " in any
// further ones), bold at `points`, in the band's colours, merged across.
void add_title_row(Grid& g, const PlannerState& view, const QString& text, int cells,
                   double points);

// The copies loop: `print_one` once for each copy the setup asks for, each
// with a copy count of one, so three copies are three jobs and never nine
// pages. False at the first that fails; the rest are not tried.
bool print_copies(const PrintSetup& setup,
                  const std::function<bool(const PrintSetup& one)>& print_one);
// The same through the installed print_grid with the job's margins.
bool print_copies(const PrintState& p, const Grid& g, const QString& name);

// One print job of the main form from start to end. While it lasts the main
// tick is off (a reminder's note would land in the middle of it; the next
// tick after finds it) and the hourglass shows, except behind the dialog;
// the margins are 720. At its end the tick runs again, the pointer is back
// and `print_grid` (vsPrtgrd or vsPrtGrid) is emptied to no rows and columns.
class PrintJob {
  public:
    PrintJob(AppState& s, WindowPort& w, Grid& print_grid);
    ~PrintJob();
    PrintJob(const PrintJob&) = delete;
    PrintJob& operator=(const PrintJob&) = delete;

    // The copy of `source` into the print grid; tells the user when it fails.
    bool copy(const Grid& source);
    // print_setup; false when cancelled.
    bool setup(int orientation, bool no_selection);
    // The copies of the print grid; tells the user when one fails.
    void print(const QString& name);

  private:
    AppState& s_;
    WindowPort& w_;
    Grid& g_;
};

} // namespace orva
