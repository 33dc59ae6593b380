#include "core/ui/tool_icons.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <map>
#include <utility>

namespace orva {
namespace {

QPixmap draw(const QString& emoji, int px) {
    QPixmap pm(px, px);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    QFont f(QStringLiteral("Noto Color Emoji"));
    // The font is a set of bitmaps whose glyphs are wider than their em: a
    // pixel size of the whole square would clip the sides.
    f.setPixelSize(std::max(1, px * 3 / 4));
    p.setFont(f);
    const QRectF box = QFontMetricsF(f).boundingRect(emoji);
    if (box.width() > px || box.height() > px) {
        const double k = std::min(px / box.width(), px / box.height());
        f.setPixelSize(std::max(1, int(f.pixelSize() * k)));
        p.setFont(f);
    }
    p.drawText(QRect(0, 0, px, px), Qt::AlignCenter, emoji);
    return pm;
}

} // namespace

QPixmap emoji_pixmap(const QString& emoji, int px) {
    if (emoji.isEmpty() || px < 1) return QPixmap();
    static std::map<std::pair<QString, int>, QPixmap> cache;
    auto k = std::make_pair(emoji, px);
    if (auto it = cache.find(k); it != cache.end()) return it->second;
    QPixmap pm = draw(emoji, px);
    cache.emplace(std::move(k), pm);
    return pm;
}

QIcon tool_icon(const QString& theme_name, const QString& emoji) {
    if (!theme_name.isEmpty() && QIcon::hasThemeIcon(theme_name))
        return QIcon::fromTheme(theme_name);
    QIcon icon;
    for (int px : {16, 24, 32, 48})
        icon.addPixmap(emoji_pixmap(emoji, px));
    return icon;
}

} // namespace orva
