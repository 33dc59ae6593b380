#include "state/options.h"

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

void fonts_from_grid(PlannerState& view, OptionsState& options) {
    options.grid_font_name = view.vsSched.FontName();
    options.grid_font_size = QString::number(view.vsSched.FontSize());
    options.grid_font_color = QString::number(view.vsSched.ForeColor());
    options.grid_font_bold = view.vsSched.FontBold();
    options.grid_font_italic = view.vsSched.FontItalic();
}

// The planners share one font; the week and month grid follow the day grid.
void fonts_to_grids(PlannerState& view, const OptionsState& options) {
    for (Grid* g : {&view.vsSched, &view.vsOvervw}) {
        if (!options.grid_font_name.isEmpty()) g->setFontName(options.grid_font_name);
        bool ok = false;
        const double size = options.grid_font_size.toDouble(&ok);
        if (ok && size > 0) g->setFontSize(size);
        if (const auto color = font_color(options)) g->setForeColor(*color);
        g->setFontBold(options.grid_font_bold);
        g->setFontItalic(options.grid_font_italic);
    }
}

// Cells of the row in column order, as default_options and save_options
// write them.
QStringList row_of(const OptionsState& options, const WindowPort& w) {
    return {options.skin_name,
            QString::number(options.anim_speed),
            QString::number(options.appt_back_color),
            options.appt_color_mode,
            flag_text(options.menus.mnuTips),
            options.grid_font_name,
            options.grid_font_size,
            options.grid_font_color,
            flag_text(options.grid_font_bold),
            flag_text(options.grid_font_italic),
            options.start_view,
            options.show_times,
            options.last_used_date,
            QString::number(options.form_height),
            QString::number(options.form_width),
            QString::number(options.form_top),
            QString::number(options.form_left),
            QString::number(options.form_state),
            flag_text(w.status_bar_visible()),
            flag_text(options.menus.mnuStart)};
}

int int_or(const QString& text, int fallback) {
    bool ok = false;
    const int v = text.trimmed().toInt(&ok);
    return ok ? v : fallback;
}

} // namespace

void load_options(Shared& store, PlannerState& view, OptionsState& options, RunState& run,
                  WindowPort& w) {
    store.archive.clear_error();
    QByteArray row;
    const int e = store.archive.get(store.cal_path, options_member, row);
    if (e == err::not_found) {
        default_options(store, view, options, run, w);
        apply_options(store, view, options, w);
        return;
    }
    options.vsSettings.clear_error();
    // A member that cannot be read or parsed leaves the grid as it was; an
    // empty one takes the defaults.
    if (e == err::none) options.vsSettings.load_bytes(row);
    if (options.vsSettings.Rows() == 0) default_options(store, view, options, run, w);
    apply_options(store, view, options, w);
}

void apply_options(Shared& store, PlannerState& view, OptionsState& options, WindowPort& w) {
    Grid& g = options.vsSettings;
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

    options.skin_name = cell(0);
    const qint16 speed = qint16(int_or(cell(1), options.anim_speed));
    {
        bool ok = false;
        const qulonglong c = cell(2).trimmed().toULongLong(&ok);
        if (ok) options.appt_back_color = Color(c);
    }

    const QString mode = cell(3);
    if (mode == u"1") {
        options.menus.mnuColorY = true;
        options.menus.mnuColorSelect = false;
    } else if (mode == u"2") {
        options.menus.mnuColorY = false;
        options.menus.mnuColorSelect = true;
    } else if (mode == u"3") {
        // There is no menu state for "no colour" on load: it shows as the
        // chosen-colour entry, the same as "2".
        options.menus.mnuColorY = false;
        options.menus.mnuColorSelect = true;
    }
    options.appt_color_mode = mode;

    options.menus.mnuTips = cell(4) == u"True";

    if (cell(5).isEmpty()) {
        fonts_from_grid(view, options);
    } else {
        options.grid_font_name = cell(5);
        options.grid_font_size = cell(6);
        options.grid_font_color = cell(7);
        options.grid_font_bold = cell(8) == u"True";
        options.grid_font_italic = cell(9) == u"True";
    }

    options.start_view = cell(10);
    options.show_times = cell(11);
    options.last_used_date = cell(12);

    const QRect area = w.work_area();
    const QString h = cell(13), wd = cell(14), t = cell(15), l = cell(16), st = cell(17);
    options.form_height = h.isEmpty() ? 8550 : int_or(h, 8550);
    options.form_width = wd.isEmpty() ? 11910 : int_or(wd, 11910);
    options.form_top = t.isEmpty() ? area.top() : int_or(t, area.top());
    options.form_left = l.isEmpty() ? area.left() : int_or(l, area.left());
    options.form_state = st.isEmpty() ? 0 : int_or(st, 0);

    const bool bar = cell(18) == u"True";
    options.menus.mnuStat = bar;
    w.set_status_bar_visible(bar);
    options.menus.mnuStart = cell(19) == u"True";

    if (failed) {
        // The shorter row is replaced whole, in one command.
        Archive::Command command(store.archive, store.cal_path);
        (void)store.archive.drop(store.cal_path, options_member);
        g.setCols(options_cols);
        save_options(store, view, options, w);
        if (const int e = command.finish()) report_options_error(store, e);
    }

    options.anim_speed = speed;
    w.select_skin();
    if (options.appt_color_mode == u"3") options.appt_back_color = view.vsSched.BackColor();
    fonts_to_grids(view, options);
    options.work_start = QStringLiteral("8:00:00 AM");
    options.work_end = QStringLiteral("5:00:00 PM");
    view.view_month = view.view_week = view.view_day = false;
    options.menus.mnuShowTimes = options.show_times == u"T";
    if (options.last_used_date.isEmpty()) options.last_used_date = date_text(clock().today());
    w.sync_menus();
}

