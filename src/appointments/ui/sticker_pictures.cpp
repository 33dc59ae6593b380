#include "appointments/ui/sticker_pictures.h"

#include "appointments/stickers.h"
#include "core/ui/tool_icons.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <map>
#include <utility>

namespace orva {

QPixmap sticker_picture(const QString& key, int px) {
    return emoji_pixmap(picture_emoji(key), px);
}

QIcon sticker_icon(const QString& key) {
    if (picture_emoji(key).isEmpty()) return {};
    QIcon icon;
    for (int px : {16, 24, 32, 48})
        icon.addPixmap(sticker_picture(key, px));
    return icon;
}

PictureProvider planner_pictures() {
    return [](const QString& key, int px) { return sticker_picture(key, px); };
}

} // namespace orva
