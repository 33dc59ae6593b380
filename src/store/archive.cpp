#include "store/archive.h"

#include "core/clock.h"
#include "core/logging.h"
#include "store/backups.h"
#include "store/member_codec.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <optional>
#include <sqlite3.h>
#include <sys/stat.h>

namespace orva {

namespace {

using err::not_found;
constexpr int orva_application_id = 0x4F525641; // "ORVA"
constexpr int member_file_mode = 0100644;       // what `sqlite3 -Ax` gives the extracted file
constexpr int default_busy_timeout_ms = 5000;
// WAL pages after which a command checkpoints once it has committed.
constexpr int checkpoint_frames = 1000;

// The error number a failed SQLite call stands for.
int error_of(int rc) {
    switch (rc & 0xff) {
    case SQLITE_OK:
    case SQLITE_DONE:
    case SQLITE_ROW:
        return err::none;
    case SQLITE_FULL:
        return err::disk_full;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return err::denied;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_CANTOPEN:
        return err::bad_file;
    case SQLITE_NOMEM:
        return err::no_memory;
    default:
        return err::io;
    }
}

int exec(sqlite3* db, const char* sql) {
    char* msg = nullptr;
    const int rc = sqlite3_exec(db, sql, nullptr, nullptr, &msg);
    if (rc != SQLITE_OK) {
        qCWarning(lcStore) << sql << "failed:" << (msg ? msg : sqlite3_errstr(rc));
        sqlite3_free(msg);
    }
    return rc;
}

class Stmt {
  public:
    Stmt(sqlite3* db, const char* sql) : rc_(sqlite3_prepare_v2(db, sql, -1, &st_, nullptr)) {}
    ~Stmt() { sqlite3_finalize(st_); }
    Stmt(const Stmt&) = delete;
    Stmt& operator=(const Stmt&) = delete;
    bool ok() const { return rc_ == SQLITE_OK; }
    int prepare_rc() const { return rc_; }
    sqlite3_stmt* get() const { return st_; }
    void bind_text(int i, const QString& s) {
        const QByteArray u = s.toUtf8();
        sqlite3_bind_text(st_, i, u.constData(), int(u.size()), SQLITE_TRANSIENT);
    }
    void bind_blob(int i, const QByteArray& b) {
        // An empty QByteArray may have a null pointer, which sqlite would store as
        // NULL; the archive format wants a zero-length blob.
        if (b.isEmpty())
            sqlite3_bind_zeroblob(st_, i, 0);
        else
            sqlite3_bind_blob(st_, i, b.constData(), int(b.size()), SQLITE_TRANSIENT);
    }
    int step() { return sqlite3_step(st_); }

  private:
    sqlite3_stmt* st_ = nullptr;
    int rc_;
};

bool file_identity(const QString& path, dev_t& dev, ino_t& ino) {
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0) return false;
    dev = st.st_dev;
    ino = st.st_ino;
    return true;
}

// 0 when the whole file reads back sound.
int quick_check(sqlite3* db) {
    Stmt q(db, "PRAGMA quick_check");
    if (!q.ok()) return q.prepare_rc();
    const int rc = q.step();
    if (rc != SQLITE_ROW) return rc;
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(q.get(), 0));
    if (!text || qstrcmp(text, "ok") != 0) return SQLITE_CORRUPT;
    return q.step() == SQLITE_DONE ? SQLITE_OK : SQLITE_CORRUPT;
}

// The application_id in the file's header: ours, 0 for a file the SQLite
// shell made, or another program's.
int application_id(sqlite3* db, int& id) {
    Stmt q(db, "PRAGMA application_id");
    if (!q.ok()) return q.prepare_rc();
    const int rc = q.step();
    if (rc != SQLITE_ROW) return rc;
    id = sqlite3_column_int(q.get(), 0);
    return SQLITE_OK;
}

int crc_column_exists(sqlite3* db, bool& exists) {
    Stmt q(db, "SELECT 1 FROM pragma_table_info('sqlar') WHERE name='crc'");
    if (!q.ok()) return q.prepare_rc();
    const int rc = q.step();
    exists = rc == SQLITE_ROW;
    return rc == SQLITE_ROW || rc == SQLITE_DONE ? SQLITE_OK : rc;
}

qint64 size_of(const QString& path) {
    struct stat st {};
    return ::stat(QFile::encodeName(path).constData(), &st) == 0 ? qint64(st.st_size) : -1;
}

