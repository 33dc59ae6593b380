#pragma once

#include <QByteArrayView>

namespace orva::fuzz {

// Between the appointment member and the reminder member of one input of the
// member-lines target. Never part of a line the program writes.
inline constexpr QByteArrayView member_split = "\n=== r.rmd ===\n";

} // namespace orva::fuzz
