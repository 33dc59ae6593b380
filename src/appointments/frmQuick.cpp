#include "appointments/frmQuick.h"
