#include "shell/tool_strip.h"

namespace orva {

const std::vector<ToolPicture>& tool_pictures() {
    static const std::vector<ToolPicture> tools = [] {
        const auto tool = [](const char* key, const char* label, const char* caption,
                             const char* tip, const char* icon, const char* emoji,
                             bool gap = false) {
            return ToolPicture{QString::fromLatin1(key),
                               QString::fromLatin1(label),
                               QString::fromLatin1(caption),
                               QString::fromLatin1(tip),
                               QString::fromLatin1(icon),
                               QString::fromUtf8(emoji),
                               gap};
        };
        // "montly" is the tool-tip as the program always had it, and Image3
        // has none.
        return std::vector<ToolPicture>{
            tool("imageDay", "Label15", "Day", "Daily planner", "view-calendar-day", "\U0001F4C5"),
            tool("imageWeek", "Label16", "Wk", "weekly planner", "view-calendar-week",
                 "\U0001F5D3\uFE0F"),
            tool("imageMonth", "Label17", "Mth", "montly calendar", "view-calendar-month",
                 "\U0001F4C6"),
            tool("imageReminder", "Label3", "Add", "Add an appointment", "appointment-new",
                 "\U0001F195"),
            tool("imageClock", "Label2", "Delete", "Delete Appointment", "edit-delete",
                 "\U0001F5D1\uFE0F"),
            tool("imageFind", "Label13", "Find", "Find appointments", "edit-find", "\U0001F50D"),
            tool("imagePrint", "Label7", "Print", "Print", "document-print", "\U0001F5A8\uFE0F"),
            tool("ImageArrow0", "Label4", "Prior", "Prior Day", "go-previous", "\u25C0\uFE0F",
                 true),
            tool("ImageArrow1", "Label5", "Next", "Next day", "go-next", "\u25B6\uFE0F"),
            tool("imgRem", "Label18", "Reminders", "List of reminders", "appointment-soon",
                 "\u23F0", true),
            tool("imgSkins", "Label11", "Skins", "Calendar skins", "preferences-desktop-theme",
                 "\U0001F3A8", true),
            tool("imgTzone", "Label12", "T- Zone", "Time Zones", "preferences-system-time",
                 "\U0001F30D"),
            tool("imgTlist", "Label10", "T- List", "To Do list", "view-task", "\U0001F4DD"),
            tool("Image3", "Label14", "Help", "", "help-contents", "\u2753"),
        };
    }();
    return tools;
}

QString label_of_tool(const QString& picture) {
    for (const ToolPicture& t : tool_pictures())
        if (t.key == picture) return t.label;
    return {};
}

bool tool_hover(PlannerState& view, const QString& picture) {
    const QString label = label_of_tool(picture);
    if (label.isEmpty()) return false;
    return view.tools_lit.insert(label).second;
}

bool tool_hover_off(PlannerState& view) {
    if (view.tools_lit.empty()) return false;
    for (const ToolPicture& t : tool_pictures())
        if (view.tools_lit.count(t.label)) view.tools_pressed.erase(t.key);
    view.tools_lit.clear();
    return true;
}

bool tool_press(PlannerState& view, const QString& picture, bool down) {
    if (down) return view.tools_pressed.insert(picture).second;
    return view.tools_pressed.erase(picture) > 0;
}

} // namespace orva
