#pragma once

#include "core/modal.h"
#include "grid/grid.h"
#include "state/help_state.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace orva {

inline const QString help_title = QStringLiteral("Orva Calendar Help ");
inline const QString help_archive_name = QStringLiteral("Calendar.hlp1");
inline const QString help_index_member = QStringLiteral("help.idx");
// Column 1 of an index row that is only a heading of the outline.
inline const QString help_label = QStringLiteral("Label");
inline const QString hide_topics_text = QStringLiteral("Hide Help Content Topics");
inline const QString show_topics_text = QStringLiteral("Show Help Content Topics");
inline const QString help_no_separator_text = QStringLiteral("Error reading help file.");
inline const QString help_extract_failed_text = QStringLiteral("Error 2 extracting help file");

// The columns of the index, help.idx: a saved grid whose row 0 is its
// heading and whose topics start at row 1.
namespace help_col {
constexpr int level = 0;   // outline level, 1 for the top
constexpr int file = 1;    // the topic's member ("topics/find.html"), or "Label"
constexpr int caption = 2; // the line of the outline
constexpr int count = 3;
} // namespace help_col

// One line of the outline vsHelpIndex. Line r shows index row `index_row`,
// which fill_index makes r + 1.
struct HelpLine {
    QString caption;
    int index_row = 0; // the line's data
    int level = 1;
    bool open_book = false; // the picture: open book, else closed book
    bool lit = false;       // button-face background, else the window's
};

// frmHelpIdx ("Orva Calendar Help ") as the logic sees it: the index, the
// outline made from it, the topic shown and the buttons' states. The dialog
// shows this and forwards clicks; what it prints comes from here too.
struct HelpForm {
    QString app_path;
    QString hlp_path; // app_path + "/Calendar.hlp1"
    // app_path + "/help.idx": where the index would stand if it were copied
    // out of the archive. It never is (the archive hands its members over in
    // memory); the path is named in the messages.
    QString idx_path;
    QString topic_name;    // column 1 of the index row clicked last
    int cur_topic_row = 0; // the outline line whose topic is shown
    bool list_shown = true;

    Grid vsHelpHold; // the index as read, heading in row 0
    std::vector<HelpLine> vsHelpIndex;
    int cursor = 0; // vsHelpIndex's current line; -1 when it has none

    QString rtfContents; // the topic shown, as rich text (HTML)
    bool nextCmd_enabled = true;
    bool priorCmd_enabled = true;
    QString hlpCmd_caption = hide_topics_text;

    // What the last print dialog settled, which the next one starts from.
    PrintSetup print_setup;
};

// app_path + "/Calendar.hlp1" and app_path + "/help.idx".
QString help_archive_path(const QString& app_path);
QString help_index_path(const QString& app_path);

// Opening: the index read from the archive in app_path into vsHelpHold, the
// outline filled, the first topic shown, row 0 lit, priorCmd disabled. A
// missing or unreadable archive shows "Error reading help file; " + its error
// number + "  File " + hlp_path + " archive " + idx_path, then the same box
// beginning "Error loading help file; ", and leaves the viewer empty.
// `topic`, when it names a file of the index, is shown (as if its line had
// been clicked) instead of the first one.
void Form_Load(HelpForm& f, const QString& app_path, const QString& topic = {});

// One outline line per index row from 1, with its caption, its index row as
// data, the closed book, its level; the cursor on line 0.
void fill_index(HelpForm& f);

// Shows the member `path` of the archive. A path with no "/" shows "Error
// reading help file." and loads nothing; a member that cannot be read shows
// "Error 2 extracting help file" and leaves the page as it was.
void load_topic(HelpForm& f, const QString& path);

// A click on outline line r: a "Label" heading changes nothing; any other
// line sets the buttons (next off on the last line, prior off on line 0),
// moves the lit line and the open book to r and shows its topic. The cursor
// goes to r either way.
void vsHelpIndex_Click(HelpForm& f, int r);

// The cursor one line down (up) and the click steps for it; on the last
// (first) line the button is disabled instead.
void nextCmd_Click(HelpForm& f);
void priorCmd_Click(HelpForm& f);

// Hides or shows the list of topics; the button's caption says what the next
// press does.
void hlpCmd_Click(HelpForm& f);

// A link inside a topic to another member of the index: its line is clicked.
// False when no line shows that file.
bool follow_link(HelpForm& f, const QString& href);

// Print: the print dialog over f.print_setup, offering and preselecting the
// selection when text is selected. False on Cancel; otherwise
// f.print_setup.selection says whether only the selection is to print.
bool prtCmd_Click(HelpForm& f, bool text_selected);

// Print All: the same dialog without the selection, then every topic of the
// outline in its order, headings passed over, as rich text, one entry per
// topic; nothing on Cancel. A topic that cannot be read is left out.
std::vector<QString> Command1_Click(HelpForm& f);

// The bytes of a member of the help archive in app_path, read without
// changing the file; the archive's error number (53 when the file or the
// member is missing).
int read_help_member(const QString& app_path, const QString& member, QByteArray& bytes);

// Opens the help viewer on `topic` (a file of the index; empty for the first
// topic) and returns when it closes.
void show_help(HelpState& help, const QString& topic = {});

} // namespace orva
