#pragma once

#include "store/records.h"

#include <QByteArray>
#include <QByteArrayView>
#include <algorithm>

namespace orva {

// The member format: a line is the record's fields in order with nothing
// between them, exactly as wide as the record, then CR LF. No header, no count,
// no end mark. Text is 8-bit, UTF-8, and every width counts bytes; a field
// written as Latin-1 by an older build still reads (see field_text).

inline constexpr char line_end[] = "\r\n";
inline constexpr int line_end_len = 2;

// The widths of the fields in line order.
inline constexpr int appt_widths[] = {8, 8, 5, 5, 12, 50, 15, 2, 2, 2, 8, 2, 2, 2, 150, 200, 2};
inline constexpr int rmdr_widths[] = {8, 5, 5, 12, 50, 15, 8, 8, 5, 1, 2, 150, 2};

// A record as one line, without its ending.
QByteArray appt_line(const appt_rec& r);
QByteArray rmdr_line(const rmdr_rec& r);

// Reads a member's bytes by count, not by line, so a field may hold any
// character, a line end included, as long as every line keeps its width.
class MemberReader {
  public:
    // The reader looks into `member`, which must outlive it.
    explicit MemberReader(QByteArrayView member) : data_(member) {}

    // Exactly `count` bytes, or what is left when fewer remain.
    QByteArrayView read(int count) {
        const qsizetype n = std::clamp<qsizetype>(count, 0, data_.size() - pos_);
        const QByteArrayView out = data_.sliced(pos_, n);
        pos_ += n;
        return out;
    }
    bool at_end() const { return pos_ >= data_.size(); }

    // One record, field by field, then `rec_end_len` bytes into `rec_end`.
    // A short last line leaves its missing fields blank and returns false; a
    // line whose fields are all there but whose ending is missing is whole.
    bool read_appt(appt_rec& r, QByteArray& rec_end, int rec_end_len);
    bool read_rmdr(rmdr_rec& r, QByteArray& rec_end, int rec_end_len);

  private:
    QByteArrayView data_;
    qsizetype pos_ = 0;
};

} // namespace orva
