#pragma once

#include <QString>

namespace orva {

// What a caller hands the help viewer: the topic to open with, as a file of
// the help index ("topics/find.html"). The viewer takes it when it opens and
// empties it; empty opens the first topic.
struct HelpState {
    QString help_topic;
};

} // namespace orva
