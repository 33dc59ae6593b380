#include "shell/file_commands.h"

#include "core/clock.h"
#include "core/errors.h"
#include "core/logging.h"
#include "core/modal.h"
#include "store/calendar_file.h"

#include <QFile>
#include <QFileInfo>

namespace orva {

namespace {

QDate today() {
    return clock().today();
}

void call(const std::function<void()>& f) {
    if (f) f();
}

} // namespace

void new_calendar(Shared& s, const CalendarHooks& h) {
    const QString chosen = modal().save_file_dialog(QStringLiteral("cal Files (*.cal)|*.cal"));
    if (chosen.isEmpty()) return;
    if (chosen.right(3).toLower() != QLatin1String("cal")) {
        modal().message(QStringLiteral("Only files with .CAL extension are allowed"),
                        MsgStyle::Information);
        return;
    }

    QDate shown = h.shown_month ? h.shown_month() : s.cur_date;
    if (!shown.isValid()) shown = today();
    const QString yymm = QStringLiteral("%1").arg((shown.year() % 100) * 100 + shown.month(), 4, 10,
                                                  QLatin1Char('0'));
    const QString base = QFileInfo(chosen.left(chosen.size() - 4)).fileName();
    const QString stub = base + yymm + QStringLiteral(".cal");

    s.archive.clear_error();
    QByteArray ignored;
    if (s.archive.get(chosen, stub, ignored) == 0) {
        modal().message(QStringLiteral("Cannot create new Calendar  ' ") + chosen +
                            QStringLiteral("  '  already exists! "),
                        MsgStyle::Warning);
        return;
    }

    const QString old_path = s.cal_path;
    const QDate old_date = s.cur_date;
    const bool old_read_only = s.cal_read_only;
    // The stub and the options member the rebuild saves land together, or
    // neither does and no file is left where there was none.
    Archive::Command command(s.archive, chosen);
    int e = s.archive.put(chosen, stub, QByteArray());
    if (e == err::none) {
        if (h.enable_delete) h.enable_delete(true);
        s.cal_path = chosen;
        s.cal_read_only = false;
        s.cal_refused = false;
        s.cur_date = today();
        call(h.reset_counters);
        s.clear_days();
        s.clear_appts();
        call(h.rebuild_view);
    }
    const int committed = command.finish();
    if (e == err::none) e = committed;
    if (e == err::none) return;

    modal().message(couldnt_create_text(chosen) + QString::number(e), MsgStyle::Critical);
    if (s.cal_path != chosen) return;
    // Back to the calendar that was open, as the file never changed.
    s.cal_path = old_path;
    s.cur_date = old_date;
    s.cal_read_only = old_read_only;
    if (h.enable_delete) h.enable_delete(!old_path.isEmpty());
    call(h.reset_counters);
    (void)load_appts(s, s.cur_date, s.cal_path, 0);
    (void)load_rmdrs(s, s.cur_date, s.cal_path, 0);
    call(h.rebuild_view);
}

void open_calendar(Shared& s, const CalendarHooks& h) {
    const QString chosen = modal().open_file_dialog(QStringLiteral("cal Files (*.CAL)|*.cal"));
    if (chosen.isEmpty()) return;
    if (chosen == s.cal_path) {
        modal().message(QStringLiteral("Calendar  already open "), MsgStyle::Critical);
        return;
    }
    if (!QFileInfo(chosen).isFile()) {
        modal().message(chosen + u'\n' +
                            QStringLiteral(" doesn't exist.  Check specified path and name."),
                        MsgStyle::Plain);
        return;
    }

    if (const int e = s.archive.check_calendar(chosen)) {
        // The calendar that was open stays open; the chosen file is not
        // touched.
        modal().message(refused_text(chosen, e), MsgStyle::Critical);
        return;
    }

    s.cal_path = chosen;
    s.cal_refused = false;
    s.cur_date = today();
    s.cal_read_only = s.archive.check_writable(s.cal_path) != err::none;
    call(h.load_options);
    call(h.reset_counters);
    s.clear_days();
    s.clear_appts();
    if (h.enable_delete) h.enable_delete(true);
    // A month that cannot be read shows empty; the log tells which.
    (void)load_appts(s, s.cur_date, s.cal_path, 0);
    (void)load_rmdrs(s, s.cur_date, s.cal_path, 0);
    call(h.rebuild_view);
    if (s.cal_read_only) modal().message(cannot_write_text(s.cal_path), MsgStyle::Warning);
    report_store_notices(s);
}

void delete_calendar(Shared& s, const CalendarHooks& h) {
    if (s.cal_path.isEmpty()) {
        modal().message(QStringLiteral("You must Open a Calendar before you can delete"),
                        MsgStyle::Warning);
        return;
    }
    if (modal().ask_yes_no(QStringLiteral("This will delete the current Calendar - ") + s.cal_path +
                               QStringLiteral(".  OK?"),
                           MsgStyle::Question) != Answer::Yes)
        return;

    // Closing folds the write-ahead log back into the file and removes it.
    s.archive.close(s.cal_path);
    QFile file(s.cal_path);
    // Into the desktop's trash, from where the user can still bring it back;
    // erased only where there is no trash.
    const QFileInfo info(s.cal_path);
    if (info.exists() && (!info.isFile() || (!file.moveToTrash() && !file.remove()))) {
        qCWarning(lcStore) << "cannot delete" << s.cal_path << file.errorString();
        modal().message(couldnt_delete_calendar_text(s.cal_path), MsgStyle::Critical);
        return;
    }
    for (const char* suffix : {"-wal", "-shm"})
        QFile::remove(s.cal_path + QLatin1String(suffix));
    if (h.enable_delete) h.enable_delete(false);
    s.cur_date = today();
    s.clear_days();
    s.cal_path.clear();
    s.cal_read_only = false;
    call(h.reset_counters);
    s.clear_appts();
    s.appt_count = 0;
    s.appt_next = 0;
    call(h.rebuild_view);
}

QString cannot_write_text(const QString& cal_file) {
    return QStringLiteral("The Calendar ") + cal_file +
           QStringLiteral(" cannot be written.  Changes you make will not be saved.");
}

QString couldnt_create_text(const QString& cal_file) {
    return QStringLiteral("Couldn't create new Calendar  ' ") + cal_file +
           QStringLiteral("  '.  Nothing was saved.  Error Number : ");
}

QString couldnt_delete_calendar_text(const QString& cal_file) {
    return QStringLiteral("Couldn't delete the Calendar - ") + cal_file;
}

QString refused_text(const QString& cal_file, int error) {
    const QString what = error == err::bad_file ? QStringLiteral(" is damaged and was not opened.")
                         : error == err::not_calendar
                             ? QStringLiteral(" is not an Orva Calendar and was not opened.")
                             : QStringLiteral(" cannot be read and was not opened.");
    return QStringLiteral("The file ") + cal_file + what +
           QStringLiteral("  It has not been changed.  Open another Calendar or make a new one "
                          "from the File menu.");
}

QString folder_unwritable_text(const QString& folder) {
    return QStringLiteral("The folder ") + folder +
           QStringLiteral(" cannot be written, so Orva Calendar cannot keep your Calendar "
                          "there.  Check the folder's permissions and the free space on its disk.");
}

QString damaged_member_text(const QString& cal_file, const QString& member) {
    return QStringLiteral("The Calendar ") + cal_file + QStringLiteral(" has a damaged part, ") +
           member +
           QStringLiteral(".  What could be read of it is shown; it is not written over until "
                          "you change that month.");
}

QString backup_failed_text(const QString& cal_file, int error) {
    return QStringLiteral("Today's backup copy of the Calendar ") + cal_file +
           QStringLiteral(" could not be made (Error Number : ") + QString::number(error) +
           QStringLiteral(").  Your change was saved.");
}

void report_store_notices(Shared& s) {
    for (const Archive::Notice& n : s.archive.take_notices()) {
        if (n.kind == Archive::Notice::damaged_member)
            modal().message(damaged_member_text(n.archive_file, n.member), MsgStyle::Warning);
        else
            modal().message(backup_failed_text(n.archive_file, n.error), MsgStyle::Warning);
    }
}

} // namespace orva
