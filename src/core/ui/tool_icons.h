#pragma once

#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QString>

namespace orva {

// An emoji drawn in colour into a transparent px x px square; null when the
// text is empty. Cached, so the planners can ask for every cell.
QPixmap emoji_pixmap(const QString& emoji, int px);

// The part of `img` (32-bit ARGB) whose pixels have at least `min_alpha`;
// null when none has.
QImage opaque_part(const QImage& img, int min_alpha);

// A tool picture: the desktop theme's icon of that freedesktop name when the
// theme has one, else our own drawn from the emoji.
QIcon tool_icon(const QString& theme_name, const QString& emoji);

} // namespace orva
