#pragma once

namespace orva::err {

// Error numbers the grid layer and the store leave behind. Callers look at
// them only where a routine says so; 53 is the ordinary sign of a missing file
// or member.
constexpr int none = 0;
constexpr int no_memory = 7;
constexpr int bad_name = 52; // no file name at all
constexpr int not_found = 53;
constexpr int io = 57;             // device I/O error
constexpr int disk_full = 61;      // no room left on the device
constexpr int denied = 70;         // read-only, or another process holds the write lock
constexpr int bad_file = 75;       // present but unreadable
constexpr int path_not_found = 76; // a folder on the way is missing or is a file
constexpr int not_calendar = 321;  // a file, but not a calendar: foreign, empty or not SQLite
constexpr int bad_value = 380;     // a property value the grid cannot take
constexpr int subscript = 381;     // row or column outside the grid

} // namespace orva::err
