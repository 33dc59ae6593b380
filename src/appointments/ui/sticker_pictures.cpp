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
namespace {

// Half-dark: enough to outline a light picture on yellow, too little to
// blacken a dark one.
constexpr QRgb rim_colour = qRgba(0, 0, 0, 140);

// Rings the picture's outline with a thin dark line in the margin it leaves:
// a white tooth or a gold cup would otherwise melt into a yellow block.
QPixmap with_rim(const QPixmap& pm) {
    const QImage src = pm.toImage().convertToFormat(QImage::Format_ARGB32);
    QImage out(src.size(), QImage::Format_ARGB32);
    out.fill(Qt::transparent);
    const auto solid = [&](int x, int y) {
        return x >= 0 && y >= 0 && x < src.width() && y < src.height() &&
               qAlpha(src.pixel(x, y)) >= 128;
    };
    for (int y = 0; y < src.height(); ++y)
        for (int x = 0; x < src.width(); ++x) {
            if (solid(x, y)) continue;
            bool edge = false;
            for (int dy = -1; dy <= 1 && !edge; ++dy)
                for (int dx = -1; dx <= 1 && !edge; ++dx)
                    edge = solid(x + dx, y + dy);
            if (edge) out.setPixel(x, y, rim_colour);
        }
    QPainter p(&out);
    p.drawImage(0, 0, src);
    p.end();
    return QPixmap::fromImage(out);
}

} // namespace

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
    return [](const QString& key, int px) {
        static std::map<std::pair<QString, int>, QPixmap> cache;
        auto k = std::make_pair(key.trimmed(), px);
        if (auto it = cache.find(k); it != cache.end()) return it->second;
        const QPixmap plain = sticker_picture(key, px);
        QPixmap pm = plain.isNull() ? plain : with_rim(plain);
        cache.emplace(std::move(k), pm);
        return pm;
    };
}

} // namespace orva
