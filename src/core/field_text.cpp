#include "core/field_text.h"

#include <QByteArrayView>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <cstring>

namespace orva {
namespace {

// UTF-8 bytes of the code point that starts at s[i]; `units` gets the UTF-16
// units it spans.
int code_point_bytes(QStringView s, qsizetype i, int& units) {
    const char16_t u = s[i].unicode();
    units = 1;
    if (u < 0x80) return 1;
    if (u < 0x800) return 2;
    if (QChar::isHighSurrogate(u) && i + 1 < s.size() &&
        QChar::isLowSurrogate(s[i + 1].unicode())) {
        units = 2;
        return 4;
    }
    // Qt's encoder writes a lone surrogate as '?'.
    if (QChar::isSurrogate(u)) return 1;
    return 3;
}

bool is_ascii(QStringView s) {
    return std::all_of(s.begin(), s.end(), [](QChar c) { return c.unicode() < 0x80; });
}

} // namespace

qsizetype utf8_size(QStringView s) {
    qsizetype bytes = 0;
    int units = 1;
    for (qsizetype i = 0; i < s.size(); i += units)
        bytes += code_point_bytes(s, i, units);
    return bytes;
}

QString cut_to_bytes(const QString& s, qsizetype bytes) {
    if (bytes <= 0) return {};
    qsizetype used = 0, end = 0;
    int units = 1;
    while (end < s.size()) {
        const int need = code_point_bytes(s, end, units);
        if (used + need > bytes) break;
        used += need;
        end += units;
    }
    if (end == s.size()) return s;
    // Plain text is cut at the width as it always was, even between CR and
    // LF, and needs no boundary search.
    if (is_ascii(QStringView(s).first(end + 1))) return s.left(end);
    QTextBoundaryFinder chars(QTextBoundaryFinder::Grapheme, s);
    chars.setPosition(end);
    if (!chars.isAtBoundary()) end = std::max<qsizetype>(chars.toPreviousBoundary(), 0);
    return s.left(end);
}

void put_field_text(char* out, qsizetype width, const QString& s) {
    qsizetype n = 0;
    if (is_ascii(s)) {
        n = std::min(s.size(), width);
        for (qsizetype i = 0; i < n; ++i)
            out[i] = char(s[i].unicode());
    } else {
        const QByteArray b = cut_to_bytes(s, width).toUtf8();
        n = std::min(b.size(), width);
        std::memcpy(out, b.constData(), size_t(n));
    }
    std::memset(out + n, ' ', size_t(width - n));
}

namespace detail {

QString decode_8bit(const char* in, qsizetype width) {
    if (QByteArrayView(in, width).isValidUtf8()) return QString::fromUtf8(in, width);
    return QString::fromLatin1(in, width);
}

} // namespace detail
} // namespace orva
