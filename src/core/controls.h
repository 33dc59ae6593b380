#pragma once

#include <QString>
#include <QStringList>

namespace orva {

// Check marks of the main menu that the options row carries. The window
// mirrors them onto its actions; the logic reads and writes only these.
struct MenuChecks {
    bool mnuColorY = true;       // appointment cells yellow
    bool mnuColorSelect = false; // appointment cells in the chosen colour
    bool mnuNoColor = false;     // "Transparent"; a load never sets it
    bool mnuTips = true;         // "Tooltips"
    bool mnuShowTimes = true;    // "Show Times in appointment text"
    bool mnuStat = true;         // "Show status bar"; the bar follows it
    bool mnuStart = false;       // "Start when computer starts"
};

// A control of the main form other than a grid, as the logic sees it: the
// window copies these onto its widgets (found by object name) after every
// event it forwards, so the logic never touches a widget.
struct Control {
    bool enabled = true;
    bool visible = true;
    QString text; // caption, label text or the plain text of a text box
    QString tip;  // tool-tip
};

// A drop-down list of the main form: its items and the selected position
// (-1 none). Changing list_index from the logic does not run the list's
// change handler; callers run it themselves where the program does.
struct ComboList {
    QStringList items;
    int list_index = -1;
    QString text() const {
        return list_index >= 0 && list_index < items.size() ? items[list_index] : QString();
    }
    void clear() {
        items.clear();
        list_index = -1;
    }
};

// One panel of the status bar.
struct StatusPanel {
    QString text;
    QString tip;
};

} // namespace orva
