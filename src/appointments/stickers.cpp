#include "appointments/stickers.h"
