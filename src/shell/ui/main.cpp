#include "appearance/ui/frmFonts.h"
#include "appointments/ui/frmAppt1.h"
#include "appointments/ui/frmNotes.h"
#include "appointments/ui/frmOccurs.h"
#include "appointments/ui/frmQuick.h"
#include "core/app_paths.h"
#include "core/event_loop.h"
#include "core/ui/dbus_notifier.h"
#include "core/ui/qt_modal.h"
#include "core/ui/qt_sound.h"
#include "help/ui/frmAbout.h"
#include "help/ui/frmHelpIdx.h"
#include "reminders/ui/frmAnimate.h"
#include "reminders/ui/frmRem1.h"
#include "reminders/ui/frmRemList.h"
#include "reminders/ui/frmRemnote.h"
#include "search/ui/frmSearch.h"
#include "shell/single_instance.h"
#include "shell/ui/frmCal.h"
#include "tlist/ui/frmToDo.h"
#include "tzone/ui/frmTzone.h"

#include <QApplication>
#include <QElapsedTimer>

int main(int argc, char** argv) {
    orva::prefer_ffmpeg_backend();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("orvacal"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orva Calendar"));
    QGuiApplication::setDesktopFileName(QStringLiteral("orvacal"));
    // Hidden in the tray, the window is closed in Qt's eyes; a dialog opened
    // from the tray's menu must not end the program when it closes. Leaving
    // goes through confirm_exit alone.
    QApplication::setQuitOnLastWindowClosed(false);

    orva::QtModal modal;
    orva::install_modal(&modal);
    orva::DBusNotifier desktop;
    orva::install_notifier(&desktop);
    orva::QtSoundDevice speakers;
    orva::install_sound(&speakers);

    // Long loops yield once per step; a few times a second is enough to keep
    // the window alive without slowing a large load.
    QElapsedTimer since_yield;
    since_yield.start();
    orva::install_yield_hook([&since_yield] {
        if (since_yield.elapsed() < 40) return;
        since_yield.restart();
        QCoreApplication::processEvents();
    });

    orva::AppState state;
    state.progress = [] { orva::yield_events(); };
    state.app_path = orva::app_folder();
    orva::install_shipped_data(state.app_path);
    orva::SingleInstance instance(state.app_path);

    orva::frmCal window(state);
    modal.set_parent(&window);
    orva::register_frmQuick(modal, state);
    orva::register_frmNotes(modal, state);
    orva::register_frmAppt1(modal, state);
    orva::register_frmOccurs(modal, state);
    orva::register_frmRem1(modal, state);
    orva::register_frmRemnote(modal, state);
    orva::register_frmAnimate(modal, state);
    orva::register_frmToDo(modal, state);
    orva::register_frmTzone(modal, state);
    orva::register_frmSearch(modal, state);
    orva::register_frmRemList(modal, state);
    orva::register_frmFonts(modal, state);
    orva::register_frmHelpIdx(modal, state);
    orva::register_frmAbout(modal);
    if (!window.start(instance)) return 0;
    return window.ended() ? 0 : app.exec();
}
