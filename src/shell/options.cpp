#include "shell/options.h"

#include "core/clock.h"
#include "core/modal.h"

#include <QStringList>

namespace orva {
namespace {

QString flag_text(bool b) {
    return b ? QStringLiteral("True") : QStringLiteral("False");
}

QString date_text(const QDate& d) {
    return d.toString(QStringLiteral("MMddyyyy"));
}

void fonts_from_grid(AppState& s) {
    s.grid_font_name = s.vsSched.FontName();
    s.grid_font_size = QString::number(s.vsSched.FontSize());
    s.grid_font_color = QString::number(s.vsSched.ForeColor());
    s.grid_font_bold = s.vsSched.FontBold();
    s.grid_font_italic = s.vsSched.FontItalic();
}

// The planners share one font; the week and month grid follow the day grid.
void fonts_to_grids(AppState& s) {
    for (Grid* g : {&s.vsSched, &s.vsOvervw}) {
        if (!s.grid_font_name.isEmpty()) g->setFontName(s.grid_font_name);
        bool ok = false;
        const double size = s.grid_font_size.toDouble(&ok);
        if (ok && size > 0) g->setFontSize(size);
        const qulonglong color = s.grid_font_color.toULongLong(&ok);
        if (ok) g->setForeColor(Color(color));
        g->setFontBold(s.grid_font_bold);
        g->setFontItalic(s.grid_font_italic);
    }
}

// Cells of the row in column order, as default_options and save_options
// write them.
QStringList row_of(const AppState& s, const WindowPort& w) {
    return {s.skin_name,
            QString::number(s.anim_speed),
            QString::number(s.appt_back_color),
            s.appt_color_mode,
            flag_text(s.menus.mnuTips),
            s.grid_font_name,
            s.grid_font_size,
            s.grid_font_color,
            flag_text(s.grid_font_bold),
            flag_text(s.grid_font_italic),
            s.start_view,
            s.show_times,
            s.last_used_date,
            QString::number(s.form_height),
            QString::number(s.form_width),
            QString::number(s.form_top),
            QString::number(s.form_left),
            QString::number(s.form_state),
            flag_text(w.status_bar_visible()),
            flag_text(s.menus.mnuStart)};
}

int int_or(const QString& text, int fallback) {
    bool ok = false;
    const int v = text.trimmed().toInt(&ok);
    return ok ? v : fallback;
}

} // namespace

void load_options(AppState& s, WindowPort& w) {
    s.archive.clear_error();
    QByteArray row;
    const int e = s.archive.get(s.cal_path, options_member, row);
    if (e == err::not_found) {
        default_options(s, w);
        apply_options(s, w);
        return;
    }
    s.vsSettings.clear_error();
    // A member that cannot be read or parsed leaves the grid as it was; an
    // empty one takes the defaults.
    if (e == err::none) s.vsSettings.load_bytes(row);
    if (s.vsSettings.Rows() == 0) default_options(s, w);
    apply_options(s, w);
}

void apply_options(AppState& s, WindowPort& w) {
    Grid& g = s.vsSettings;
    g.clear_error();
    bool failed = false;
    // A stored row from an older version lacks columns: every read past its
    // end fails, and the failure is what triggers the repair below.
    auto cell = [&](int col) {
        g.clear_error();
        const QString v = g.TextMatrix(0, col);
        if (g.error() != err::none) failed = true;
        return v;
    };

    s.skin_name = cell(0);
    const qint16 speed = qint16(int_or(cell(1), s.anim_speed));
    {
        bool ok = false;
        const qulonglong c = cell(2).trimmed().toULongLong(&ok);
        if (ok) s.appt_back_color = Color(c);
    }

    const QString mode = cell(3);
    if (mode == u"1") {
        s.menus.mnuColorY = true;
        s.menus.mnuColorSelect = false;
    } else if (mode == u"2") {
        s.menus.mnuColorY = false;
        s.menus.mnuColorSelect = true;
    } else if (mode == u"3") {
        // There is no menu state for "no colour" on load: it shows as the
        // chosen-colour entry, the same as "2".
        s.menus.mnuColorY = false;
        s.menus.mnuColorSelect = true;
    }
    s.appt_color_mode = mode;

    s.menus.mnuTips = cell(4) == u"True";

    if (cell(5).isEmpty()) {
        fonts_from_grid(s);
    } else {
        s.grid_font_name = cell(5);
        s.grid_font_size = cell(6);
        s.grid_font_color = cell(7);
        s.grid_font_bold = cell(8) == u"True";
        s.grid_font_italic = cell(9) == u"True";
    }

    s.start_view = cell(10);
    s.show_times = cell(11);
    s.last_used_date = cell(12);

    const QRect area = w.work_area();
    const QString h = cell(13), wd = cell(14), t = cell(15), l = cell(16), st = cell(17);
    s.form_height = h.isEmpty() ? 8550 : int_or(h, 8550);
    s.form_width = wd.isEmpty() ? 11910 : int_or(wd, 11910);
    s.form_top = t.isEmpty() ? area.top() : int_or(t, area.top());
    s.form_left = l.isEmpty() ? area.left() : int_or(l, area.left());
    s.form_state = st.isEmpty() ? 0 : int_or(st, 0);

    const bool bar = cell(18) == u"True";
    s.menus.mnuStat = bar;
    w.set_status_bar_visible(bar);
    s.menus.mnuStart = cell(19) == u"True";

    if (failed) {
        // The shorter row is replaced whole, in one command.
        Archive::Command command(s.archive, s.cal_path);
        (void)s.archive.drop(s.cal_path, options_member);
        g.setCols(options_cols);
        save_options(s, w);
        if (const int e = command.finish()) report_options_error(s, e);
    }

    s.anim_speed = speed;
    // Skins are chosen by name here once the skin commands exist; until then
    // skin_name is carried through the row unchanged.
    if (s.appt_color_mode == u"3") s.appt_back_color = s.vsSched.BackColor();
    fonts_to_grids(s);
    s.work_start = QStringLiteral("8:00:00 AM");
    s.work_end = QStringLiteral("5:00:00 PM");
    s.view_month = s.view_week = s.view_day = false;
    s.menus.mnuShowTimes = s.show_times == u"T";
    if (s.last_used_date.isEmpty()) s.last_used_date = date_text(clock().today());
    w.sync_menus();
}

void default_options(AppState& s, WindowPort& w) {
    s.appt_back_color = 65535;
    s.appt_color_mode = QStringLiteral("1");
    fonts_from_grid(s);
    s.start_view = QStringLiteral("dayvw");
    s.show_times = QStringLiteral("T");
    s.last_used_date = date_text(clock().today());
    const QRect area = w.work_area();
    s.form_height = int(area.height() * 0.9);
    s.form_width = int(area.width() * 0.9);
    s.form_top = area.top();
    s.form_left = area.left();
    s.form_state = 0;
    // Not lowered here: start-up lowers it at its end, and after a Restore it
    // stays up until the program ends.
    s.startup_move = true;
    w.move_to(QRect(s.form_left, s.form_top, s.form_width, s.form_height));
    s.vsSettings.setCols(options_cols);
    s.skin_name = QStringLiteral("mnuStdWindows");
    s.anim_speed = 1;
    s.vsSettings.AddItem(row_of(s, w).join(QLatin1Char('\t')));
    save_options(s, w);
}

void save_options(AppState& s, WindowPort& w) {
    s.start_view = s.view_month  ? QStringLiteral("mthvw")
                   : s.view_week ? QStringLiteral("weekvw")
                                 : QStringLiteral("dayvw");
    s.show_times = s.menus.mnuShowTimes ? QStringLiteral("T") : QStringLiteral("F");
    const QRect f = w.frame();
    s.form_height = f.height();
    s.form_width = f.width();
    s.form_top = f.top();
    s.form_left = f.left();

    Grid& g = s.vsSettings;
    if (g.Rows() < 1) g.setRows(1);
    if (g.Cols() < options_cols) g.setCols(options_cols);
    QStringList row = row_of(s, w);
    row[12] = date_text(clock().today());
    for (int c = 0; c < options_cols; ++c)
        g.setTextMatrix(0, c, row[c]);

    s.archive.clear_error();
    Archive::Command command(s.archive, s.cal_path);
    int e = s.archive.put(s.cal_path, options_member, g.save_bytes());
    const int committed = command.finish();
    if (e == err::none) e = committed;
    if (e != err::none) report_options_error(s, e);
}

void report_options_error(AppState& s, int e) {
    // Told once at start that this calendar cannot be written, the user is
    // not told again at every resize that moves the window.
    if (s.cal_read_only && e == err::denied) return;
    modal().message(QStringLiteral("Error saving settings. Error Number : ") + QString::number(e),
                    MsgStyle::Critical);
}

} // namespace orva
