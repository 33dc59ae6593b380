#pragma once

#include <QProcess>
#include <QRegularExpression>
#include <QString>
#include <gtest/gtest.h>

namespace orva::testing {

// What is on a printed PDF, read back with poppler's tools (poppler-utils,
// which scripts/install-deps.sh installs).

// The text of the file laid out as on its pages, pages parted by a form
// feed; empty (and the test failed) when it cannot be read. Ligatures the
// fonts drew ("fi" as one glyph) come back as their letters.
inline QString pdf_text(const QString& path) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    if (!p.waitForFinished(30000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
        ADD_FAILURE() << "pdftotext could not read " << path.toStdString()
                      << " (is poppler-utils installed?)";
        return {};
    }
    return QString::fromUtf8(p.readAllStandardOutput()).normalized(QString::NormalizationForm_KC);
}

// The number of pages pdfinfo counts; -1 (and the test failed) when it
// cannot read the file.
inline int pdf_pages(const QString& path) {
    QProcess p;
    p.start(QStringLiteral("pdfinfo"), {path});
    if (!p.waitForFinished(30000) || p.exitCode() != 0) {
        ADD_FAILURE() << "pdfinfo could not read " << path.toStdString()
                      << " (is poppler-utils installed?)";
        return -1;
    }
    static const QRegularExpression pages(QStringLiteral("^Pages:\\s+(\\d+)"),
                                          QRegularExpression::MultilineOption);
    const auto m = pages.match(QString::fromUtf8(p.readAllStandardOutput()));
    return m.hasMatch() ? m.captured(1).toInt() : -1;
}

// The page size pdfinfo reports, in points ("612 x 792").
inline QString pdf_page_size(const QString& path) {
    QProcess p;
    p.start(QStringLiteral("pdfinfo"), {path});
    if (!p.waitForFinished(30000) || p.exitCode() != 0) return {};
    static const QRegularExpression size(QStringLiteral("^Page size:\\s+([0-9.]+ x [0-9.]+)"),
                                         QRegularExpression::MultilineOption);
    const auto m = size.match(QString::fromUtf8(p.readAllStandardOutput()));
    return m.hasMatch() ? m.captured(1) : QString();
}

// The text's lines with their blanks run together, for comparing lines
// whatever room the layout gave between their pieces.
inline QStringList pdf_lines(const QString& text) {
    QStringList out;
    for (const QString& line : text.split(QLatin1Char('\n')))
        if (!line.trimmed().isEmpty()) out << line.simplified();
    return out;
}

} // namespace orva::testing
