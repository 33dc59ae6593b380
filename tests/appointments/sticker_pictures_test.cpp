#include "../store/store_fixtures.h"
#include "appointments/stickers.h"
#include "appointments/ui/sticker_pictures.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QImage>
#include <gtest/gtest.h>

namespace orva {
namespace {

QStringList all_keys() {
    QStringList keys;
    for (const Sticker& st : sticker_table())
        keys << st.key;
    keys << QStringLiteral("DtlTime") << QStringLiteral("DtlReminder")
         << QStringLiteral("DtlCount");
    return keys;
}

struct Coverage {
    int opaque = 0;      // pixels with any alpha
    int transparent = 0; // pixels with none
    int coloured = 0;    // opaque pixels that are not a shade of grey
};

Coverage coverage(const QPixmap& pm) {
    Coverage c;
    const QImage img = pm.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x) {
            const QRgb p = img.pixel(x, y);
            if (qAlpha(p) == 0) {
                ++c.transparent;
                continue;
            }
            ++c.opaque;
            if (std::max({qRed(p), qGreen(p), qBlue(p)}) -
                    std::min({qRed(p), qGreen(p), qBlue(p)}) >
                40)
                ++c.coloured;
        }
    return c;
}

TEST(StickerPictures, ColourEmojiFontIsInstalled) {
    EXPECT_TRUE(QFontDatabase::families().contains(QStringLiteral("Noto Color Emoji")));
}

// A missing glyph would still draw a box with visible pixels, so the font is
// asked for every character that is not a presentation selector.
TEST(StickerPictures, EveryPictureIsAGlyphOfTheEmojiFont) {
    const QFontMetrics fm(QFont(QStringLiteral("Noto Color Emoji")));
    for (const QString& key : all_keys()) {
        for (char32_t ch : picture_emoji(key).toUcs4()) {
            if (ch == 0xFE0F) continue;
            EXPECT_TRUE(fm.inFontUcs4(ch))
                << key.toStdString() << " U+" << std::hex << unsigned(ch);
        }
    }
}

TEST(StickerPictures, EveryKeyDrawsAVisiblePictureInATransparentSquare) {
    int coloured = 0;
    for (const QString& key : all_keys()) {
        const QPixmap pm = sticker_picture(key, 24);
        ASSERT_FALSE(pm.isNull()) << key.toStdString();
        EXPECT_EQ(pm.size(), QSize(24, 24)) << key.toStdString();
        const Coverage c = coverage(pm);
        EXPECT_GT(c.opaque, 24 * 24 / 8) << key.toStdString();
        EXPECT_GT(c.transparent, 0) << key.toStdString();
        coloured += c.coloured > 0;
    }
    // A few pictures (headphones, a football, cutlery) are grey by design; a
    // sheet of grey ones would mean the colour font was not used at all.
    EXPECT_GT(coloured, 66);
}

TEST(StickerPictures, PictureFitsInsideTheSquare) {
    // Wide glyphs must be shrunk, not clipped: the outer ring stays mostly clear.
    const QImage img = sticker_picture(QStringLiteral("USA Flag"), 32).toImage();
    int edge = 0;
    for (int i = 0; i < 32; ++i) {
        edge += qAlpha(img.pixel(i, 0)) > 0;
        edge += qAlpha(img.pixel(i, 31)) > 0;
        edge += qAlpha(img.pixel(0, i)) > 0;
        edge += qAlpha(img.pixel(31, i)) > 0;
    }
    EXPECT_LT(edge, 32);
}

// The part of a picture that is drawn on: its opaque pixels' bounding box.
QRect drawn_box(const QPixmap& pm) {
    const QImage img = pm.toImage().convertToFormat(QImage::Format_ARGB32);
    QRect box;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            if (qAlpha(img.pixel(x, y)) > 0) box |= QRect(x, y, 1, 1);
    return box;
}

TEST(StickerPictures, PictureFillsItsSquareButForAPixelAllRound) {
    for (const QString& key : all_keys()) {
        for (int px : {17, 24, 53}) {
            const QRect box = drawn_box(sticker_picture(key, px));
            EXPECT_EQ(std::max(box.width(), box.height()), px - 2) << key.toStdString() << px;
            EXPECT_GE(box.left(), 1) << key.toStdString() << px;
            EXPECT_GE(box.top(), 1) << key.toStdString() << px;
            EXPECT_LE(box.right(), px - 2) << key.toStdString() << px;
            EXPECT_LE(box.bottom(), px - 2) << key.toStdString() << px;
        }
    }
}

TEST(StickerPictures, UnknownKeyGivesNoPicture) {
    EXPECT_TRUE(sticker_picture(QStringLiteral("Meeting"), 24).isNull());
    EXPECT_TRUE(sticker_picture(QStringLiteral("0"), 24).isNull());
    EXPECT_TRUE(sticker_picture(QString(), 24).isNull());
    EXPECT_TRUE(sticker_picture(QStringLiteral("Car"), 0).isNull());
    EXPECT_TRUE(sticker_icon(QStringLiteral("Meeting")).isNull());
}

TEST(StickerPictures, PaddedKeyDrawsTheSamePicture) {
    const QImage plain = sticker_picture(QStringLiteral("Car"), 20).toImage();
    const QImage padded = sticker_picture(QStringLiteral("Car            "), 20).toImage();
    EXPECT_EQ(plain, padded);
}

TEST(StickerPictures, DifferentStickersLookDifferent) {
    EXPECT_NE(sticker_picture(QStringLiteral("Newmoon"), 24).toImage(),
              sticker_picture(QStringLiteral("Fullmoon"), 24).toImage());
    EXPECT_NE(sticker_picture(QStringLiteral("Alarm"), 24).toImage(),
              sticker_picture(QStringLiteral("Alarmclock"), 24).toImage());
}

TEST(StickerPictures, IconOffersSmallAndLargeSizes) {
    const QIcon icon = sticker_icon(QStringLiteral("Pumpkin"));
    ASSERT_FALSE(icon.isNull());
    EXPECT_EQ(icon.pixmap(16, 16).size(), QSize(16, 16));
    EXPECT_GT(coverage(icon.pixmap(32, 32)).coloured, 0);
}

TEST(StickerPictures, PlannerProviderDrawsStickerKeysOnly) {
    const PictureProvider provide = planner_pictures();
    const QPixmap pm = provide(QStringLiteral("Pumpkin        "), 18);
    ASSERT_FALSE(pm.isNull());
    EXPECT_EQ(pm.size(), QSize(18, 18));
    EXPECT_TRUE(provide(QStringLiteral("Meeting"), 18).isNull());
}

TEST(StickerPictures, PlannerPicturesAreRingedDarkSoTheyReadOnYellow) {
    const PictureProvider provide = planner_pictures();
    for (const QString& key : all_keys()) {
        const QImage plain =
            sticker_picture(key, 18).toImage().convertToFormat(QImage::Format_ARGB32);
        const QImage ringed = provide(key, 18).toImage().convertToFormat(QImage::Format_ARGB32);
        ASSERT_EQ(ringed.size(), QSize(18, 18)) << key.toStdString();
        int rim = 0;
        const auto solid = [&](int x, int y) {
            return x >= 0 && y >= 0 && x < 18 && y < 18 && qAlpha(plain.pixel(x, y)) >= 128;
        };
        for (int y = 0; y < 18; ++y)
            for (int x = 0; x < 18; ++x) {
                if (qAlpha(plain.pixel(x, y)) >= 128) {
                    EXPECT_EQ(ringed.pixel(x, y), plain.pixel(x, y)) << key.toStdString();
                    continue;
                }
                if (qAlpha(plain.pixel(x, y)) > 0) continue; // the glyph's soft edge over it
                bool beside = false;
                for (int dy = -1; dy <= 1; ++dy)
                    for (int dx = -1; dx <= 1; ++dx)
                        beside = beside || solid(x + dx, y + dy);
                if (!beside) continue;
                // Outside the picture, next to it: dark and half opaque at least.
                const QColor c = QColor::fromRgba(ringed.pixel(x, y));
                EXPECT_GE(c.alpha(), 128) << key.toStdString() << " " << x << "," << y;
                EXPECT_LT(c.lightness(), 128) << key.toStdString() << " " << x << "," << y;
                ++rim;
            }
        EXPECT_GT(rim, 4) << key.toStdString();
    }
}

} // namespace
} // namespace orva
