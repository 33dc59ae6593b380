#include "support/io_shim.h"

#include <QFileInfo>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <sqlite3.h>

namespace orva::testing {
namespace {

struct State {
    sqlite3_vfs* real = nullptr;
    std::atomic<long> calls{0};
    std::atomic<long> syncs{0};
    std::atomic<long> changes{0};
    std::atomic<long> kill_at{0};      // absolute change number that kills; 0 none
    std::atomic<long> kill_at_call{0}; // absolute call number that kills; 0 none
    std::atomic<long> fail_at{0};      // absolute call number that fails; 0 none
    int write_code = SQLITE_IOERR_WRITE;
    std::atomic<bool> fired{false};
    const char* fired_kind = "";
    std::mutex m;
    QByteArray read_only_path;
    QByteArray unreadable_path;
};

State& st() {
    static State s;
    return s;
}

// Counts one call; true when this call is the one to fail.
bool hit(const char* kind, bool changes = false) {
    State& s = st();
    if (changes && ++s.changes == s.kill_at) raise(SIGKILL);
    const long n = ++s.calls;
    if (n == s.kill_at_call) raise(SIGKILL);
    if (qEnvironmentVariableIsSet("ORVA_IO_TRACE")) std::fprintf(stderr, "io %ld %s\n", n, kind);
    if (s.fail_at != 0 && n == s.fail_at) {
        s.fired = true;
        s.fired_kind = kind;
        return true;
    }
    return false;
}

// The shim's file: our header, then the real VFS's file object.
struct ShimFile {
    sqlite3_file base;
    sqlite3_file* real;
};

sqlite3_file* real_of(sqlite3_file* f) {
    return reinterpret_cast<ShimFile*>(f)->real;
}

int xClose(sqlite3_file* f) {
    sqlite3_file* r = real_of(f);
    return r->pMethods ? r->pMethods->xClose(r) : SQLITE_OK;
}
int xRead(sqlite3_file* f, void* buf, int amt, sqlite3_int64 off) {
    if (hit("read")) return SQLITE_IOERR_READ;
    return real_of(f)->pMethods->xRead(real_of(f), buf, amt, off);
}
int xWrite(sqlite3_file* f, const void* buf, int amt, sqlite3_int64 off) {
    if (hit("write", true)) return st().write_code;
    return real_of(f)->pMethods->xWrite(real_of(f), buf, amt, off);
}
int xTruncate(sqlite3_file* f, sqlite3_int64 size) {
    if (hit("truncate", true)) return SQLITE_IOERR_TRUNCATE;
    return real_of(f)->pMethods->xTruncate(real_of(f), size);
}
int xSync(sqlite3_file* f, int flags) {
    if (hit("sync", true)) return SQLITE_IOERR_FSYNC;
    ++st().syncs;
    return real_of(f)->pMethods->xSync(real_of(f), flags);
}
int xFileSize(sqlite3_file* f, sqlite3_int64* size) {
    return real_of(f)->pMethods->xFileSize(real_of(f), size);
}
int xLock(sqlite3_file* f, int lock) {
    return real_of(f)->pMethods->xLock(real_of(f), lock);
}
int xUnlock(sqlite3_file* f, int lock) {
    return real_of(f)->pMethods->xUnlock(real_of(f), lock);
}
int xCheckReservedLock(sqlite3_file* f, int* out) {
    return real_of(f)->pMethods->xCheckReservedLock(real_of(f), out);
}
int xFileControl(sqlite3_file* f, int op, void* arg) {
    return real_of(f)->pMethods->xFileControl(real_of(f), op, arg);
}
int xSectorSize(sqlite3_file* f) {
    return real_of(f)->pMethods->xSectorSize(real_of(f));
}
int xDeviceCharacteristics(sqlite3_file* f) {
    return real_of(f)->pMethods->xDeviceCharacteristics(real_of(f));
}
int xShmMap(sqlite3_file* f, int region, int size, int extend, void volatile** out) {
    sqlite3_file* r = real_of(f);
    return r->pMethods->xShmMap(r, region, size, extend, out);
}
int xShmLock(sqlite3_file* f, int offset, int n, int flags) {
    return real_of(f)->pMethods->xShmLock(real_of(f), offset, n, flags);
}
void xShmBarrier(sqlite3_file* f) {
    real_of(f)->pMethods->xShmBarrier(real_of(f));
}
int xShmUnmap(sqlite3_file* f, int del) {
    return real_of(f)->pMethods->xShmUnmap(real_of(f), del);
}
int xFetch(sqlite3_file* f, sqlite3_int64 off, int amt, void** out) {
    sqlite3_file* r = real_of(f);
    if (r->pMethods->iVersion < 3) {
        *out = nullptr;
        return SQLITE_OK;
    }
    return r->pMethods->xFetch(r, off, amt, out);
}
int xUnfetch(sqlite3_file* f, sqlite3_int64 off, void* p) {
    sqlite3_file* r = real_of(f);
    if (r->pMethods->iVersion < 3) return SQLITE_OK;
    return r->pMethods->xUnfetch(r, off, p);
}

const sqlite3_io_methods shim_methods = {
    3,
    xClose,
    xRead,
    xWrite,
    xTruncate,
    xSync,
    xFileSize,
    xLock,
    xUnlock,
    xCheckReservedLock,
    xFileControl,
    xSectorSize,
    xDeviceCharacteristics,
    xShmMap,
    xShmLock,
    xShmBarrier,
    xShmUnmap,
    xFetch,
    xUnfetch,
};

int vOpen(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* f, int flags, int* out_flags) {
    auto* sf = reinterpret_cast<ShimFile*>(f);
    sf->real = reinterpret_cast<sqlite3_file*>(sf + 1);
    sf->base.pMethods = nullptr;
    if (hit("open")) return SQLITE_CANTOPEN;
    State& s = st();
    if ((flags & SQLITE_OPEN_MAIN_DB) && name) {
        std::lock_guard lock(s.m);
        if (!s.unreadable_path.isEmpty() && s.unreadable_path == name) {
            errno = EACCES;
            return SQLITE_CANTOPEN;
        }
        if (!s.read_only_path.isEmpty() && s.read_only_path == name) {
            flags &= ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
            flags |= SQLITE_OPEN_READONLY;
        }
    }
    const int rc = s.real->xOpen(s.real, name, sf->real, flags, out_flags);
    if (rc == SQLITE_OK && sf->real->pMethods) sf->base.pMethods = &shim_methods;
    return rc;
}
int vDelete(sqlite3_vfs*, const char* name, int sync_dir) {
    if (hit("delete", true)) return SQLITE_IOERR_DELETE;
    if (sync_dir) ++st().syncs;
    return st().real->xDelete(st().real, name, sync_dir);
}
int vAccess(sqlite3_vfs*, const char* name, int flags, int* out) {
    return st().real->xAccess(st().real, name, flags, out);
}
int vFullPathname(sqlite3_vfs*, const char* name, int n, char* out) {
    return st().real->xFullPathname(st().real, name, n, out);
}
void* vDlOpen(sqlite3_vfs*, const char* name) {
    return st().real->xDlOpen(st().real, name);
}
void vDlError(sqlite3_vfs*, int n, char* msg) {
    st().real->xDlError(st().real, n, msg);
}
void (*vDlSym(sqlite3_vfs*, void* h, const char* sym))(void) {
    return st().real->xDlSym(st().real, h, sym);
}
void vDlClose(sqlite3_vfs*, void* h) {
    st().real->xDlClose(st().real, h);
}
int vRandomness(sqlite3_vfs*, int n, char* out) {
    return st().real->xRandomness(st().real, n, out);
}
int vSleep(sqlite3_vfs*, int us) {
    return st().real->xSleep(st().real, us);
}
int vCurrentTime(sqlite3_vfs*, double* out) {
    return st().real->xCurrentTime(st().real, out);
}
int vGetLastError(sqlite3_vfs*, int n, char* out) {
    return st().real->xGetLastError ? st().real->xGetLastError(st().real, n, out) : 0;
}
int vCurrentTimeInt64(sqlite3_vfs*, sqlite3_int64* out) {
    return st().real->xCurrentTimeInt64(st().real, out);
}

sqlite3_vfs shim_vfs;

} // namespace

IoShim& IoShim::install() {
    static IoShim shim;
    static const bool done = [] {
        State& s = st();
        s.real = sqlite3_vfs_find(nullptr);
        std::memset(&shim_vfs, 0, sizeof shim_vfs);
        shim_vfs.iVersion = 2;
        shim_vfs.szOsFile = int(sizeof(ShimFile)) + s.real->szOsFile;
        shim_vfs.mxPathname = s.real->mxPathname;
        shim_vfs.zName = "orva_io_shim";
        shim_vfs.xOpen = vOpen;
        shim_vfs.xDelete = vDelete;
        shim_vfs.xAccess = vAccess;
        shim_vfs.xFullPathname = vFullPathname;
        shim_vfs.xDlOpen = vDlOpen;
        shim_vfs.xDlError = vDlError;
        shim_vfs.xDlSym = vDlSym;
        shim_vfs.xDlClose = vDlClose;
        shim_vfs.xRandomness = vRandomness;
        shim_vfs.xSleep = vSleep;
        shim_vfs.xCurrentTime = vCurrentTime;
        shim_vfs.xGetLastError = vGetLastError;
        shim_vfs.xCurrentTimeInt64 = vCurrentTimeInt64;
        return sqlite3_vfs_register(&shim_vfs, 1) == SQLITE_OK;
    }();
    (void)done;
    return shim;
}

long IoShim::calls() const {
    return st().calls;
}

long IoShim::syncs() const {
    return st().syncs;
}

long IoShim::changes() const {
    return st().changes;
}

void IoShim::reset_counts() {
    st().calls = 0;
    st().syncs = 0;
    st().changes = 0;
    st().kill_at = 0;
    st().kill_at_call = 0;
}

void IoShim::kill_at_change(long nth) {
    State& s = st();
    s.kill_at = nth == 0 ? 0 : s.changes + nth;
}

void IoShim::kill_at_call(long nth) {
    State& s = st();
    s.kill_at_call = nth == 0 ? 0 : s.calls + nth;
}

void IoShim::fail_call(long nth, int write_code) {
    State& s = st();
    s.fired = false;
    s.fired_kind = "";
    s.write_code = write_code;
    s.fail_at = nth == 0 ? 0 : s.calls + nth;
}

bool IoShim::fired() const {
    return st().fired;
}

QString IoShim::fired_kind() const {
    return QString::fromLatin1(st().fired_kind);
}

void IoShim::set_read_only_path(const QString& path) {
    State& s = st();
    std::lock_guard lock(s.m);
    s.read_only_path = path.isEmpty() ? QByteArray() : QFileInfo(path).absoluteFilePath().toUtf8();
}

void IoShim::set_unreadable_path(const QString& path) {
    State& s = st();
    std::lock_guard lock(s.m);
    s.unreadable_path = path.isEmpty() ? QByteArray() : QFileInfo(path).absoluteFilePath().toUtf8();
}

} // namespace orva::testing
