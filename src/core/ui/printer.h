#pragma once

#include "core/modal.h"

class QPrinter;

namespace orva {

// A print dialog's choice and the printer it describes, both ways: the dialog
// reads its choice back from the printer, a printing routine sets up its
// printer from the choice. The printer's own copy count is always one; the
// routine prints `copies` jobs itself.
void apply_setup(QPrinter& printer, const PrintSetup& setup);
PrintSetup setup_of(const QPrinter& printer);

} // namespace orva
