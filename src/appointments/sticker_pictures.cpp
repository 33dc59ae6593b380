#include "appointments/sticker_pictures.h"
