#pragma once

#include <QString>
#include <vector>

namespace orva {

// One entry of the main menu as designed: the window builds its menu bar from
// these rows in order, and leaves out a command it has nothing to run for,
// so a command whose form is not written yet is absent rather than dead.
struct MenuEntry {
    enum class Kind {
        Menu,    // a menu of the bar or a sub-menu
        Command, // runs when chosen
        Dash,    // a separator; one that would follow another is not drawn
        Spacer,  // a blank in the bar that pushes the next entry apart
    };
    QString key;      // the program's name, the object name of the entry
    QString parent;   // the key of the menu it stands in; "" for the bar
    QString caption;  // as shown, trailing blanks included
    QString shortcut; // portable text ("Ctrl+O"); "" for none
    Kind kind = Kind::Command;
    bool checkable = false; // carries a check mark
    bool checked = false;   // checked by design, before the options apply
    bool visible = true;
    bool enabled = true;
    QString icon; // a freedesktop icon name, shown when the theme has it
};

// The menu bar of the main window, in order: each entry follows its parent,
// the skins' entries included, and last the hidden sysmenu, which is the
// tray icon's pop-up.
const std::vector<MenuEntry>& main_menu();

} // namespace orva
