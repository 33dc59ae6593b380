#include "core/ui/tool_icons.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <map>
#include <utility>

namespace orva {
namespace {

constexpr int strike = 109; // pixel size of the colour font's own bitmaps

// The glyph once at the font's own size, cut to the pixels it colours: its
// bitmap has a margin of its own and is wider than its em, so a glyph drawn
// at the square's size would leave it a quarter empty or clip its sides.
QImage glyph(const QString& emoji) {
    QImage img(2 * strike, 2 * strike, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    {
        QPainter p(&img);
        QFont f(QStringLiteral("Noto Color Emoji"));
        f.setPixelSize(strike);
        p.setFont(f);
        p.drawText(img.rect(), Qt::AlignCenter, emoji);
    }
    return opaque_part(img, 1);
}

} // namespace

QImage opaque_part(const QImage& img, int min_alpha) {
    int left = img.width(), top = img.height(), right = -1, bottom = -1;
    for (int y = 0; y < img.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(img.constScanLine(y));
        for (int x = 0; x < img.width(); ++x) {
            if (qAlpha(line[x]) < min_alpha) continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
    }
    if (right < 0) return {};
    return img.copy(QRect(QPoint(left, top), QPoint(right, bottom)));
}

namespace {

// The glyph fills the square but for one pixel all round, so neighbouring
// pictures and cell lines never touch it; wide glyphs keep their shape.
QPixmap draw(const QString& emoji, int px) {
    QPixmap pm(px, px);
    pm.fill(Qt::transparent);
    const QImage g = glyph(emoji);
    if (g.isNull()) return pm;
    const int room = std::max(1, px - 2);
    const QImage scaled = g.scaled(room, room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter p(&pm);
    p.drawImage((px - scaled.width()) / 2, (px - scaled.height()) / 2, scaled);
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
