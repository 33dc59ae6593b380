#include "appointments/frmNotes.h"
