#pragma once

#include <QString>
#include <QStringView>

namespace orva {

// Text in the fixed-width fields of a member is 8-bit, and on this platform
// 8-bit text is UTF-8: widths and input limits count bytes, and one character
// may take up to four of them.

// The bytes `s` takes as UTF-8. A lone surrogate counts as the one '?' the
// encoder writes for it.
qsizetype utf8_size(QStringView s);

// The longest beginning of `s` whose UTF-8 takes at most `bytes` bytes, ended
// between two characters as the reader sees them: never inside a UTF-8
// sequence or a surrogate pair, nor between a letter and its combining marks
// or between the parts of one emoji. A character that would straddle the
// limit is dropped whole. `s` itself when it fits; empty when `bytes` <= 0.
// A cut among code points 0-127 falls at `bytes` exactly, as it always did,
// even between CR and LF.
QString cut_to_bytes(const QString& s, qsizetype bytes);

// `s` into the `width` bytes at `out`: cut as cut_to_bytes cuts, then blanks
// to the width.
void put_field_text(char* out, qsizetype width, const QString& s);

// The text of the `width` bytes at `in`, padding included. UTF-8 when the
// bytes are valid UTF-8; otherwise Latin-1, byte for character, which is what
// calendar files written before UTF-8 hold. Decided field by field.
QString field_text(const char* in, qsizetype width);

namespace detail {
QString decode_8bit(const char* in, qsizetype width);
}

// The planners read fields on every repaint, and nearly every field is ASCII
// (dates, times, keys): those skip the validation.
inline QString field_text(const char* in, qsizetype width) {
    for (qsizetype i = 0; i < width; ++i)
        if (static_cast<unsigned char>(in[i]) >= 0x80) return detail::decode_8bit(in, width);
    return QString::fromLatin1(in, width);
}

} // namespace orva
