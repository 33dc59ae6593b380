#include "shell/main_menu.h"

#include "appearance/skins.h"

namespace orva {
namespace {

using Kind = MenuEntry::Kind;

MenuEntry entry(const char* key, const char* parent, const char* caption, Kind kind) {
    MenuEntry e;
    e.key = QString::fromLatin1(key);
    e.parent = QString::fromLatin1(parent);
    e.caption = QString::fromLatin1(caption);
    e.kind = kind;
    return e;
}

MenuEntry menu(const char* key, const char* parent, const char* caption) {
    return entry(key, parent, caption, Kind::Menu);
}

MenuEntry command(const char* key, const char* parent, const char* caption,
                  const char* shortcut = "", const char* icon = "") {
    MenuEntry e = entry(key, parent, caption, Kind::Command);
    e.shortcut = QString::fromLatin1(shortcut);
    e.icon = QString::fromLatin1(icon);
    return e;
}

MenuEntry check(const char* key, const char* parent, const char* caption, bool checked,
                const char* shortcut = "") {
    MenuEntry e = command(key, parent, caption, shortcut);
    e.checkable = true;
    e.checked = checked;
    return e;
}

MenuEntry dash(const char* key, const char* parent) {
    return entry(key, parent, "", Kind::Dash);
}

MenuEntry hidden(MenuEntry e, bool enabled) {
    e.visible = false;
    e.enabled = enabled;
    return e;
}

} // namespace

const std::vector<MenuEntry>& main_menu() {
    static const std::vector<MenuEntry> entries = [] {
        std::vector<MenuEntry> m{
            menu("mnuFile", "", "File"),
            command("mnuOpen", "mnuFile", "Open", "Ctrl+O", "document-open"),
            command("mnuNew", "mnuFile", "New Calendar", "Ctrl+N", "document-new"),
            command("mnuFileDelCal", "mnuFile", "Delete Calendar", "Ctrl+R", "edit-delete"),
            dash("mnuFileDash1", "mnuFile"),
            // The two blanks are the caption's.
            command("mnuFilePrint", "mnuFile", "Print  ", "Ctrl+P", "document-print"),
            dash("mnuFileDash2", "mnuFile"),
            // Exit, not Cut: the key leaves the program wherever the focus is.
            command("mnuExit", "mnuFile", "Exit", "Ctrl+X", "application-exit"),

            // Also the pop-up menu of the planner grids.
            menu("mnuEdit", "", "Edit"),
            command("mnuadd", "mnuEdit", "Add appointment", "Ctrl+A", "appointment-new"),
            command("mnuCopy", "mnuEdit", "Copy appointment", "Ctrl+C", "edit-copy"),
            command("mnuEditA", "mnuEdit", "Edit Appointment", "Ctrl+E", "document-edit"),
            command("mnudelete", "mnuEdit", "Delete Appointment", "Ctrl+D", "edit-delete"),
            dash("mnudash1", "mnuEdit"),
            command("mnuFind", "mnuEdit", "Find", "Ctrl+F", "edit-find"),

            menu("mnuOpts", "", "Options"),
            check("mnuTips", "mnuOpts", "Tooltips", true, "Ctrl+T"),
            check("mnuShowTimes", "mnuOpts", "Show Times in appointment text", false, "Ctrl+S"),
            check("mnuStat", "mnuOpts", "Show status bar", true),
            dash("mnuOptsDash1", "mnuOpts"),
            check("mnuStart", "mnuOpts", "Start when computer starts", false),
            dash("mnuOptsDash2", "mnuOpts"),
            command("mnuRestore", "mnuOpts", "Restore defaults"),

            menu("mnuView", "", "View"),
            menu("mnuPlanners", "mnuView", "Planners"),
            command("mnuDplanner", "mnuPlanners", "Daily", "", "view-calendar-day"),
            command("mnuWplanner", "mnuPlanners", "Weekly", "", "view-calendar-week"),
            command("mnuMplanner", "mnuPlanners", "Monthly", "", "view-calendar-month"),
            dash("mnuViewDash1", "mnuView"),
            command("mnuTlist", "mnuView", "T-List (To do list)"),
            command("mnuTzone", "mnuView", "T-Zone (World Time zones)"),
            command("mnuRemList", "mnuView", "Reminders"),

            menu("mnuCustom", "", "Customize"),
            menu("mnuColor", "mnuCustom", "Color"),
            menu("mnuBackc", "mnuColor", "Appointment Background (applies to all appts)"),
            check("mnuColorY", "mnuBackc", "Use Default Yellow", true),
            check("mnuNoColor", "mnuBackc", "Transparent", false),
            check("mnuColorSelect", "mnuBackc", "Select Color", false),
            command("mnuFonts", "mnuCustom", "Fonts"),

            // Also the pop-up of imgSkins.
            menu("mnuThemes", "", "Skins"),
        };
        for (const SkinMenuItem& s : skin_menu()) {
            MenuEntry e;
            e.key = s.name;
            e.parent = s.parent;
            e.caption = s.caption;
            e.kind = Kind::Menu;
            if (!s.skin_key.isEmpty()) {
                e.kind = Kind::Command;
                e.checkable = true;
            }
            e.visible = s.visible;
            e.enabled = s.enabled;
            m.push_back(e);
        }
        const std::vector<MenuEntry> rest{
            menu("mnuHelp", "", "Help"),
            command("mnuHelpabout", "mnuHelp", "About", "", "help-about"),
            command("mnuContents", "mnuHelp", "Contents", "", "help-contents"),

            entry("mnuspacer1", "", "", Kind::Spacer),
            command("mnuHide", "", "Hide"),
            // A reminder of work never done: nobody can reach it.
            hidden(command("mnuRem", "", "Reminders"), false),

            // The tray icon's pop-up, the only way to the tools while hidden.
            hidden(menu("sysmenu", "", "SysMenu"), true),
            command("sysAbout", "sysmenu", "About", "", "help-about"),
            command("sysCalender", "sysmenu", "Calendar", "", "x-office-calendar"),
            dash("sysdash1", "sysmenu"),
            command("sysRem", "sysmenu", "Reminders"),
            command("sysTlist", "sysmenu", "T-List   (To Do list)"),
            command("sysTzone", "sysmenu", "T-Zone   (Time Zones)"),
            command("sysSearch", "sysmenu", "Search", "", "edit-find"),
            dash("sysdash2", "sysmenu"),
            command("sysmnuRestore", "sysmenu", "Restore defaults"),
            dash("sysdash3", "sysmenu"),
            command("sysHelp", "sysmenu", "Help", "", "help-contents"),
            dash("sysdash4", "sysmenu"),
            command("sysExit", "sysmenu", "Exit", "", "application-exit"),
        };
        m.insert(m.end(), rest.begin(), rest.end());
        return m;
    }();
    return entries;
}

} // namespace orva
