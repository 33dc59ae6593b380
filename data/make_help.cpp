// Packs the help viewer's archive, Calendar.hlp1, from the sources in
// data/help: the index (index.txt) and one HTML file per topic (topics/).
// The build runs it whenever a source changes and writes the archive into
// the build tree (build/data/Calendar.hlp1), where the program finds it;
// `cmake --install` installs it with the other data files. By hand:
//
//   <build dir>/data/make_help data/help <archive>
//
// index.txt has one line per line of the viewer's outline, in order:
//
//   level | file | caption
//
// level 1 for the top of the outline, 2 under the line before of level 1;
// file "Label" for a heading that has no page of its own, else the topic's
// path below data/help ("topics/find.html"), which is also its member name;
// blank lines and lines starting with "#" are passed over.
//
// A topic source is the body of a page in the rich-text subset Qt reads
// (headings, paragraphs, lists, tables, bold, links). The packer wraps it
// into a page with the house style. A link to another topic names it as the
// index does: <a href="topics/find.html">.
//
// The packer refuses (and writes nothing) when the index names a file that
// is missing or twice, when a topic is not in the index, when a link leads
// to no topic of the index, or when the first line of the outline is a
// heading: the viewer opens on that line, and a heading has no page.
//
// The members' dates are those of SOURCE_DATE_EPOCH when it is set, else
// the newest source's, so the same sources pack into the same members.

#include "core/clock.h"
#include "grid/grid.h"
#include "store/archive.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <QTextStream>
#include <cstdio>
#include <sqlite3.h>
#include <vector>

namespace {

struct Line {
    int level = 1;
    QString file;
    QString caption;
    int source_line = 0;
};

const QString label = QStringLiteral("Label");

// The house style. Qt's rich text knows a subset of CSS: type and class
// selectors, colours, margins and font sizes.
const char* page_style = R"(
body { font-size: 11pt; }
h1 { font-size: 17pt; color: #1d4f7a; margin-bottom: 10px; }
h2 { font-size: 13pt; color: #1d4f7a; margin-top: 16px; margin-bottom: 6px; }
p { margin-top: 4px; margin-bottom: 8px; }
li { margin-bottom: 4px; }
td { padding: 3px; vertical-align: top; }
th { padding: 3px; background-color: #e4ecf4; text-align: left; }
.tip { background-color: #fff6d5; }
.keys { font-family: monospace; }
)";

void fail(const QString& what) {
    std::fprintf(stderr, "make_help: %s\n", qPrintable(what));
}

bool read_text(const QString& path, QString& text) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return false;
    text = QString::fromUtf8(f.readAll());
    return true;
}

QString html_escape(const QString& s) {
    return s.toHtmlEscaped();
}

QString page(const Line& line, const QString& body) {
    return QStringLiteral("<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\">\n<title>") +
           html_escape(line.caption) + QStringLiteral("</title>\n<style>") +
           QString::fromLatin1(page_style) + QStringLiteral("</style></head>\n<body>\n") + body +
           QStringLiteral("</body></html>\n");
}

bool read_index(const QString& source_dir, std::vector<Line>& lines) {
    QString text;
    const QString path = QDir(source_dir).filePath(QStringLiteral("index.txt"));
    if (!read_text(path, text)) {
        fail(QStringLiteral("cannot read ") + path);
        return false;
    }
    const QStringList rows = text.split(QLatin1Char('\n'));
    bool ok = true;
    for (int n = 0; n < rows.size(); ++n) {
        const QString row = rows[n].trimmed();
        if (row.isEmpty() || row.startsWith(QLatin1Char('#'))) continue;
        const QStringList parts = row.split(QLatin1Char('|'));
        Line line;
        line.source_line = n + 1;
        bool number = false;
        if (parts.size() == 3) {
            line.level = parts[0].trimmed().toInt(&number);
            line.file = parts[1].trimmed();
            line.caption = parts[2].trimmed();
        }
        if (!number || line.level < 1 || line.file.isEmpty() || line.caption.isEmpty()) {
            fail(QStringLiteral("index.txt line %1: want \"level | file | caption\"").arg(n + 1));
            ok = false;
            continue;
        }
        lines.push_back(line);
    }
    if (lines.empty()) {
        fail(QStringLiteral("index.txt lists no topic"));
        return false;
    }
    if (lines.front().file == label) {
        fail(QStringLiteral("the first line of the outline must be a topic, not a heading"));
        ok = false;
    }
    return ok;
}

// The newest modification time among the sources, in seconds.
qint64 newest(const QString& source_dir) {
    qint64 t = 0;
    QDir dir(source_dir);
    QStringList files{QStringLiteral("index.txt")};
    for (const QString& f :
         QDir(dir.filePath(QStringLiteral("topics"))).entryList(QDir::Files, QDir::Name))
        files << QStringLiteral("topics/") + f;
    for (const QString& f : files)
        t = std::max(t, QFileInfo(dir.filePath(f)).lastModified().toSecsSinceEpoch());
    return t;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_help <help source folder> <Calendar.hlp1>\n");
        return 2;
    }
    const QString source_dir = QString::fromLocal8Bit(argv[1]);
    const QString target = QString::fromLocal8Bit(argv[2]);

    std::vector<Line> lines;
    if (!read_index(source_dir, lines)) return 1;

    bool ok = true;
    QSet<QString> indexed;
    for (const Line& line : lines) {
        if (line.file == label) continue;
        if (!line.file.contains(QLatin1Char('/'))) {
            // The viewer finds a topic's name after its last "/".
            fail(QStringLiteral("index.txt line %1: %2 needs a folder in its path")
                     .arg(line.source_line)
                     .arg(line.file));
            ok = false;
        }
        if (indexed.contains(line.file)) {
            fail(QStringLiteral("index.txt line %1: %2 is listed twice")
                     .arg(line.source_line)
                     .arg(line.file));
            ok = false;
        }
        indexed.insert(line.file);
    }
    const QDir topics(QDir(source_dir).filePath(QStringLiteral("topics")));
    for (const QString& f : topics.entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name)) {
        if (!indexed.contains(QStringLiteral("topics/") + f)) {
            fail(QStringLiteral("topics/%1 is not in index.txt: nobody could reach it").arg(f));
            ok = false;
        }
    }

    static const QRegularExpression href(QStringLiteral("href=\"([^\"]*)\""));
    std::vector<std::pair<QString, QByteArray>> members;
    for (const Line& line : lines) {
        if (line.file == label) continue;
        QString body;
        if (!read_text(QDir(source_dir).filePath(line.file), body)) {
            fail(QStringLiteral("index.txt line %1: cannot read %2")
                     .arg(line.source_line)
                     .arg(line.file));
            ok = false;
            continue;
        }
        for (auto it = href.globalMatch(body); it.hasNext();) {
            const QString to = it.next().captured(1);
            if (!indexed.contains(to)) {
                fail(QStringLiteral("%1 links to %2, which is no topic of the index")
                         .arg(line.file, to));
                ok = false;
            }
        }
        members.emplace_back(line.file, page(line, body).toUtf8());
    }
    if (!ok) return 1;

    orva::Grid index(int(lines.size()) + 1, 3);
    index.setFixedRows(1);
    index.setTextMatrix(0, 0, QStringLiteral("Level"));
    index.setTextMatrix(0, 1, QStringLiteral("File"));
    index.setTextMatrix(0, 2, QStringLiteral("Caption"));
    for (size_t i = 0; i < lines.size(); ++i) {
        const int row = int(i) + 1;
        index.setTextMatrix(row, 0, QString::number(lines[i].level));
        index.setTextMatrix(row, 1, lines[i].file);
        index.setTextMatrix(row, 2, lines[i].caption);
    }

    bool epoch_set = false;
    const qint64 epoch = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&epoch_set);
    orva::FixedClock packed(QDateTime::fromSecsSinceEpoch(epoch_set ? epoch : newest(source_dir)));
    orva::install_clock(&packed);

