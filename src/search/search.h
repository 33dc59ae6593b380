#pragma once

#include "appointments/stickers.h"
#include "core/controls.h"
#include "grid/grid.h"
#include "state/app_state.h"

#include <QDate>
#include <QString>
#include <functional>
#include <map>

namespace orva {

// The text matcher of the search: plain text, no special characters. A line
// is a hit when matches() is above 0.
class StringMatcher {
  public:
    void set_text(const QString& text) { text_ = text; }
    void set_pattern(const QString& pattern) { pattern_ = pattern; }
    void set_case_sensitive(bool on) { case_ = on ? Qt::CaseSensitive : Qt::CaseInsensitive; }
    // Non-overlapping occurrences of the pattern in the text. An empty
    // pattern matches every text once, so that searching for nothing lists
    // everything in the range rather than nothing.
    int matches() const;

  private:
    QString text_, pattern_;
    Qt::CaseSensitivity case_ = Qt::CaseInsensitive;
};

// "Find Appointments": the controls as the logic sees them, and the form's
// own members. The dialog copies the controls to and from its widgets.
struct SearchForm {
    // SrchOpt: 0 text, 1 notes, 2 sticker, 3 date range alone.
    int srch_kind = 0;
    QString apptText;
    StickerList typeIcombo;
    QDate srchDTPicker1, srchDTPicker2;
    bool Check1 = false; // "Case Sensitive"
    Grid srchGrid;
    QString lblHits;
    // srchGrid, stopCmd, lblResults, imgPrint, by name: shown or hidden,
    // enabled or not.
    std::map<QString, Control> controls;
    // The form's size in twips; a search grows it, the grid follows it.
    int width = 12000;
    int height = 4280;
    int grid_left = 120, grid_top = 3720;
    // Called once the list is laid out and before the walk, so a view can
    // show the list and Stop while the search runs.
    std::function<void()> shown;
    bool busy = false;   // the hourglass is up
    bool unload = false; // show_hit closed the form

    bool srch_stop = false;
    qint16 srch_hits = 0;
    QString srch_type = QStringLiteral("1");
    QString first_yymm, last_yymm; // "yymm" of the pickers
    QString first_day, last_day;   // "yyyymmdd" of the pickers
    StringMatcher matcher;
    int months_read = 0;
    // Moves on every Search; a run that finds it moved after a yield was
    // overtaken by a newer one and leaves the list to it.
    quint64 run_serial = 0;

    Control& ctl(const QString& name) { return controls[name]; }
};

inline const QString srch_format =
    QStringLiteral("Description|^Date|^Begin|^End|^Notes|^");
inline constexpr int srch_cols = 24;

// Form_Load: the grid and its companions hidden, the sticker list filled with
// its first row selected, srch_type "1", both pickers on today.
void Form_Load(SearchForm& f);

// Search: clears the list, grows the form to 7680 twips, runs the search.
void Command1_Click(Shared& s, SearchForm& f);
// The walk over the months of the range, then the sort and lblHits.
void run_search(Shared& s, SearchForm& f);
// Reads the member of `yymm` ("yymm") and lists its hits. Returns false when
// the run was stopped or overtaken during the month.
bool search_month(Shared& s, SearchForm& f, const QString& yymm);
// Appends one row of 24 columns built from the line.
void add_hit(SearchForm& f, const appt_rec& r);

void stopCmd_Click(SearchForm& f);
void ClearCmd_Click(SearchForm& f);
// A click in the list: column 0 opens the entry, column 1 shows its day and
// closes the form; other columns and the heading do nothing.
void srchGrid_Click(AppState& s, SearchForm& f, int row, int col);
void goto_hit(AppState& s, SearchForm& f, int row);
void show_hit(AppState& s, SearchForm& f, int row);

// The grid fitted to the form, its shown columns at 30, 20, 10, 10 and 30
// percent of its width.
void fit_grid(SearchForm& f);
// The shown columns at those percentages of `room` twips.
void share_columns(Grid& g, int room);

// lblHits for a count and the pickers' dates.
QString hits_text(int hits, const QDate& from, const QDate& to);

// imgPrint's title: lblHits + " printed on " + the long date of now.
QString print_title(const SearchForm& f);

inline const QString hit_gone_msg =
    QStringLiteral("That appointment is no longer in the calendar. Search again to see what it holds now.");

} // namespace orva