void default_options(Shared& store, PlannerState& view, OptionsState& options, RunState& run,
                     WindowPort& w) {
    options.appt_back_color = 65535;
    options.appt_color_mode = QStringLiteral("1");
    fonts_from_grid(view, options);
    options.start_view = QStringLiteral("dayvw");
    options.show_times = QStringLiteral("T");
    options.last_used_date = date_text(clock().today());
    const QRect area = w.work_area();
    options.form_height = int(area.height() * 0.9);
    options.form_width = int(area.width() * 0.9);
    options.form_top = area.top();
    options.form_left = area.left();
    options.form_state = 0;
    // Not lowered here: start-up lowers it at its end, and after a Restore it
    // stays up until the program ends.
    run.startup_move = true;
    w.move_to(QRect(options.form_left, options.form_top, options.form_width, options.form_height));
    options.vsSettings.setCols(options_cols);
    options.skin_name = QStringLiteral("mnuStdWindows");
    options.anim_speed = 1;
    // Cell by cell: a font name taken from the grid may hold a tab.
    Grid& g = options.vsSettings;
    const QStringList row = row_of(options, w);
    const int r = g.Rows();
    g.setRows(r + 1);
    for (int c = 0; c < options_cols; ++c)
        g.setTextMatrix(r, c, row[c]);
    save_options(store, view, options, w);
}

void save_options(Shared& store, const PlannerState& view, OptionsState& options, WindowPort& w) {
    options.start_view = view.view_month  ? QStringLiteral("mthvw")
                         : view.view_week ? QStringLiteral("weekvw")
                                          : QStringLiteral("dayvw");
    options.show_times = options.menus.mnuShowTimes ? QStringLiteral("T") : QStringLiteral("F");
    // A save with no window to measure keeps the placement it has.
    if (const QRect f = w.frame(); f.isValid()) {
        options.form_height = f.height();
        options.form_width = f.width();
        options.form_top = f.top();
        options.form_left = f.left();
    }

    Grid& g = options.vsSettings;
    if (g.Rows() < 1) g.setRows(1);
    if (g.Cols() < options_cols) g.setCols(options_cols);
    QStringList row = row_of(options, w);
    row[12] = date_text(clock().today());
    for (int c = 0; c < options_cols; ++c)
        g.setTextMatrix(0, c, row[c]);

    store.archive.clear_error();
    Archive::Command command(store.archive, store.cal_path);
    int e = store.archive.put(store.cal_path, options_member, g.save_bytes());
    const int committed = command.finish();
    if (e == err::none) e = committed;
    if (e != err::none) report_options_error(store, e);
}

void report_options_error(const Shared& store, int e) {
    // Told once at start that this calendar cannot be written, the user is
    // not told again at every resize that moves the window.
    if (store.cal_read_only && e == err::denied) return;
    // Nor, with no calendar open, when the one found at start was refused.
    if (store.cal_refused && e == err::bad_name) return;
    modal().message(QStringLiteral("Error saving settings. Error Number : ") + QString::number(e),
                    MsgStyle::Critical);
}

} // namespace orva
