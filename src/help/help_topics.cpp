#include "help/help_topics.h"

namespace orva {

namespace {

using TopicTable = std::vector<std::pair<QString, QString>>;

QString topic(const char* file) {
    return QStringLiteral("topics/") + QString::fromLatin1(file) + QStringLiteral(".html");
}

TopicTable make_table(std::initializer_list<std::pair<const char*, const char*>> rows) {
    TopicTable t;
    t.reserve(rows.size());
    for (const auto& [name, file] : rows)
        t.emplace_back(QString::fromLatin1(name), topic(file));
    return t;
}

QString find_in(const TopicTable& t, const QString& name) {
    for (const auto& [key, file] : t)
        if (key == name) return file;
    return {};
}

} // namespace

const std::vector<std::pair<QString, QString>>& command_topics() {
    static const TopicTable table = make_table({
        // File
        {"mnuFile", "calendar_files"},
        {"mnuOpen", "calendar_files"},
        {"mnuNew", "calendar_files"},
        {"mnuFileDelCal", "calendar_files"},
        {"mnuDelete", "calendar_files"},
        {"mnuFilePrint", "printing"},
        {"mnuExit", "exiting"},
        // Edit, also the planners' pop-up menu
        {"mnuEdit", "menus"},
        {"mnuadd", "add_appointment"},
        {"mnuCopy", "copy_appointment"},
        {"mnuEditA", "edit_appointment"},
        {"mnudelete", "delete_appointment"},
        {"mnuFind", "find"},
        // Options
        {"mnuOpts", "options"},
        {"mnuTips", "options"},
        {"mnuShowTimes", "options"},
        {"mnuStat", "status_bar"},
        {"mnuStart", "autostart"},
        {"mnuRestore", "options"},
        // View
        {"mnuView", "menus"},
        {"mnuPlanners", "menus"},
        {"mnuDplanner", "day_planner"},
        {"mnuWplanner", "week_planner"},
        {"mnuMplanner", "month_planner"},
        {"mnuTlist", "tlist"},
        {"mnuTzone", "tzone"},
        {"mnuRemList", "reminder_list"},
        // Customize
        {"mnuCustom", "colours_fonts"},
        {"mnuColor", "colours_fonts"},
        {"mnuBackc", "colours_fonts"},
        {"mnuColorY", "colours_fonts"},
        {"mnuNoColor", "colours_fonts"},
        {"mnuColorSelect", "colours_fonts"},
        {"mnuFonts", "colours_fonts"},
        // Skins
        {"mnuThemes", "skins"},
        {"blueIce", "skins"},
        {"mnuCamelion", "skins"},
        {"mnuForest", "skins"},
        {"mnuHoliday", "skins"},
        {"mnuEaster", "skins"},
        {"mnuChristmas", "skins"},
        {"mnuHallo", "skins"},
        {"mnuNewYear", "skins"},
        {"mnuStPat", "skins"},
        {"mnuSkinVal", "skins"},
        {"mnuThanks", "skins"},
        {"usapatriat", "skins"},
        {"mnuTrans", "skins"},
        {"mnuSunnyDays", "skins"},
        {"mnuStdWindows", "skins"},
        // Help
        {"mnuHelp", "help_viewer"},
        {"mnuHelpabout", "about"},
        {"mnuContents", "help_viewer"},
        // The rest of the bar
        {"mnuspacer1", "menus"},
        {"mnuHide", "tray"},
        {"mnuRem", "reminder_list"},
        {"sysmenu", "tray"},
        // Tool pictures
        {"imageDay", "day_planner"},
        {"imageWeek", "week_planner"},
        {"imageMonth", "month_planner"},
        {"imageReminder", "add_appointment"},
        {"imageClock", "delete_appointment"},
        {"imageFind", "find"},
        {"imagePrint", "printing"},
        {"ImageArrow", "navigator"},
        {"ImageArrow0", "navigator"},
        {"ImageArrow1", "navigator"},
        {"imgRem", "reminder_list"},
        {"imgSkins", "skins"},
        {"imgTzone", "tzone"},
        {"imgTlist", "tlist"},
        {"Image3", "help_viewer"},
        {"imgPriorMth", "navigator"},
        {"imgNextMth", "navigator"},
        // The detail pane's pictures
        {"imgDtlAppt", "detail_pane"},
        {"imgDtlNote", "notes"},
        {"imgDtlPrior", "detail_pane"},
        {"imgDtlNext", "detail_pane"},
        {"prtdtlImg", "printing"},
        // The tray menu
        {"sysAbout", "about"},
        {"sysCalender", "tray"},
        {"sysRem", "reminder_list"},
        {"sysTlist", "tlist"},
        {"sysTzone", "tzone"},
        {"sysSearch", "find"},
        {"sysmnuRestore", "options"},
        {"sysHelp", "help_viewer"},
        {"sysExit", "exiting"},
    });
    return table;
}

const std::vector<std::pair<QString, QString>>& form_topics() {
    static const TopicTable table = make_table({
        {"frmCal", "welcome"},
        {"frmAppt1", "add_appointment"},
        {"frmQuick", "quick_add"},
        {"frmNotes", "notes"},
        {"frmOccurs", "recurring"},
        {"frmRem1", "reminder_setup"},
        {"frmRemnote", "reminder_note"},
        {"frmReRmdr", "reminder_note"},
        {"frmAnimate", "reminder_note"},
        {"frmRemList", "reminder_list"},
        {"frmSearch", "find"},
        {"frmToDo", "tlist"},
        {"frmTzone", "tzone"},
        {"frmFonts", "colours_fonts"},
        {"frmHelpIdx", "help_viewer"},
        {"frmAbout", "about"},
    });
    return table;
}

QString topic_of_command(const QString& name) {
    return find_in(command_topics(), name);
}

QString topic_of_form(const QString& name) {
    return find_in(form_topics(), name);
}

} // namespace orva