// Whether the table has the archive's own columns: one of the same name but
// another shape belongs to some other program.
int table_has_archive_columns(sqlite3* db, bool& has) {
    Stmt q(db, "SELECT count(*) FROM pragma_table_info('sqlar') "
               "WHERE name IN ('name', 'mode', 'mtime', 'sz', 'data')");
    if (!q.ok()) return q.prepare_rc();
    const int rc = q.step();
    has = rc == SQLITE_ROW && sqlite3_column_int(q.get(), 0) == 5;
    return rc == SQLITE_ROW ? SQLITE_OK : rc;
}

// Whether the file is shorter than its own header says it was when last
// written whole: a file cut off at its end can otherwise pass every check,
// its missing bytes read as zeros.
bool cut_short(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return false;
    const QByteArray h = f.read(100);
    if (h.size() < 100 || !h.startsWith(QByteArrayLiteral("SQLite format 3\0"))) return false;
    const auto be32 = [&h](int at) {
        return quint32(quint8(h[at])) << 24 | quint32(quint8(h[at + 1])) << 16 |
               quint32(quint8(h[at + 2])) << 8 | quint32(quint8(h[at + 3]));
    };
    const quint32 page = quint32(quint8(h[16])) << 8 | quint8(h[17]);
    const qint64 page_size = page == 1 ? 65536 : page;
    // The page count is only kept when the two counters agree.
    if (page_size < 512 || be32(24) != be32(92)) return false;
    return f.size() < qint64(be32(28)) * page_size;
}

int table_exists(sqlite3* db, bool& exists) {
    Stmt q(db, "SELECT 1 FROM sqlite_master WHERE type='table' AND name='sqlar'");
    if (!q.ok()) return q.prepare_rc();
    const int rc = q.step();
    exists = rc == SQLITE_ROW;
    return rc == SQLITE_ROW || rc == SQLITE_DONE ? SQLITE_OK : rc;
}

} // namespace

struct Archive::Conn {
    sqlite3* db = nullptr;
    bool in_tx = false;
    bool has_table = false;
    bool has_crc = false; // the table carries the checksum column
    QDate backed_up_on;   // the day whose backup is known to be taken
    int wal_frames = 0;   // pages in the WAL after the last commit
    dev_t dev = 0;
    ino_t ino = 0;
};

struct Archive::Tx {
    int depth = 0;
    int failed = 0;       // the first error; the command then rolls back
    bool created = false; // the file did not exist when the command began
    // Members changed by the command, written when it finishes; nullopt marks
    // a member dropped.
    std::map<QString, std::optional<QByteArray>> pending;
};

Archive::Archive() : busy_timeout_ms_(default_busy_timeout_ms) {}

Archive::~Archive() {
    for (auto& [k, t] : tx_)
        delete t;
    for (auto& [k, c] : conns_) {
        sqlite3_close_v2(c->db);
        delete c;
    }
}

QString Archive::key(const QString& archive_file) {
    return QFileInfo(archive_file).absoluteFilePath();
}

Archive::Tx* Archive::command_of(const QString& k) {
    auto it = tx_.find(k);
    return it == tx_.end() ? nullptr : it->second;
}

int Archive::fail_command(const QString& k, int e) {
    if (Tx* t = command_of(k); t && t->failed == 0) {
        t->failed = e;
        qCWarning(lcStore) << "command on" << k << "failed with error" << e
                           << "; it will be rolled back";
    }
    return fail(e);
}

int Archive::command_error(const QString& archive_file) const {
    auto it = tx_.find(key(archive_file));
    return it == tx_.end() ? 0 : it->second->failed;
}

void Archive::forget(const QString& k) {
    auto it = conns_.find(k);
    if (it == conns_.end()) return;
    if (it->second->in_tx)
        qCWarning(lcStore) << "closing" << k
                           << "with a command still open; its changes are dropped";
    sqlite3_close_v2(it->second->db);
    delete it->second;
    conns_.erase(it);
}

