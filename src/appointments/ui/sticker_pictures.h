#pragma once

#include "grid/ui/grid_model.h"

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace orva {

// The picture of a sticker or detail-line key, drawn from its emoji in the
// colour emoji font, centred in a transparent px x px square. Trailing blanks
// of the key are cut, as the fields that carry keys are padded. A key with no
// picture (or a size below 1) gives a null pixmap. Pictures are cached by key
// and size for the life of the process.
QPixmap sticker_picture(const QString& key, int px);

// The same picture at the sizes lists and menus ask for; a null icon for a key
// with no picture.
QIcon sticker_icon(const QString& key);

// What the planner grids install with GridWidget::set_picture_provider: the
// sticker pictures, each ringed by a thin dark line so that it reads on the
// yellow of an appointment as well as on white. Cached like the pictures.
PictureProvider planner_pictures();

} // namespace orva
