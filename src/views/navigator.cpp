#include "views/navigator.h"
