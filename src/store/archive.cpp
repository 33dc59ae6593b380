#include "store/archive.h"

#include "shell/clock.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QtEndian>
#include <sqlite3.h>
#include <sys/stat.h>

namespace orva {

namespace {

Q_LOGGING_CATEGORY(lcStore, "orvacal.store")

using err::not_found;
constexpr int file_access = err::bad_file;
constexpr int bad_call = 5; // invalid procedure call: an action the archive does not know
constexpr int orva_application_id = 0x4F525641; // "ORVA"
constexpr int member_file_mode = 0100644;       // what `sqlite3 -Ax` gives the extracted file
constexpr int busy_timeout_ms = 5000;

bool exec(sqlite3* db, const char* sql) {
    char* err = nullptr;
    const int rc = sqlite3_exec(db, sql, nullptr, nullptr, &err);
    if (rc != SQLITE_OK) {
        qCWarning(lcStore) << sql << "failed:" << (err ? err : sqlite3_errstr(rc));
        sqlite3_free(err);
    }
    return rc == SQLITE_OK;
}

class Stmt {
  public:
    Stmt(sqlite3* db, const char* sql) {
        ok_ = sqlite3_prepare_v2(db, sql, -1, &st_, nullptr) == SQLITE_OK;
    }
    ~Stmt() { sqlite3_finalize(st_); }
    Stmt(const Stmt&) = delete;
    Stmt& operator=(const Stmt&) = delete;
    bool ok() const { return ok_; }
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
    bool ok_ = false;
};

bool file_identity(const QString& path, dev_t& dev, ino_t& ino) {
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0) return false;
    dev = st.st_dev;
    ino = st.st_ino;
    return true;
}

bool quick_check_ok(sqlite3* db) {
    Stmt q(db, "PRAGMA quick_check");
    if (!q.ok() || q.step() != SQLITE_ROW) return false;
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(q.get(), 0));
    return text && qstrcmp(text, "ok") == 0 && q.step() == SQLITE_DONE;
}

bool has_sqlar(sqlite3* db) {
    Stmt q(db, "SELECT 1 FROM sqlite_master WHERE type='table' AND name='sqlar'");
    return q.ok() && q.step() == SQLITE_ROW;
}

} // namespace

struct Archive::Conn {
    sqlite3* db = nullptr;
    bool in_tx = false;
    bool has_table = false;
    dev_t dev = 0;
    ino_t ino = 0;
};

Archive::Archive() = default;

Archive::~Archive() {
    for (auto& [k, c] : conns_) {
        sqlite3_close_v2(c->db);
        delete c;
    }
}

