#include "appointments/quick_add.h"