Archive::Conn* Archive::open(const QString& k, bool create) {
    if (read_only_) create = false;
    // SQLite would open an empty name as a private temporary database and
    // report success for a calendar that is not there.
    if (k.isEmpty()) {
        fail(err::bad_name);
        return nullptr;
    }
    auto cached = conns_.find(k);
    // Inside its transaction the connection holds the write lock: the file
    // cannot have been replaced since.
    if (cached != conns_.end() && cached->second->in_tx) return cached->second;
    dev_t dev = 0;
    ino_t ino = 0;
    const bool exists = file_identity(k, dev, ino);

    if (auto it = cached; it != conns_.end()) {
        Conn* c = it->second;
        if (exists && c->dev == dev && c->ino == ino) {
            // Another process may have made the table since this connection
            // last looked.
            if (!c->has_table && table_exists(c->db, c->has_table) == SQLITE_OK && c->has_table)
                (void)crc_column_exists(c->db, c->has_crc);
            begin_if_commanded(k, c);
            return c;
        }
        // Deleted or replaced behind our back: the cached connection would
        // still see the old file.
        forget(k);
    }
    if (!exists && !create) {
        fail(not_found);
        return nullptr;
    }
    bool fresh = !exists;
    if (exists && size_of(k) == 0) {
        // An empty file with a log beside it is a first save that never
        // committed: it holds nothing, so it counts as no file at all. Any
        // other empty file is not ours to take over.
        if (!QFileInfo::exists(k + QStringLiteral("-wal"))) {
            qCWarning(lcStore) << k << "is empty: not a calendar";
            fail(err::not_calendar);
            return nullptr;
        }
        if (!create) {
            fail(not_found);
            return nullptr;
        }
        for (const char* suffix : {"", "-wal", "-shm"})
            QFile::remove(k + QLatin1String(suffix));
        fresh = true;
    }

    if (!fresh && cut_short(k)) {
        qCWarning(lcStore) << k << "is shorter than its header says: cut off";
        fail(err::bad_file);
        return nullptr;
    }

    sqlite3* db = nullptr;
    const int flags = read_only_ ? SQLITE_OPEN_READONLY
                                 : SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    int rc = sqlite3_open_v2(QFile::encodeName(k).constData(), &db, flags, nullptr);
    if (rc != SQLITE_OK) {
        qCWarning(lcStore) << "cannot open" << k << sqlite3_errmsg(db);
        // A file the user may not read is not a damaged one.
        const int sys = sqlite3_system_errno(db);
        const bool barred = (rc & 0xff) == SQLITE_CANTOPEN && (sys == EACCES || sys == EPERM);
        sqlite3_close_v2(db);
        fail(barred ? err::denied : error_of(rc));
        return nullptr;
    }
    sqlite3_extended_result_codes(db, 1);
    sqlite3_busy_timeout(db, busy_timeout_ms_);
    bool has_table = false;
    if (!fresh) {
        // Looked at before anything is set on the file, so that a file that
        // is not a calendar is left exactly as it was.
        int id = 0;
        bool shaped = false;
        rc = table_exists(db, has_table);
        if (rc == SQLITE_OK && has_table) rc = table_has_archive_columns(db, shaped);
        if (rc == SQLITE_OK) rc = application_id(db, id);
        const bool foreign =
            rc == SQLITE_OK && (!has_table || !shaped || (id != 0 && id != orva_application_id));
        if (foreign || (rc & 0xff) == SQLITE_NOTADB) {
            qCWarning(lcStore) << k << "is not a calendar";
            sqlite3_close_v2(db);
            fail(err::not_calendar);
            return nullptr;
        }
        if (rc != SQLITE_OK) {
            qCWarning(lcStore) << "cannot read" << k << sqlite3_errstr(rc);
            sqlite3_close_v2(db);
            fail((rc & 0xff) == SQLITE_CORRUPT ? err::bad_file : error_of(rc));
            return nullptr;
        }
    }
    // WAL with synchronous=FULL commits with one sync of the log; the page
    // cache is large enough, and never spilled, so that nothing of a command
    // reaches the file before its commit.
    // A file opened read-only cannot change its journal; it is read as it is.
    if (!sqlite3_db_readonly(db, "main")) rc = exec(db, "PRAGMA journal_mode=WAL");
    for (const char* pragma : {"PRAGMA synchronous=FULL", "PRAGMA cache_size=-16384",
                               "PRAGMA cache_spill=OFF", "PRAGMA journal_size_limit=4194304"})
        if (rc == SQLITE_OK) rc = exec(db, pragma);
    if (rc == SQLITE_OK) rc = quick_check(db);
    if (rc != SQLITE_OK) {
        qCWarning(lcStore) << k << "is no sound calendar archive:" << sqlite3_errstr(rc);
        sqlite3_close_v2(db);
        fail(rc == SQLITE_CORRUPT || rc == SQLITE_NOTADB ? err::bad_file : error_of(rc));
        return nullptr;
    }
    auto* c = new Conn;
    c->db = db;
    // Checkpoints are run after a commit by the command, never inside one:
    // an automatic checkpoint that failed would make a commit that succeeded
    // look failed.
    sqlite3_wal_hook(
        db,
        [](void* arg, sqlite3*, const char*, int frames) {
            static_cast<Conn*>(arg)->wal_frames = frames;
            return SQLITE_OK;
        },
        c);
    rc = table_exists(db, c->has_table);
    if (rc == SQLITE_OK && c->has_table) rc = crc_column_exists(db, c->has_crc);
    if (rc != SQLITE_OK) {
        sqlite3_close_v2(db);
        delete c;
        fail(error_of(rc));
        return nullptr;
    }
    file_identity(k, c->dev, c->ino);
    conns_[k] = c;
    begin_if_commanded(k, c);
    return c;
}

