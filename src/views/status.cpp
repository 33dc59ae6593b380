#include "views/status.h"
