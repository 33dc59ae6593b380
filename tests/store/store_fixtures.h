#pragma once

#include "core/clock.h"
#include "store/calendar_file.h"
#include "store/shared.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtGlobal>
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <sqlite3.h>

#include <ostream>

// Lets a failing EXPECT_EQ on texts show the texts.
inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}

namespace orva::testing {

// Texts in several scripts, each a few bytes per character in UTF-8: accented
// Latin, Greek, Cyrillic, Chinese and an emoji outside the 16-bit range.
inline QStringList texts_in_many_scripts() {
    return {QString::fromUtf8("Café crème"), QString::fromUtf8("Zoë"),
            QString::fromUtf8("Συνάντηση"),  QString::fromUtf8("Встреча"),
            QString::fromUtf8("会议"),       QString::fromUtf8("Party 🎉")};
}

// A file's bytes as they stand on the disk; empty when it cannot be read.
inline QByteArray file_bytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Runs SQL statements on a connection of its own, behind the store's back:
// how tests make foreign files and damage calendars.
inline void run_sql(const QString& file, const char* statements) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(file).constData(), &db), SQLITE_OK);
    char* msg = nullptr;
    EXPECT_EQ(sqlite3_exec(db, statements, nullptr, nullptr, &msg), SQLITE_OK) << (msg ? msg : "");
    sqlite3_free(msg);
    sqlite3_close(db);
}

// An appointment occurrence on "mmddyyyy" with the given key and start time.
inline appt_rec make_appt(const QString& date, const QString& id, const QString& start = "09:00",
                          const QString& text = "Dentist") {
    appt_rec r;
    r.appt_first_date = date;
    r.appt_date = date;
    r.appt_start = start;
    r.appt_end = start.isEmpty() ? QString() : QStringLiteral("10:00");
    r.appt_id = id;
    r.appt_text = text;
    r.appt_type = QStringLiteral("Meeting");
    r.appt_occurs = QStringLiteral("0 ");
    r.appt_occurs_month = QStringLiteral("0 ");
    r.appt_occurs_every = QStringLiteral("0 ");
    r.appt_until = QStringLiteral("12/31/26");
    r.appt_rem_lead = QStringLiteral("0 ");
    r.appt_rem_unit = QStringLiteral("0 ");
    r.appt_rem_anim = QStringLiteral("0 ");
    r.appt_pattern = QStringLiteral("1 ");
    return r;
}

// A waiting reminder due on "mm/dd/yy" at "hh:nn".
inline rmdr_rec make_rmdr(const QString& due, const QString& id, const QString& time = "08:30") {
    rmdr_rec r;
    r.rmdr_first_date = QStringLiteral("03152026");
    r.rmdr_start = QStringLiteral("09:00");
    r.rmdr_end = QStringLiteral("10:00");
    r.rmdr_id = id;
    r.rmdr_text = QStringLiteral("Dentist");
    r.rmdr_type = QStringLiteral("Meeting");
    r.rmdr_appt_date = QStringLiteral("03152026");
    r.rmdr_date = due;
    r.rmdr_time = time;
    r.rmdr_fired = QStringLiteral("F");
    r.rmdr_anim = QStringLiteral("0 ");
    r.rmdr_again_count = QStringLiteral("1 ");
    return r;
}

// What the store logs under orvacal.store while one of these lives; other
// categories are passed over silently.
class StoreLog {
  public:
    StoreLog() {
        current() = this;
        previous_ = qInstallMessageHandler(&take);
    }
    ~StoreLog() {
        qInstallMessageHandler(previous_);
        current() = nullptr;
    }
    StoreLog(const StoreLog&) = delete;
    StoreLog& operator=(const StoreLog&) = delete;

    QStringList lines;

    // The lines that hold every one of the words.
    int count(const QStringList& words) const {
        int n = 0;
        for (const QString& l : lines)
            n += std::all_of(words.begin(), words.end(),
                             [&](const QString& w) { return l.contains(w); });
        return n;
    }

  private:
    static void take(QtMsgType, const QMessageLogContext& ctx, const QString& msg) {
        if (current() && ctx.category && qstrcmp(ctx.category, "orvacal.store") == 0)
            current()->lines << msg;
    }
    static StoreLog*& current() {
        static StoreLog* log = nullptr;
        return log;
    }
    QtMessageHandler previous_ = nullptr;
};

// Every member of a calendar file and its bytes.
using Snapshot = std::map<QString, QByteArray>;

// What the file holds, read through a connection of its own.
inline Snapshot snapshot(const QString& cal) {
    Archive a;
    Snapshot out;
    for (const QString& name : a.members(cal))
        EXPECT_EQ(a.get(cal, name, out[name]), 0) << name.toStdString();
    return out;
}

// True when SQLite's own check of the whole file, on a connection of its own,
// reads "ok".
inline bool quick_check_ok(const QString& cal) {
    sqlite3* db = nullptr;
    bool ok = false;
    if (sqlite3_open_v2(QFile::encodeName(cal).constData(), &db, SQLITE_OPEN_READONLY, nullptr) ==
        SQLITE_OK) {
        sqlite3_stmt* st = nullptr;
        if (sqlite3_prepare_v2(db, "PRAGMA quick_check", -1, &st, nullptr) == SQLITE_OK &&
            sqlite3_step(st) == SQLITE_ROW)
            ok = qstrcmp(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)), "ok") == 0;
        sqlite3_finalize(st);
    }
    sqlite3_close(db);
    return ok;
}

// A temporary application folder, a calendar path inside it, a stopped clock
// and a fresh shared module.
struct StoreEnv {
    QTemporaryDir dir;
    FixedClock clock{QDateTime(QDate(2026, 3, 15), QTime(9, 0))};
    Shared s;
    QString cal;

    StoreEnv() {
        install_clock(&clock);
        s.app_path = dir.path();
        cal = dir.filePath(QStringLiteral("calendar.cal"));
        s.cal_path = cal;
        s.cur_date = clock.today();
    }
    ~StoreEnv() { install_clock(nullptr); }

    // Files in the application folder other than calendars and the log
    // SQLite keeps beside one while it is open: a member copy or a temporary
    // file would show here.
    QStringList loose_files() const {
        static const QRegularExpression calendar(QStringLiteral(R"(\.cal(-wal|-shm)?$)"));
        static const QRegularExpression member(QStringLiteral(R"(^[cr]\d{4}\.(cal|rmd)$)"));
        QStringList out = QDir(dir.path()).entryList(QDir::Files);
        out.removeIf([](const QString& n) {
            return calendar.match(n).hasMatch() && !member.match(n).hasMatch();
        });
        return out;
    }

    void append_appt(const appt_rec& r) {
        s.occur_count = 1;
        *s.occur_row(1) = r;
        ASSERT_EQ(write_occurs(s, cal), 0);
    }
    void append_rmdr(const rmdr_rec& r) { ASSERT_EQ(append_rmdr_line(s, cal, r), 0); }
};

} // namespace orva::testing