void Archive::begin_if_commanded(const QString& k, Conn* c) {
    if (c->in_tx) return;
    Tx* t = command_of(k);
    if (!t || t->failed) return;
    // A file opened read-only would take the whole command into memory and
    // refuse it only at the end.
    if (sqlite3_db_readonly(c->db, "main") == 1) {
        fail_command(k, err::denied);
        return;
    }
    const int rc = exec(c->db, "BEGIN IMMEDIATE");
    if (rc == SQLITE_OK)
        c->in_tx = true;
    else
        fail_command(k, error_of(rc));
}

int Archive::read_member(const QString& k, const QString& member, QByteArray& bytes) {
    Conn* c = open(k, false);
    if (!c) return error_;
    if (!c->has_table) return fail(not_found);
    Stmt sel(c->db, c->has_crc ? "SELECT sz, data, crc FROM sqlar WHERE name=?1"
                               : "SELECT sz, data, NULL FROM sqlar WHERE name=?1");
    if (!sel.ok()) return fail(error_of(sel.prepare_rc()));
    sel.bind_text(1, member);
    const int rc = sel.step();
    if (rc == SQLITE_DONE) return fail(not_found);
    if (rc != SQLITE_ROW) return fail(error_of(rc));
    const qint64 sz = sqlite3_column_int64(sel.get(), 0);
    const auto* data = static_cast<const char*>(sqlite3_column_blob(sel.get(), 1));
    const int len = sqlite3_column_bytes(sel.get(), 1);
    // A member without a checksum (one the SQLite shell added, say) is
    // unchecked, not damaged.
    const bool checked = sqlite3_column_type(sel.get(), 2) != SQLITE_NULL;
    const quint32 crc = quint32(sqlite3_column_int64(sel.get(), 2));
    const Inflated got = inflate_member(data, len, sz, bytes);
    if (got == Inflated::whole && (!checked || member_crc(bytes) == crc)) return 0;
    // What can be read of a damaged member still shows; the user is told
    // once, and nothing writes over it until a change of that month does.
    // One of which nothing at all can be read is not taken for an empty
    // month: a change would replace it.
    note_damaged(k, member);
    return got == Inflated::none ? fail(err::bad_file) : 0;
}

void Archive::note_damaged(const QString& k, const QString& member) {
    const QString id = k + u'\n' + member;
    if (damaged_seen_.contains(id)) return;
    damaged_seen_.insert(id);
    qCWarning(lcStore) << "member" << member << "of" << k << "is damaged";
    notices_.push_back({Notice::damaged_member, k, member, err::bad_file});
}

void Archive::report_damaged(const QString& archive_file, const QString& member) {
    note_damaged(key(archive_file), member);
}

std::vector<Archive::Notice> Archive::take_notices() {
    std::vector<Notice> out;
    out.swap(notices_);
    return out;
}

int Archive::put(const QString& archive_file, const QString& member, const QByteArray& bytes) {
    const QString k = key(archive_file);
    if (k.isEmpty() || archive_file.isEmpty()) return fail(err::bad_name);
    if (Tx* t = command_of(k)) {
        if (t->failed) return fail(t->failed);
        t->pending[member] = bytes;
        return 0;
    }
    Tx alone;
    alone.pending[member] = bytes;
    alone.created = !QFileInfo::exists(k);
    const int e = flush(k, alone);
    return e ? fail(e) : 0;
}

