#include "help/help.h"

#include "core/errors.h"
#include "store/archive.h"

#include <QDir>
#include <QLoggingCategory>

namespace orva {

namespace {

Q_LOGGING_CATEGORY(lcHelp, "orvacal.help")

QString file_box_tail(const HelpForm& f) {
    return QStringLiteral("  File ") + f.hlp_path + QStringLiteral(" archive ") + f.idx_path;
}

bool is_label(const HelpForm& f, int index_row) {
    return f.vsHelpHold.TextMatrix(index_row, help_col::file) == help_label;
}

int line_count(const HelpForm& f) {
    return int(f.vsHelpIndex.size());
}

// Step 7 of the opening: line 0 lit as the one shown.
void light_first_line(HelpForm& f) {
    f.priorCmd_enabled = false;
    if (!f.vsHelpIndex.empty()) f.vsHelpIndex[0].lit = true;
    f.cur_topic_row = 0;
    f.list_shown = true;
}

} // namespace

QString help_archive_path(const QString& app_path) {
    return QDir(app_path).filePath(help_archive_name);
}

QString help_index_path(const QString& app_path) {
    return QDir(app_path).filePath(help_index_member);
}

int read_help_member(const QString& app_path, const QString& member, QByteArray& bytes) {
    // An archive of its own, let go at once: the viewer holds no file open
    // while it shows a page.
    Archive archive;
    // The user's copy of the shipped file is read as it is, never touched:
    // no journal switch, no log beside it.
    archive.set_read_only(true);
    return archive.get(help_archive_path(app_path), member, bytes);
}

void Form_Load(HelpForm& f, const QString& app_path, const QString& topic) {
    f = HelpForm{};
    f.app_path = app_path;
    f.hlp_path = help_archive_path(app_path);
    f.idx_path = help_index_path(app_path);

    QByteArray bytes;
    const int read = read_help_member(app_path, help_index_member, bytes);
    if (read != 0) {
        qCWarning(lcHelp) << "cannot read the help index of" << f.hlp_path << "error" << read;
        modal().message(QStringLiteral("Error reading help file; ") + QString::number(read) +
                            file_box_tail(f),
                        MsgStyle::Critical);
    }
    // Nothing read is a file that was never extracted, which is not found.
    int loaded = read != 0 ? err::not_found : 0;
    if (loaded == 0 && !f.vsHelpHold.load_bytes(bytes)) loaded = f.vsHelpHold.error();
    if (loaded != 0) {
        modal().message(QStringLiteral("Error loading help file; ") + QString::number(loaded) +
                            file_box_tail(f),
                        MsgStyle::Critical);
    }
    f.vsHelpHold.clear_error();

    fill_index(f);

    int asked = -1;
    if (!topic.isEmpty())
        for (int r = 0; r < line_count(f) && asked < 0; ++r)
            if (f.vsHelpHold.TextMatrix(f.vsHelpIndex[r].index_row, help_col::file) == topic)
                asked = r;

    // An empty index has no row 1: the step that would load it falls away,
    // so the two boxes are all the user sees.
    if (asked < 0 && f.vsHelpHold.Rows() > 1)
        load_topic(f, f.vsHelpHold.TextMatrix(1, help_col::file));
    light_first_line(f);
    f.nextCmd_enabled = line_count(f) > 1;
    if (asked >= 0) vsHelpIndex_Click(f, asked);
}

void fill_index(HelpForm& f) {
    f.vsHelpIndex.clear();
    for (int i = 1; i < f.vsHelpHold.Rows(); ++i) {
        HelpLine line;
        line.caption = f.vsHelpHold.TextMatrix(i, help_col::caption);
        line.index_row = i;
        line.level = f.vsHelpHold.TextMatrix(i, help_col::level).trimmed().toInt();
        if (line.level < 1) line.level = 1;
        f.vsHelpIndex.push_back(line);
    }
    f.vsHelpHold.clear_error();
    f.cursor = f.vsHelpIndex.empty() ? -1 : 0;
}

void load_topic(HelpForm& f, const QString& path) {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    if (slash < 0) {
        modal().message(help_no_separator_text, MsgStyle::Critical);
        return;
    }
    f.hlp_path = help_archive_path(f.app_path);
    QByteArray bytes;
    const int e = read_help_member(f.app_path, path, bytes);
    if (e != 0) {
        qCWarning(lcHelp) << "cannot read the help topic" << path << "error" << e;
        modal().message(help_extract_failed_text, MsgStyle::Critical);
        return;
    }
    f.rtfContents = QString::fromUtf8(bytes);
}

void vsHelpIndex_Click(HelpForm& f, int r) {
    if (r < 0 || r >= line_count(f)) return;
    f.cursor = r;
    const int index_row = f.vsHelpIndex[r].index_row;
    if (is_label(f, index_row)) return;

    f.nextCmd_enabled = true;
    f.priorCmd_enabled = true;
    if (r + 1 == line_count(f)) f.nextCmd_enabled = false;
    if (r < 1) f.priorCmd_enabled = false;

    if (f.cur_topic_row >= 0 && f.cur_topic_row < line_count(f)) {
        f.vsHelpIndex[f.cur_topic_row].lit = false;
        f.vsHelpIndex[f.cur_topic_row].open_book = false;
    }
    f.vsHelpIndex[r].lit = true;
    f.vsHelpIndex[r].open_book = true;
    f.cur_topic_row = r;

    f.topic_name = f.vsHelpHold.TextMatrix(index_row, help_col::file);
    load_topic(f, f.topic_name);
}

void nextCmd_Click(HelpForm& f) {
    if (f.cursor + 1 >= line_count(f)) {
        f.nextCmd_enabled = false;
        return;
    }
    vsHelpIndex_Click(f, f.cursor + 1);
}

void priorCmd_Click(HelpForm& f) {
    if (f.cursor < 1) {
        f.priorCmd_enabled = false;
        return;
    }
    vsHelpIndex_Click(f, f.cursor - 1);
}

void hlpCmd_Click(HelpForm& f) {
    f.list_shown = !f.list_shown;
    f.hlpCmd_caption = f.list_shown ? hide_topics_text : show_topics_text;
}

bool follow_link(HelpForm& f, const QString& href) {
    for (int r = 0; r < line_count(f); ++r) {
        if (f.vsHelpHold.TextMatrix(f.vsHelpIndex[r].index_row, help_col::file) == href) {
            vsHelpIndex_Click(f, r);
            return true;
        }
    }
    return false;
}

bool prtCmd_Click(HelpForm& f, bool text_selected) {
    f.print_setup.selection_enabled = text_selected;
    f.print_setup.selection = text_selected;
    return modal().print_dialog(f.print_setup);
}

std::vector<QString> Command1_Click(HelpForm& f) {
    f.print_setup.selection_enabled = false;
    f.print_setup.selection = false;
    if (!modal().print_dialog(f.print_setup)) return {};
    std::vector<QString> pages;
    for (const HelpLine& line : f.vsHelpIndex) {
        const QString file = f.vsHelpHold.TextMatrix(line.index_row, help_col::file);
        if (file == help_label) continue;
        QByteArray bytes;
        if (read_help_member(f.app_path, file, bytes) != 0) {
            qCWarning(lcHelp) << "cannot read the help topic" << file << "to print it";
            continue;
        }
        pages.push_back(QString::fromUtf8(bytes));
    }
    f.cursor = f.cur_topic_row;
    return pages;
}

void show_help(HelpState& help, const QString& topic) {
    help.help_topic = topic;
    modal().open_form(QStringLiteral("frmHelpIdx"));
    // The viewer takes the topic when it opens; one that never opened must
    // not hand it to the next opening.
    help.help_topic.clear();
}

} // namespace orva
