#pragma once

#include <QString>
#include <utility>
#include <vector>

namespace orva {

// Which help topic explains what. A topic is named as the help index names
// it ("topics/find.html").

// Every command of the main window by its program name: the entries of the
// menu bar and its menus, the tool pictures, the detail pane's pictures and
// the entries of the tray menu. Names the window does not have (yet) may be
// listed: a command gets its topic before it gets its entry.
const std::vector<std::pair<QString, QString>>& command_topics();

// Every form by its name ("frmSearch").
const std::vector<std::pair<QString, QString>>& form_topics();

// The topic of a command or form; empty when the name has none.
QString topic_of_command(const QString& name);
QString topic_of_form(const QString& name);

} // namespace orva
