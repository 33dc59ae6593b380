#pragma once

#include <QString>

namespace orva::testing {

// A SQLite VFS that wraps the platform's default one and becomes the default
// itself, so every connection the store opens afterwards goes through it. It
// counts the I/O calls the store makes and can fail exactly one of them, which
// is how the benches count syncs and the fault tests break a command at each
// of its steps in turn.
class IoShim {
  public:
    // Registers the shim as the default VFS on first use.
    static IoShim& install();

    // The calls counted: open, read, write, truncate, sync and delete of any
    // file SQLite touches (database, WAL, shared-memory index, journal).
    long calls() const;
    // xSync calls plus deletes that sync their directory: what reaches the disk
    // as a flush.
    long syncs() const;
    // The calls that change a file: writes, truncates, syncs and deletes.
    long changes() const;
    // Zeroes the counts and disarms a kill, whose place was counted from them.
    void reset_counts();

    // Just before the nth change from now (1-based) the process kills itself
    // with SIGKILL, as a crash would end it: whatever SQLite had not yet
    // handed to the system is lost. 0 disarms.
    void kill_at_change(long nth);
    // The same before the nth counted call of any kind, reads and opens too.
    void kill_at_call(long nth);

    // The nth counted call from now (1-based) fails: reads and syncs with an
    // I/O error, writes with `write_code` (SQLITE_IOERR_WRITE or SQLITE_FULL),
    // opens with SQLITE_CANTOPEN. 0 disarms.
    void fail_call(long nth, int write_code);
    // True once the armed failure has been returned.
    bool fired() const;
    // Which kind of call failed: "open", "read", "write", "truncate", "sync",
    // "delete"; empty before any has.
    QString fired_kind() const;

    // While set, the database file at this path opens read-only whatever is
    // asked, as a file the user may not write would. Empty clears it.
    void set_read_only_path(const QString& path);
    // While set, the database file at this path cannot be opened at all, as
    // one the user may not read: the open fails with the system's EACCES.
    void set_unreadable_path(const QString& path);
};

} // namespace orva::testing
