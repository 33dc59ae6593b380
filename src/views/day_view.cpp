#include "views/day_view.h"
