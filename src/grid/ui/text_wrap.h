#pragma once

#include <QString>
#include <QStringList>

namespace orva {

// The lines a text breaks into between words to fit `width`, no more than
// `max_lines`; when it needs more, the last line shown ends in an ellipsis.
// A word wider than a whole line is cut at the line's end. The screen
// measures in whole pixels (QFontMetrics), the printer in fractions
// (QFontMetricsF): both draw the same breaks.
template <typename Metrics, typename Width>
QStringList wrap_lines(const QString& text, const Metrics& fm, Width width, int max_lines) {
    const auto fit = [&](const QString& t) {
        return fm.horizontalAdvance(t) <= width ? t : fm.elidedText(t, Qt::ElideRight, width);
    };
    const QStringList words = text.split(QLatin1Char(' '));
    QStringList lines;
    QString line;
    bool open = false; // `line` holds words not yet in `lines`
    int next = 0;
    while (next < words.size() && lines.size() < max_lines) {
        const QString candidate = open ? line + QLatin1Char(' ') + words[next] : words[next];
        if (!open || fm.horizontalAdvance(candidate) <= width) {
            line = candidate;
            open = true;
            ++next;
            continue;
        }
        lines << fit(line);
        open = false;
    }
    if (open && lines.size() < max_lines) {
        lines << fit(line);
        open = false;
    }
    if ((open || next < words.size()) && !lines.isEmpty()) {
        // Words are left over: the last line shown says so.
        QString rest = lines.last();
        if (open) rest += QLatin1Char(' ') + line;
        for (int i = next; i < words.size(); ++i)
            rest += QLatin1Char(' ') + words[i];
        lines.last() = fm.elidedText(rest + QStringLiteral(" \u2026"), Qt::ElideRight, width);
    }
    return lines;
}

} // namespace orva
