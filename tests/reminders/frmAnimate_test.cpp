#include "../support/accessible.h"
#include "../support/recording_sound.h"
#include "../support/scripted_modal.h"
#include "core/ui/qt_modal.h"
#include "reminders/ui/frmAnimate.h"
#include "state/app_state.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>

namespace orva {
namespace {

using testing::RecordingSound;

struct FrmAnimateWindow : ::testing::Test {
    QTemporaryDir dir;
    AppState s;
    RecordingSound speakers;
    testing::SoundGuard sound_guard{&speakers};
    testing::ScriptedModal m;
    testing::ModalGuard modal_guard{&m};

    FrmAnimateWindow() {
        s.app_path = dir.path();
        s.anim_speed = 10;
    }
    static int px_x(int twips) {
        return qRound(twips * QGuiApplication::primaryScreen()->logicalDotsPerInchX() / 1440.0);
    }
    static int px_y(int twips) {
        return qRound(twips * QGuiApplication::primaryScreen()->logicalDotsPerInchY() / 1440.0);
    }
    template <class W> static W* child(QWidget& w, const char* name) {
        W* c = w.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(c, nullptr) << name;
        return c;
    }
    // Counts the times a window is shown.
    struct ShowCounter : QObject {
        int shows = 0;
        bool eventFilter(QObject*, QEvent* e) override {
            if (e->type() == QEvent::Show) ++shows;
            return false;
        }
    };
    // Runs `look` once the window shows, before its flight starts.
    static void when_shown(FrmAnimate& w, std::function<void()> look) {
        QTimer::singleShot(0, &w, std::move(look));
    }
};

TEST_F(FrmAnimateWindow, StaysOnTopWithoutAFrame) {
    s.msg_anim = QStringLiteral("2");
    FrmAnimate w(s);
    EXPECT_TRUE(w.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(w.windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(w.isModal());
}

TEST_F(FrmAnimateWindow, Is8445By1200TwipsOnTheScreensDpi) {
    s.msg_anim = QStringLiteral("3");
    FrmAnimate w(s);
    EXPECT_EQ(w.size(), QSize(px_x(8445), px_y(1200)));
    EXPECT_EQ(w.to_px_x(1440), qRound(QGuiApplication::primaryScreen()->logicalDotsPerInchX()));
}

TEST_F(FrmAnimateWindow, SitsAtTheCornerOfTheScreenWhileItFlies) {
    s.msg_anim = QStringLiteral("2");
    FrmAnimate w(s);
    w.move(200, 150);
    QPoint seen(-1, -1);
    bool visible = false;
    when_shown(w, [&] {
        seen = w.pos();
        visible = w.isVisible();
    });
    w.exec();
    EXPECT_TRUE(visible);
    EXPECT_EQ(seen, QPoint(0, 0));
}

TEST_F(FrmAnimateWindow, PlaneAloneAtHighSpeedFliesToItsEndAndTheWindowCloses) {
    s.msg_anim = QStringLiteral("3");
    FrmAnimate w(s);
    EXPECT_EQ(w.exec(), QDialog::Accepted);
    EXPECT_FALSE(w.isVisible());
    EXPECT_TRUE(w.flight().closed);
    EXPECT_FALSE(w.flight().Timer1_enabled);
    EXPECT_GE(w.flight().fly_x, w.flight().fly_end);
    EXPECT_EQ(speakers.calls,
              (QStringList{QStringLiteral("wav ") + dir.filePath(QStringLiteral("airp-tdc10.wav")),
                           QStringLiteral("stop")}));
    EXPECT_TRUE(m.shown.empty());
}

TEST_F(FrmAnimateWindow, ScreenWiderThanTheDesignKeepsTheSizeAndTheFlightEndsAtTheRightEdge) {
    ASSERT_GT(QGuiApplication::primaryScreen()->geometry().width(), px_x(8445));
    s.msg_anim = QStringLiteral("2");
    FrmAnimate w(s);
    w.exec();
    EXPECT_EQ(w.width(), px_x(8445));
    auto* plane = child<QLabel>(w, "Image1");
    ASSERT_NE(plane, nullptr);
    EXPECT_LE(plane->geometry().right(), w.width() - 1);
    EXPECT_GE(plane->geometry().right(), w.width() - 2);
}

TEST_F(FrmAnimateWindow, BannerTrailsThePlaneAtTheSameHeight) {
    s.msg_anim = QStringLiteral("2");
    s.anim_speed = 5;
    FrmAnimate w(s);
    w.exec();
    auto* plane = child<QLabel>(w, "Image1");
    auto* banner = child<QLabel>(w, "Imagesuffix");
    ASSERT_TRUE(plane && banner);
    EXPECT_EQ(banner->geometry().top(), plane->geometry().top());
    EXPECT_NEAR(banner->geometry().right() + 1, plane->geometry().left(), 1);
    EXPECT_FALSE(banner->pixmap().isNull());
}

TEST_F(FrmAnimateWindow, WithNoCaptureOfTheScreenItIsTranslucent) {
    install_screen_capture([](const QRect&) { return QPixmap(); });
    s.msg_anim = QStringLiteral("3");
    FrmAnimate w(s);
    w.exec();
    install_screen_capture(nullptr);
    EXPECT_FALSE(w.captured());
    EXPECT_TRUE(w.testAttribute(Qt::WA_TranslucentBackground));
    auto* backdrop = child<QLabel>(w, "Picture1");
    ASSERT_NE(backdrop, nullptr);
    EXPECT_TRUE(backdrop->pixmap().isNull());
}

TEST_F(FrmAnimateWindow, OffscreenThereIsNoScreenToCaptureSoItIsTranslucent) {
    if (QGuiApplication::platformName() != u"offscreen") GTEST_SKIP() << "a real screen";
    s.msg_anim = QStringLiteral("3");
    FrmAnimate w(s);
    w.exec();
    EXPECT_FALSE(w.captured());
    EXPECT_TRUE(w.testAttribute(Qt::WA_TranslucentBackground));
}

TEST_F(FrmAnimateWindow, OverAPictureOfTheScreenItShowsWhatLiesBeneath) {
    QRect asked;
    install_screen_capture([&asked](const QRect& area) {
        asked = area;
        QPixmap shot(area.size());
        shot.fill(QColor(200, 30, 30));
        return shot;
    });
    s.msg_anim = QStringLiteral("2");
    FrmAnimate w(s);
    w.move(300, 200);
    w.exec();
    install_screen_capture(nullptr);
    EXPECT_EQ(asked, QRect(0, 0, px_x(8445), px_y(1200)));
    EXPECT_TRUE(w.captured());
    EXPECT_FALSE(w.testAttribute(Qt::WA_TranslucentBackground));
    auto* backdrop = child<QLabel>(w, "Picture1");
    ASSERT_NE(backdrop, nullptr);
    EXPECT_EQ(backdrop->geometry(), w.rect());
    const QImage shot = backdrop->pixmap().toImage();
    ASSERT_FALSE(shot.isNull());
    EXPECT_EQ(QColor(shot.pixel(5, 5)), QColor(200, 30, 30));
}

TEST_F(FrmAnimateWindow, CaptureBlackAllOverCountsAsNone) {
    install_screen_capture([](const QRect& area) {
        QPixmap shot(area.size());
        shot.fill(Qt::black);
        return shot;
    });
    s.msg_anim = QStringLiteral("3");
    FrmAnimate w(s);
    w.exec();
    install_screen_capture(nullptr);
    EXPECT_FALSE(w.captured());
    EXPECT_TRUE(w.testAttribute(Qt::WA_TranslucentBackground));
}

TEST_F(FrmAnimateWindow, MessengerOneClosesWithoutEverShowing) {
    for (const QString& messenger : {QStringLiteral("1"), QStringLiteral("Jet Set")}) {
        s.msg_anim = messenger;
        FrmAnimate w(s);
        EXPECT_FALSE(w.flies());
        ShowCounter counter;
        w.installEventFilter(&counter);
        w.exec();
        QCoreApplication::processEvents();
        EXPECT_EQ(counter.shows, 0) << messenger.toStdString();
        EXPECT_FALSE(w.isVisible());
        EXPECT_TRUE(w.flight().closed);
        EXPECT_FALSE(w.flight().Image1.visible);
    }
}

TEST_F(FrmAnimateWindow, ControlsCarryTheirProgramNames) {
    s.msg_anim = QStringLiteral("2");
    FrmAnimate w(s);
    EXPECT_EQ(w.objectName(), QStringLiteral("frmAnimate"));
    EXPECT_EQ(testing::spoken_name(&w), QStringLiteral("Messenger"));
    auto* plane = child<QLabel>(w, "Image1");
    auto* banner = child<QLabel>(w, "Imagesuffix");
    auto* backdrop = child<QLabel>(w, "Picture1");
    ASSERT_TRUE(plane && banner && backdrop);
    EXPECT_EQ(testing::spoken_name(plane), QStringLiteral("Plane"));
    EXPECT_EQ(testing::spoken_description(plane), QStringLiteral("Image1"));
    EXPECT_EQ(testing::spoken_name(banner), QStringLiteral("Banner"));
    EXPECT_EQ(testing::spoken_description(backdrop), QStringLiteral("Picture1"));
    auto* timer = w.findChild<QTimer*>(QStringLiteral("Timer1"));
    ASSERT_NE(timer, nullptr);
    EXPECT_EQ(timer->interval(), 5);
}

TEST_F(FrmAnimateWindow, OpensThroughTheSeamByItsName) {
    QtModal modal;
    register_frmAnimate(modal, s);
    s.msg_anim = QStringLiteral("3");
    modal.open_form(QStringLiteral("frmAnimate"));
    EXPECT_EQ(speakers.calls.size(), 2);
    EXPECT_EQ(speakers.calls.value(1), QStringLiteral("stop"));
}

TEST(MessengerPictures, EachOfTheFourIsDrawnAndTheBannerFramesDiffer) {
    QImage frames[5];
    for (int i = 1; i <= 4; ++i) {
        const QPixmap pm = messenger_picture(i, 32);
        ASSERT_FALSE(pm.isNull()) << i;
        EXPECT_EQ(pm.size(), QSize(32, 32));
        frames[i] = pm.toImage();
        int solid = 0;
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 32; ++x)
                solid += qAlpha(frames[i].pixel(x, y)) > 128;
        EXPECT_GT(solid, 100) << i;
    }
    EXPECT_NE(frames[2], frames[3]);
    EXPECT_TRUE(messenger_picture(0, 32).isNull());
    EXPECT_TRUE(messenger_picture(5, 32).isNull());
    EXPECT_TRUE(messenger_picture(1, 0).isNull());
}

TEST(MessengerPictures, TowingPlaneHasItsRopeAtTheLeftEdgeHalfWayUp) {
    const QImage img = messenger_picture(plane_towing, 48).toImage();
    EXPECT_GT(qAlpha(img.pixel(0, 24)), 128);
    EXPECT_EQ(qAlpha(img.pixel(0, 4)), 0);
}

TEST(MessengerPictures, DrawnSharpForScreensWithMorePixels) {
    const QPixmap pm = messenger_picture(plane_alone, 32, 2.0);
    EXPECT_EQ(pm.size(), QSize(64, 64));
    EXPECT_EQ(pm.deviceIndependentSize(), QSizeF(32, 32));
}

} // namespace
} // namespace orva
