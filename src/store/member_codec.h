#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace orva {

// How a member's bytes are kept in the archive's table: deflated as a zlib
// stream with `sz` the original size (what `sqlite3 -A` writes and reads), or
// as they stand where deflating does not help; and the CRC-32 of the original
// bytes, which shows a member damaged on the disk.

// The stored form of `bytes`.
QByteArray deflated(const QByteArray& bytes);

enum class Inflated {
    whole,   // every byte came back
    partial, // the stream broke off; `out` holds what came before the damage
    none,    // nothing could be read
};
// The original bytes of a stored member of original size `sz`. A stream that
// breaks off gives what it held up to the break, so the readable lines of a
// damaged member can still be shown.
Inflated inflate_member(const char* data, int len, qint64 sz, QByteArray& out);

// CRC-32 (the zlib polynomial) of the original bytes.
quint32 member_crc(const QByteArray& bytes);

} // namespace orva
