#include "store/member_codec.h"

#include <zlib.h>

namespace orva {
namespace {

// Deflating is done once per member and command; the fastest level already
// shrinks blank-padded lines some thirty times, and a series edit deflates a
// few hundred members.
constexpr int deflate_level = 1;
// A member larger than this is damage, not a month of entries (6000 lines of
// 477 bytes are under 3 MB).
constexpr qint64 member_size_limit = 64 * 1024 * 1024;

} // namespace

QByteArray deflated(const QByteArray& bytes) {
    if (bytes.isEmpty()) return bytes;
    uLongf len = compressBound(uLong(bytes.size()));
    QByteArray z(qsizetype(len), Qt::Uninitialized);
    if (compress2(reinterpret_cast<Bytef*>(z.data()), &len,
                  reinterpret_cast<const Bytef*>(bytes.constData()), uLong(bytes.size()),
                  deflate_level) != Z_OK)
        return bytes;
    z.truncate(qsizetype(len));
    return z.size() < bytes.size() ? z : bytes;
}

Inflated inflate_member(const char* data, int len, qint64 sz, QByteArray& out) {
    out.clear();
    if (len == sz) {
        out = QByteArray(data, len);
        return Inflated::whole;
    }
    if (sz < 0 || sz > member_size_limit || len <= 0 || !data) return Inflated::none;
    out.resize(qsizetype(sz));
    z_stream zs{};
    if (inflateInit(&zs) != Z_OK) {
        out.clear();
        return Inflated::none;
    }
    zs.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data));
    zs.avail_in = uInt(len);
    zs.next_out = reinterpret_cast<Bytef*>(out.data());
    zs.avail_out = uInt(sz);
    const int rc = inflate(&zs, Z_FINISH);
    const qsizetype got = qsizetype(zs.total_out);
    inflateEnd(&zs);
    out.truncate(got);
    if (rc == Z_STREAM_END && got == sz) return Inflated::whole;
    return got > 0 ? Inflated::partial : Inflated::none;
}

quint32 member_crc(const QByteArray& bytes) {
    return quint32(crc32(crc32(0L, Z_NULL, 0), reinterpret_cast<const Bytef*>(bytes.constData()),
                         uInt(bytes.size())));
}

} // namespace orva