    // Written beside the target and renamed over it, so a build stopped
    // half-way never leaves an archive the program would take as whole.
    const QString part = target + QStringLiteral(".part");
    for (const char* suffix : {"", "-wal", "-shm", "-journal"})
        QFile::remove(part + QLatin1String(suffix));
    int e = 0;
    {
        orva::Archive archive;
        orva::Archive::Command command(archive, part);
        e = archive.put(part, QStringLiteral("help.idx"), index.save_bytes());
        for (const auto& [name, bytes] : members)
            if (e == 0) e = archive.put(part, name, bytes);
        const int finished = command.finish();
        if (e == 0) e = finished;
    }
    orva::install_clock(nullptr);
    if (e != 0) {
        fail(QStringLiteral("cannot write %1: error %2").arg(part).arg(e));
        QFile::remove(part);
        return 1;
    }
    // The store leaves its files in WAL mode. A shipped file in that mode
    // cannot be read where it may not be written (an installed share
    // folder), and every reader would leave a log and an index beside the
    // user's copy.
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(QFile::encodeName(part).constData(), &db, SQLITE_OPEN_READWRITE, nullptr) !=
            SQLITE_OK ||
        sqlite3_exec(db, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr) != SQLITE_OK) {
        fail(QStringLiteral("cannot set the journal of %1: %2")
                 .arg(part, QString::fromUtf8(sqlite3_errmsg(db))));
        sqlite3_close(db);
        QFile::remove(part);
        return 1;
    }
    sqlite3_close(db);
    QFile::remove(target);
    if (!QFile::rename(part, target)) {
        fail(QStringLiteral("cannot move %1 to %2").arg(part, target));
        return 1;
    }
    std::printf("make_help: %zu topics in %s\n", members.size(), qPrintable(target));
    return 0;
}