QString Archive::key(const QString& archive_file) {
    return QFileInfo(archive_file).absoluteFilePath();
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

Archive::Conn* Archive::open(const QString& archive_file, bool create) {
    // SQLite would open an empty name as a private temporary database and
    // report success for a calendar that is not there.
    if (archive_file.isEmpty()) {
        fail(err::bad_name);
        return nullptr;
    }
    const QString k = key(archive_file);
    dev_t dev = 0;
    ino_t ino = 0;
    const bool exists = file_identity(k, dev, ino);

    if (auto it = conns_.find(k); it != conns_.end()) {
        Conn* c = it->second;
        if (c->in_tx || (exists && c->dev == dev && c->ino == ino)) {
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

    sqlite3* db = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    if (sqlite3_open_v2(QFile::encodeName(k).constData(), &db, flags, nullptr) != SQLITE_OK) {
        qCWarning(lcStore) << "cannot open" << k << sqlite3_errmsg(db);
        sqlite3_close_v2(db);
        fail(file_access);
        return nullptr;
    }
    sqlite3_busy_timeout(db, busy_timeout_ms);
    if (!exec(db, "PRAGMA journal_mode=DELETE") || !exec(db, "PRAGMA synchronous=EXTRA") ||
        !quick_check_ok(db)) {
        qCWarning(lcStore) << k << "is no sound calendar archive";
        sqlite3_close_v2(db);
        fail(file_access);
        return nullptr;
    }
    auto* c = new Conn;
    c->db = db;
    c->has_table = has_sqlar(db);
    file_identity(k, c->dev, c->ino);
    conns_[k] = c;
    begin_if_commanded(k, c);
    return c;
}

void Archive::begin_if_commanded(const QString& k, Conn* c) {
    if (c->in_tx) return;
    auto d = depth_.find(k);
    if (d == depth_.end() || d->second <= 0) return;
    c->in_tx = exec(c->db, "BEGIN IMMEDIATE");
}

int Archive::put(const QString& archive_file, const QString& member, const QByteArray& bytes) {
    Conn* c = open(archive_file, true);
    if (!c) return error_;
    if (!c->has_table) {
        if (!exec(c->db, "CREATE TABLE IF NOT EXISTS sqlar(name TEXT PRIMARY KEY, mode INT, "
                         "mtime INT, sz INT, data BLOB)"))
            return fail(file_access);
        exec(c->db, QByteArray("PRAGMA application_id=" + QByteArray::number(orva_application_id))
                        .constData());
        c->has_table = true;
    }
    // Members are stored uncompressed (sz equal to the data's length), which
    // `sqlite3 -A` reads as they stand.
    Stmt ins(c->db, "REPLACE INTO sqlar(name, mode, mtime, sz, data) VALUES(?1, ?2, ?3, ?4, ?5)");
    if (!ins.ok()) return fail(file_access);
    ins.bind_text(1, member);
    sqlite3_bind_int(ins.get(), 2, member_file_mode);
    sqlite3_bind_int64(ins.get(), 3, clock().now().toSecsSinceEpoch());
    sqlite3_bind_int64(ins.get(), 4, bytes.size());
    ins.bind_blob(5, bytes);
    if (ins.step() != SQLITE_DONE) {
        qCWarning(lcStore) << "cannot store" << member << "in" << archive_file
                           << sqlite3_errmsg(c->db);
        return fail(file_access);
    }
    if (c->in_tx && after_write_) after_write_(member);
    return 0;
}

int Archive::get(const QString& archive_file, const QString& member, QByteArray& bytes) {
    bytes.clear();
    Conn* c = open(archive_file, false);
    if (!c) return error_;
    if (!c->has_table) return fail(not_found);
    Stmt sel(c->db, "SELECT sz, data FROM sqlar WHERE name=?1");
    if (!sel.ok()) return fail(not_found);
    sel.bind_text(1, member);
    if (sel.step() != SQLITE_ROW) return fail(not_found);
    const qint64 sz = sqlite3_column_int64(sel.get(), 0);
    const auto* data = static_cast<const char*>(sqlite3_column_blob(sel.get(), 1));
    const int len = sqlite3_column_bytes(sel.get(), 1);
    QByteArray stored(data, len);
    if (len == sz) {
        bytes = stored;
        return 0;
    }
    // A member added by `sqlite3 -Ac` is a zlib stream; qUncompress wants the
    // size in front of it.
    QByteArray framed(4, '\0');
    qToBigEndian(quint32(sz), framed.data());
    bytes = qUncompress(framed + stored);
    if (bytes.size() != sz) {
        bytes.clear();
        return fail(file_access);
    }
    return 0;
}

int Archive::drop(const QString& archive_file, const QString& member) {
    Conn* c = open(archive_file, false);
    if (!c) return error_;
    if (!c->has_table) return fail(not_found);
    Stmt del(c->db, "DELETE FROM sqlar WHERE name=?1");
    if (!del.ok()) return fail(file_access);
    del.bind_text(1, member);
    if (del.step() != SQLITE_DONE) return fail(file_access);
    if (sqlite3_changes(c->db) == 0) return fail(not_found);
    if (c->in_tx && after_write_) after_write_(member);
    return 0;
}

QStringList Archive::members(const QString& archive_file) {
    QStringList out;
    Conn* c = open(archive_file, false);
    if (!c || !c->has_table) return out;
    Stmt sel(c->db, "SELECT name FROM sqlar ORDER BY name");
    while (sel.ok() && sel.step() == SQLITE_ROW)
        out << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(sel.get(), 0)));
    return out;
}

int Archive::run(const QString& archive_file, const QString& file, int action) {
    const QString member = QFileInfo(file).fileName();
    switch (action) {
    case add: {
        QFile in(file);
        if (!in.open(QIODevice::ReadOnly)) return fail(not_found);
        return put(archive_file, member, in.readAll());
    }
    case extract: {
        QByteArray bytes;
        if (const int e = get(archive_file, member, bytes)) return e;
        QFile out(file);
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) return fail(file_access);
        if (out.write(bytes) != bytes.size()) return fail(file_access);
        return 0;
    }
    case remove:
        return drop(archive_file, member);
    default:
        return fail(bad_call);
    }
}

void Archive::close(const QString& archive_file) {
    forget(key(archive_file));
}

void Archive::set_after_write_hook(std::function<void(const QString&)> hook) {
    after_write_ = std::move(hook);
}

Archive::Command::Command(Archive& a, QString archive_file) : a_(a), path_(key(archive_file)) {
    if (a_.depth_[path_]++ > 0) return;
    // A file that does not exist yet joins the command when its first member
    // is added; a Command alone never creates it.
    if (QFileInfo::exists(path_)) {
        const int kept = a_.error_;
        a_.open(path_, false);
        a_.error_ = kept;
    }
}

Archive::Command::~Command() {
    auto d = a_.depth_.find(path_);
    if (d == a_.depth_.end() || --d->second > 0) return;
    a_.depth_.erase(d);
    auto it = a_.conns_.find(path_);
    if (it == a_.conns_.end() || !it->second->in_tx) return;
    Conn* c = it->second;
    c->in_tx = false;
    if (sqlite3_exec(c->db, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK) {
        qCCritical(lcStore) << "commit of" << path_
                            << "failed, command rolled back:" << sqlite3_errmsg(c->db);
        sqlite3_exec(c->db, "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

} // namespace orva
