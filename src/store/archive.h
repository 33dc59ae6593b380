#pragma once

#include "core/errors.h"

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <vector>

struct sqlite3;

namespace orva {

// The calendar file: named members in one SQLite Archive ("sqlar" table), so
// `sqlite3 -A` can list and extract them. Members are stored deflated, as the
// layout allows, or raw where deflating does not help.
//
// Every call returns an error number (0 success, 53 when the archive or the
// member is missing, see errors.h) and never aborts. One user command is one
// transaction (see Command): inside it, members are changed in memory and
// reach the file together when the command finishes, or not at all.
class Archive {
  public:
    Archive();
    ~Archive();
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;

    // Stores `bytes` as `member`, replacing a member of that name, creating the
    // archive when it is missing.
    [[nodiscard]] int put(const QString& archive_file, const QString& member,
                          const QByteArray& bytes);
    // The member's bytes; 53 when the archive or the member is missing.
    [[nodiscard]] int get(const QString& archive_file, const QString& member, QByteArray& bytes);
    // Deletes the member; 53 when there is none.
    [[nodiscard]] int drop(const QString& archive_file, const QString& member);
    // The member names in name order; empty when the archive is missing or
    // unreadable (error() tells which).
    QStringList members(const QString& archive_file);

    // What the caller should tell the user, since the store shows nothing
    // itself: a member found damaged when it was read (each once for the
    // life of the archive; its readable part was returned all the same),
    // and a daily backup that could not be taken (the change itself went
    // ahead).
    struct Notice {
        enum Kind { damaged_member, backup_failed } kind;
        QString archive_file;
        QString member; // damaged_member only
        int error = 0;
    };
    // The notices since the last call, oldest first.
    std::vector<Notice> take_notices();
    // Notes a member whose lines the reader had to pass over, as one found
    // damaged by its checksum is noted.
    void report_damaged(const QString& archive_file, const QString& member);

    // 0 when `archive_file` is a calendar or is missing (and could then be
    // made); not_calendar (321) for a file that is none (empty, not SQLite,
    // another program's database), bad_file (75) for one that is damaged.
    // Looks without changing the file.
    [[nodiscard]] int check_calendar(const QString& archive_file);

    // The last error number left by a call, cleared by clear_error().
    int error() const { return error_; }
    void clear_error() { error_ = 0; }

    // One user command is one transaction of the calendar file. The first
    // open Command on a path begins it (BEGIN IMMEDIATE, which waits out the
    // busy timeout when another process writes); members put or dropped
    // inside it are held in memory and written when the outermost Command
    // finishes. Commands nest by depth count, so a tick or a click that runs
    // inside a yielding loop joins the transaction instead of splitting it.
    //
    // The first step that fails inside the command fails all of it: later
    // writes are refused, and the outermost finish rolls everything back, so
    // the file stays byte for byte as it was (a file the command created is
    // removed again).
    class Command {
      public:
        Command(Archive& a, QString archive_file);
        // Finishes the command if finish() was not called; a failure is then
        // only logged.
        ~Command();
        Command(const Command&) = delete;
        Command& operator=(const Command&) = delete;

        // The outermost Command writes the held members and commits, or rolls
        // back; it returns 0 or the error number of the first failed step.
        // An inner Command returns the command's state so far.
        [[nodiscard]] int finish();
        // Fails the command with error `e` (a step the archive did not see
        // fail), so that it rolls back when it finishes.
        void abort(int e);

      private:
        Archive& a_;
        QString path_;
        bool done_ = false;
    };

    // The first error of the command open on this file; 0 when none is open
    // or all its steps went well.
    int command_error(const QString& archive_file) const;

    // 0 when the file can take a change: it exists and is writable, or it is
    // missing and could be created. Otherwise the error a command would meet.
    [[nodiscard]] int check_writable(const QString& archive_file);

    // Closes the connection to a file, dropping a command still open (used
    // before the file itself is deleted).
    void close(const QString& archive_file);

    // How long a command waits for another process's write lock.
    void set_busy_timeout_ms(int ms);

    // Opens every file read-only from then on: nothing is written to it, its
    // journal mode included, and no log files appear beside it. For the data
    // files that ship with the program; writes fail (err::denied).
    void set_read_only(bool on) { read_only_ = on; }

    // Called after each member a command settles inside its transaction,
    // also one whose bytes were already stored and so were not written again;
    // tests use it to kill the process in the middle of a command.
    void set_after_write_hook(std::function<void(const QString& member)> hook);

  private:
    struct Conn;
    struct Tx;
    // The cached connection to a file, opened (and checked) when needed; null
    // with error() set when the file is missing and not to be created (53) or
    // cannot be used (see errors.h). Inside a Command the connection is in its
    // transaction.
    Conn* open(const QString& key, bool create);
    void begin_if_commanded(const QString& key, Conn* c);
    int end_command(const QString& key);
    int flush(const QString& key, Tx& tx);
    void forget(const QString& key);
    int fail(int e) {
        error_ = e;
        return e;
    }
    // Notes the first failure inside the command open on `key`; the command
    // then refuses further writes and rolls back when it finishes.
    int fail_command(const QString& key, int e);
    Tx* command_of(const QString& key);
    int read_member(const QString& key, const QString& member, QByteArray& bytes);
    void note_damaged(const QString& key, const QString& member);
    static QString key(const QString& archive_file);

    std::map<QString, Conn*> conns_;
    std::map<QString, Tx*> tx_; // the open command per file
    std::function<void(const QString&)> after_write_;
    std::vector<Notice> notices_;
    QSet<QString> damaged_seen_; // file + "\n" + member, told once
    int busy_timeout_ms_;
    bool read_only_ = false;
    int error_ = 0;
};

} // namespace orva
