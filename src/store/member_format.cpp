#include "store/member_format.h"

#include <cstddef>
#include <cstring>
#include <iterator>

namespace orva {
namespace {

template <typename Rec, size_t K>
bool read_fields(MemberReader& in, Rec& r, const int (&widths)[K]) {
    char* at = reinterpret_cast<char*>(&r);
    bool whole = true;
    for (int w : widths) {
        const QByteArrayView field = in.read(w);
        // An empty view may carry no pointer at all, and memcpy from null is
        // undefined even for no bytes.
        if (!field.isEmpty()) std::memcpy(at, field.constData(), size_t(field.size()));
        std::memset(at + field.size(), ' ', size_t(w - field.size()));
        if (field.size() < w) whole = false;
        at += w;
    }
    return whole;
}

constexpr int sum(const int* w, size_t n) {
    return n == 0 ? 0 : w[0] + sum(w + 1, n - 1);
}
static_assert(sum(appt_widths, std::size(appt_widths)) == appt_line_width);
static_assert(sum(rmdr_widths, std::size(rmdr_widths)) == rmdr_line_width);
// Lines are copied straight from the records, so the struct layout must be the
// line layout, column for column.
static_assert(offsetof(appt_rec, appt_id) == 26 && offsetof(appt_rec, appt_rem_text) == 123 &&
              offsetof(appt_rec, appt_notes) == 273 && offsetof(appt_rec, appt_pattern) == 473);
static_assert(offsetof(rmdr_rec, rmdr_id) == 18 && offsetof(rmdr_rec, rmdr_date) == 103 &&
              offsetof(rmdr_rec, rmdr_fired) == 116 && offsetof(rmdr_rec, rmdr_again_count) == 269);

} // namespace

QByteArray appt_line(const appt_rec& r) {
    return QByteArray(reinterpret_cast<const char*>(&r), appt_line_width);
}

QByteArray rmdr_line(const rmdr_rec& r) {
    return QByteArray(reinterpret_cast<const char*>(&r), rmdr_line_width);
}

bool MemberReader::read_appt(appt_rec& r, QByteArray& rec_end, int rec_end_len) {
    const bool whole = read_fields(*this, r, appt_widths);
    rec_end = read(rec_end_len).toByteArray();
    return whole;
}

bool MemberReader::read_rmdr(rmdr_rec& r, QByteArray& rec_end, int rec_end_len) {
    const bool whole = read_fields(*this, r, rmdr_widths);
    rec_end = read(rec_end_len).toByteArray();
    return whole;
}

} // namespace orva