int Archive::get(const QString& archive_file, const QString& member, QByteArray& bytes) {
    bytes.clear();
    if (archive_file.isEmpty()) return fail(err::bad_name);
    const QString k = key(archive_file);
    Tx* t = command_of(k);
    if (t) {
        if (auto p = t->pending.find(member); p != t->pending.end()) {
            if (!p->second) return fail(not_found);
            bytes = *p->second;
            return 0;
        }
    }
    const int e = read_member(k, member, bytes);
    // A member that cannot be read is no missing one: a command that went on
    // would take it for empty and write over it.
    if (e != 0 && e != not_found && t) fail_command(k, e);
    return e;
}

int Archive::drop(const QString& archive_file, const QString& member) {
    if (archive_file.isEmpty()) return fail(err::bad_name);
    const QString k = key(archive_file);
    Tx* t = command_of(k);
    if (t && t->failed) return fail(t->failed);
    if (t) {
        if (auto p = t->pending.find(member); p != t->pending.end()) {
            if (!p->second) return fail(not_found);
            p->second.reset();
            return 0;
        }
    }
    QByteArray ignored;
    const int e = read_member(k, member, ignored);
    if (e != 0) {
        if (e != not_found && t) fail_command(k, e);
        return e;
    }
    if (t) {
        t->pending[member] = std::nullopt;
        return 0;
    }
    Tx alone;
    alone.pending[member] = std::nullopt;
    const int f = flush(k, alone);
    return f ? fail(f) : 0;
}

QStringList Archive::members(const QString& archive_file) {
    QStringList out;
    const QString k = key(archive_file);
    Tx* t = command_of(k);
    Conn* c = archive_file.isEmpty() ? nullptr : open(k, false);
    if (c && c->has_table) {
        Stmt sel(c->db, "SELECT name FROM sqlar ORDER BY name");
        int rc = sel.ok() ? SQLITE_ROW : sel.prepare_rc();
        while (sel.ok() && (rc = sel.step()) == SQLITE_ROW)
            out << QString::fromUtf8(
                reinterpret_cast<const char*>(sqlite3_column_text(sel.get(), 0)));
        if (rc != SQLITE_DONE) {
            fail(error_of(rc));
            if (t) fail_command(k, error_);
        }
    }
    if (t) {
        for (const auto& [name, bytes] : t->pending) {
            if (bytes && !out.contains(name)) out << name;
            if (!bytes) out.removeAll(name);
        }
        out.sort();
    }
    return out;
}

// Writes a command's held members and commits; on any failure rolls the whole
// transaction back and removes a file the command created. Returns 0 or the
// error number.
namespace {

// Takes out of `pending` every write that would leave its member as it is:
// the same bytes under a checksum that matches them, or a removal of a member
// that is not there. Any doubt keeps the write.
QStringList drop_unchanged(sqlite3* db, std::map<QString, std::optional<QByteArray>>& pending) {
    QStringList dropped;
    Stmt get(db, "SELECT sz, crc, data FROM sqlar WHERE name=?1");
    if (!get.ok()) return dropped;
    for (auto it = pending.begin(); it != pending.end();) {
        sqlite3_reset(get.get());
        get.bind_text(1, it->first);
        const int rc = get.step();
        bool same = false;
        if (rc == SQLITE_DONE) {
            same = !it->second;
        } else if (rc == SQLITE_ROW && it->second) {
            const QByteArray& bytes = *it->second;
            if (sqlite3_column_type(get.get(), 1) != SQLITE_NULL &&
                sqlite3_column_int64(get.get(), 0) == bytes.size() &&
                quint32(sqlite3_column_int64(get.get(), 1)) == member_crc(bytes)) {
                QByteArray stored;
                const char* data = static_cast<const char*>(sqlite3_column_blob(get.get(), 2));
                const int len = sqlite3_column_bytes(get.get(), 2);
                same = inflate_member(data, len, bytes.size(), stored) == Inflated::whole &&
                       stored == bytes;
            }
        }
        if (same) dropped << it->first;
        it = same ? pending.erase(it) : std::next(it);
    }
    return dropped;
}

} // namespace

