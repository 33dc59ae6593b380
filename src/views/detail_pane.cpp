#include "views/detail_pane.h"
