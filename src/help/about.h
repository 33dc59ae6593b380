#pragma once

#include <QString>

namespace orva {

// What frmAbout shows, from the project's name and version as the build
// states them once.
struct AboutText {
    QString title;   // "About " + the program's name
    QString version; // "Version " + major "." minor "." revision
};

AboutText about_text();

} // namespace orva