int Archive::flush(const QString& k, Tx& tx) {
    int e = tx.failed;
    Conn* c = nullptr;
    if (e == 0 && !tx.pending.empty()) {
        c = open(k, true);
        if (!c) e = error_ ? error_ : err::io;
        if (c && !c->in_tx) {
            const int rc = exec(c->db, "BEGIN IMMEDIATE");
            if (rc == SQLITE_OK)
                c->in_tx = true;
            else
                e = error_of(rc);
        }
        // A member written back as it stands is left alone: a start or a
        // resize that saves the same options changes nothing on the disk, so a
        // file the user only looked at stays byte for byte as it was.
        if (e == 0 && c->has_table && c->has_crc)
            for (const QString& member : drop_unchanged(c->db, tx.pending))
                if (after_write_) after_write_(member);
        // The first change of a day keeps a copy of the file as it stood; a
        // copy that cannot be taken is told, and the change goes ahead.
        const QDate today = clock().today();
        if (e == 0 && c->has_table && !tx.pending.empty() && c->backed_up_on != today) {
            // Tried once a day: a backup that failed is told, not retried at
            // every change.
            c->backed_up_on = today;
            if (!has_backup_on(k, today))
                if (const int b = take_backup(k, clock().now())) {
                    qCWarning(lcStore) << "daily backup of" << k << "failed, error" << b;
                    notices_.push_back({Notice::backup_failed, k, QString(), b});
                }
        }
        if (e == 0 && !c->has_table) {
            const int rc = exec(c->db, "CREATE TABLE IF NOT EXISTS sqlar(name TEXT PRIMARY KEY, "
                                       "mode INT, mtime INT, sz INT, data BLOB, crc INT)");
            if (rc != SQLITE_OK) e = error_of(rc);
            if (e == 0) {
                const QByteArray id =
                    "PRAGMA application_id=" + QByteArray::number(orva_application_id);
                if (const int rc2 = exec(c->db, id.constData()); rc2 != SQLITE_OK)
                    e = error_of(rc2);
            }
            if (e == 0) c->has_crc = true;
        } else if (e == 0 && !c->has_crc) {
            // A calendar from before checksums, or one the SQLite shell made:
            // the column goes beside the archive's own, which the shell ignores.
            const int rc = exec(c->db, "ALTER TABLE sqlar ADD COLUMN crc INT");
            if (rc != SQLITE_OK) e = error_of(rc);
            if (e == 0) c->has_crc = true;
        }
        if (e == 0) {
            Stmt ins(c->db, "REPLACE INTO sqlar(name, mode, mtime, sz, data, crc) "
                            "VALUES(?1, ?2, ?3, ?4, ?5, ?6)");
            Stmt del(c->db, "DELETE FROM sqlar WHERE name=?1");
            if (!ins.ok()) e = error_of(ins.prepare_rc());
            if (!del.ok()) e = error_of(del.prepare_rc());
            const qint64 mtime = clock().now().toSecsSinceEpoch();
            for (auto it = tx.pending.begin(); e == 0 && it != tx.pending.end(); ++it) {
                const QString& member = it->first;
                Stmt& st = it->second ? ins : del;
                sqlite3_reset(st.get());
                st.bind_text(1, member);
                if (it->second) {
                    sqlite3_bind_int(ins.get(), 2, member_file_mode);
                    sqlite3_bind_int64(ins.get(), 3, mtime);
                    sqlite3_bind_int64(ins.get(), 4, it->second->size());
                    ins.bind_blob(5, deflated(*it->second));
                    sqlite3_bind_int64(ins.get(), 6, member_crc(*it->second));
                }
                const int rc = st.step();
                if (rc != SQLITE_DONE) {
                    qCWarning(lcStore)
                        << "cannot store" << member << "in" << k << sqlite3_errmsg(c->db);
                    e = error_of(rc);
                    break;
                }
                if (after_write_) after_write_(member);
            }
            if (e == 0) c->has_table = true;
        }
    } else if (auto it = conns_.find(k); it != conns_.end()) {
        c = it->second;
    }

    if (c && c->in_tx) {
        // An I/O error may have made SQLite roll the transaction back by
        // itself; a COMMIT then would commit nothing and report success.
        if (e == 0 && sqlite3_get_autocommit(c->db)) e = err::io;
        if (e == 0) {
            const int rc = sqlite3_exec(c->db, "COMMIT", nullptr, nullptr, nullptr);
            if (rc != SQLITE_OK) {
                qCCritical(lcStore) << "commit of" << k << "failed:" << sqlite3_errmsg(c->db);
                e = error_of(rc);
            }
        }
        if (e != 0) {
            if (!sqlite3_get_autocommit(c->db)) exec(c->db, "ROLLBACK");
            // A commit whose log sync failed may have left its frames in the
            // log; emptying the log keeps a later recovery from finding them.
            exec(c->db, "PRAGMA wal_checkpoint(TRUNCATE)");
            // The rollback may have taken back the table the command made,
            // or the checksum column it added.
            bool has = false;
            if (table_exists(c->db, has) == SQLITE_OK) c->has_table = has;
            has = false;
            if (c->has_table && crc_column_exists(c->db, has) == SQLITE_OK) c->has_crc = has;
        }
        c->in_tx = false;
        if (e == 0 && c->wal_frames >= checkpoint_frames) {
            int log = 0, done = 0;
            const int rc =
                sqlite3_wal_checkpoint_v2(c->db, nullptr, SQLITE_CHECKPOINT_PASSIVE, &log, &done);
            // Nothing is lost when a checkpoint fails: the log still holds
            // the commits and the next one takes them.
            if (rc != SQLITE_OK)
                qCWarning(lcStore) << "checkpoint of" << k << "failed:" << sqlite3_errstr(rc);
            else
                c->wal_frames = log - done;
        }
    }
    if (e != 0) {
        qCCritical(lcStore) << "command on" << k << "rolled back, error" << e;
        if (tx.created) {
            // The file was not there before the command: it must not be now.
            forget(k);
            for (const char* suffix : {"", "-wal", "-shm", "-journal"})
                QFile::remove(k + QLatin1String(suffix));
        }
    }
    tx.pending.clear();
    return e;
}

