#pragma once

#include "store/errors.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>

struct sqlite3;

namespace orva {

// The calendar file: named members in one SQLite Archive ("sqlar" table,
// members stored uncompressed), so `sqlite3 -A` can list and extract them.
// Its three actions are those the store uses; each returns an error number
// (0 success, 53 when the archive or the member is missing) and never aborts.
class Archive {
  public:
    enum Action { add = 0, extract = 2, remove = 3 };

    Archive();
    ~Archive();
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;

    // Archive(archive_file, file, action): the member is known by the file's
    // name. add: store the file as that member, replacing one of that name,
    // creating the archive when it is missing. extract: write the member to
    // `file`, replacing what stands there. remove: delete the member.
    int run(const QString& archive_file, const QString& file, int action);

    // Direct access for code that has no loose file to hand.
    int put(const QString& archive_file, const QString& member, const QByteArray& bytes);
    int get(const QString& archive_file, const QString& member, QByteArray& bytes);
    int drop(const QString& archive_file, const QString& member);
    QStringList members(const QString& archive_file);

    int error() const { return error_; }
    void clear_error() { error_ = 0; }

    // One user command is one transaction of the calendar file: the first open
    // Command on a path begins it (BEGIN IMMEDIATE), the last one to end
    // commits. Commands nest by depth count, so a tick or a click that runs
    // inside a yielding loop joins the transaction instead of splitting it.
    class Command {
      public:
        Command(Archive& a, QString archive_file);
        ~Command();
        Command(const Command&) = delete;
        Command& operator=(const Command&) = delete;

      private:
        Archive& a_;
        QString path_;
    };

    // Closes the connection to a file, committing nothing that is still open
    // (used before the file itself is deleted).
    void close(const QString& archive_file);

    // Called after each member has been written inside a transaction; tests
    // use it to kill the process in the middle of a command.
    void set_after_write_hook(std::function<void(const QString& member)> hook);

  private:
    struct Conn;
    // The cached connection to a file, opened (and checked) when needed; null
    // with error() set when the file is missing and not to be created (53) or
    // is no sound archive (75). Inside a Command the connection is in its
    // transaction.
    Conn* open(const QString& archive_file, bool create);
    void begin_if_commanded(const QString& key, Conn* c);
    void forget(const QString& key);
    static QString key(const QString& archive_file);
    int fail(int e) {
        error_ = e;
        return e;
    }
    std::map<QString, Conn*> conns_;
    std::map<QString, int> depth_; // open Commands per file
    std::function<void(const QString&)> after_write_;
    int error_ = 0;
};

} // namespace orva
