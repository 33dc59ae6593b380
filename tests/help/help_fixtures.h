#pragma once

#include "../support/scripted_modal.h"
#include "grid/grid.h"
#include "help/help.h"
#include "store/archive.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <map>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace orva::testing {

// A line of a help index as the packer writes it.
struct IndexRow {
    int level;
    QString file; // "Label" for a heading
    QString caption;
};

// An application folder of its own and a scripted seam, for the viewer.
struct HelpEnv {
    QTemporaryDir dir;
    ScriptedModal m;
    ModalGuard guard{&m};

    QString app_path() const { return dir.path(); }
    QString archive() const { return help_archive_path(dir.path()); }

    // Writes Calendar.hlp1 with `rows` as help.idx and each topic's page.
    void write_help(const std::vector<IndexRow>& rows, const std::map<QString, QString>& pages) {
        Grid index(int(rows.size()) + 1, 3);
        index.setTextMatrix(0, 0, QStringLiteral("Level"));
        index.setTextMatrix(0, 1, QStringLiteral("File"));
        index.setTextMatrix(0, 2, QStringLiteral("Caption"));
        for (size_t i = 0; i < rows.size(); ++i) {
            index.setTextMatrix(int(i) + 1, 0, QString::number(rows[i].level));
            index.setTextMatrix(int(i) + 1, 1, rows[i].file);
            index.setTextMatrix(int(i) + 1, 2, rows[i].caption);
        }
        // Packed elsewhere and copied in whole, as the program finds the
        // shipped file: nothing of the writing stands beside it.
        QTemporaryDir packing;
        const QString packed = packing.filePath(help_archive_name);
        {
            Archive a;
            Archive::Command command(a, packed);
            ASSERT_EQ(a.put(packed, help_index_member, index.save_bytes()), 0);
            for (const auto& [name, html] : pages)
                ASSERT_EQ(a.put(packed, name, html.toUtf8()), 0);
            ASSERT_EQ(command.finish(), 0);
        }
        ASSERT_TRUE(rollback_journal(packed));
        QFile::remove(archive());
        ASSERT_TRUE(QFile::copy(packed, archive()));
    }

    // A small book: a first topic, a heading with two topics under it, and a
    // last topic at the top level again.
    //   line 0  A  "topics/a.html"
    //   line 1  Label "Planners"
    //   line 2    B "topics/b.html"
    //   line 3    C "topics/c.html"
    //   line 4  D  "topics/d.html"
    void write_small_book() {
        write_help({{1, QStringLiteral("topics/a.html"), QStringLiteral("Welcome")},
                    {1, QStringLiteral("Label"), QStringLiteral("Planners")},
                    {2, QStringLiteral("topics/b.html"), QStringLiteral("Day planner")},
                    {2, QStringLiteral("topics/c.html"), QStringLiteral("Week planner")},
                    {1, QStringLiteral("topics/d.html"), QStringLiteral("Keys")}},
                   {{QStringLiteral("topics/a.html"), page(QStringLiteral("Welcome"))},
                    {QStringLiteral("topics/b.html"), page(QStringLiteral("Day planner"))},
                    {QStringLiteral("topics/c.html"),
                     page(QStringLiteral("Week planner"),
                          QStringLiteral("<p>See <a href=\"topics/d.html\">the keys</a>.</p>"))},
                    {QStringLiteral("topics/d.html"), page(QStringLiteral("Keys"))}});
    }

    // The journal the packer leaves a shipped file with.
    static bool rollback_journal(const QString& path) {
        sqlite3* db = nullptr;
        const bool ok =
            sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READWRITE,
                            nullptr) == SQLITE_OK &&
            sqlite3_exec(db, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr) == SQLITE_OK;
        sqlite3_close(db);
        return ok;
    }

    static QString page(const QString& title, const QString& more = {}) {
        return QStringLiteral("<html><body><h1>") + title + QStringLiteral("</h1><p>About ") +
               title + QStringLiteral(".</p>") + more + QStringLiteral("</body></html>");
    }

    // The archive the build packed from data/help, copied in.
    void copy_shipped_help() {
        ASSERT_TRUE(QFile::copy(QStringLiteral(ORVACAL_HELP_ARCHIVE), archive()))
            << ORVACAL_HELP_ARCHIVE;
    }

    // What stands in the application folder, names and sizes.
    std::string folder() const {
        QStringList out;
        for (const QFileInfo& i :
             QDir(dir.path())
                 .entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden,
                                QDir::Name))
            out << i.fileName() + QLatin1Char(' ') + QString::number(i.size());
        return out.join(QStringLiteral(", ")).toStdString();
    }
};

// The heading of a page as the viewer holds it.
inline bool shows(const HelpForm& f, const QString& title) {
    return f.rtfContents.contains(QStringLiteral("<h1>") + title + QStringLiteral("</h1>"));
}

} // namespace orva::testing