int Archive::end_command(const QString& k) {
    auto it = tx_.find(k);
    if (it == tx_.end()) return 0;
    Tx* t = it->second;
    if (--t->depth > 0) return t->failed;
    tx_.erase(it);
    const int e = flush(k, *t);
    delete t;
    return e;
}

int Archive::check_calendar(const QString& archive_file) {
    if (archive_file.isEmpty()) return fail(err::bad_name);
    const QString k = key(archive_file);
    if (!QFileInfo::exists(k)) return 0;
    if (!QFileInfo(k).isFile()) return fail(err::not_calendar);
    if (open(k, false)) return 0;
    return error_ == not_found ? 0 : error_;
}

int Archive::check_writable(const QString& archive_file) {
    if (archive_file.isEmpty()) return fail(err::bad_name);
    const QString k = key(archive_file);
    const QFileInfo info(k);
    if (!info.exists()) {
        const QFileInfo dir(info.absolutePath());
        return dir.isDir() && dir.isWritable() ? 0 : fail(err::denied);
    }
    Conn* c = open(k, false);
    if (!c) return error_;
    if (sqlite3_db_readonly(c->db, "main") == 1) return fail(err::denied);
    return 0;
}

void Archive::close(const QString& archive_file) {
    forget(key(archive_file));
}

void Archive::set_busy_timeout_ms(int ms) {
    busy_timeout_ms_ = ms;
    for (auto& [k, c] : conns_)
        sqlite3_busy_timeout(c->db, ms);
}

void Archive::set_after_write_hook(std::function<void(const QString&)> hook) {
    after_write_ = std::move(hook);
}

Archive::Command::Command(Archive& a, QString archive_file)
    : a_(a), path_(archive_file.isEmpty() ? QString() : key(archive_file)) {
    if (path_.isEmpty()) return;
    Tx*& t = a_.tx_[path_];
    if (!t) t = new Tx;
    if (t->depth++ > 0) return;
    t->created = !QFileInfo::exists(path_);
    // A file that does not exist yet is created when the command writes its
    // first member; a Command that writes nothing never creates it.
    if (!t->created) {
        const int kept = a_.error_;
        if (!a_.open(path_, false)) a_.fail_command(path_, a_.error_);
        a_.error_ = kept;
    }
}

Archive::Command::~Command() {
    if (done_) return;
    if (const int e = finish())
        qCWarning(lcStore) << "a command on" << path_ << "ended unfinished with error" << e;
}

void Archive::Command::abort(int e) {
    if (!done_ && !path_.isEmpty() && e != err::none) a_.fail_command(path_, e);
}

int Archive::Command::finish() {
    if (done_ || path_.isEmpty()) return 0;
    done_ = true;
    return a_.end_command(path_);
}

} // namespace orva
