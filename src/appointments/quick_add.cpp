#include "appointments/quick_add.h"

#include "core/modal.h"
#include "views/day_view.h"

namespace orva {

void frmQuick_Load(const Shared& store, const PlannerState& view, QuickForm& f) {
    fill_stickers(f.typeIcombo, QStringLiteral("frmQuick"));
    f.typeIcombo.list_index = 0;
    const appt_rec* a = store.appt_row(store.appt_count);
    if (!a) {
        f.caption.clear();
        f.picker_enabled = false;
        f.DTPicker1 = QTime(0, 0);
        return;
    }
    f.caption = rtrim(a->appt_text);
    const QString start = a->appt_start;
    const bool timed = start_slot(start) != 0;
    // Row 0 of the day planner makes an untimed entry, which has no end to
    // pick; the week and month planners always hand over the present time.
    f.picker_enabled = (view.view_day && timed) || view.view_week || view.view_month;
    const QTime t = hhmm_to_time(start);
    f.DTPicker1 = t.isValid() ? t : QTime(0, 0);
}

bool frmQuick_OK(Shared& store, QuickForm& f) {
    appt_rec* a = store.appt_row(store.appt_count);
    if (!a) return true;
    const QString start_value = a->appt_start;
    const QString end_value = f.DTPicker1.toString(QStringLiteral("HH:mm"));
    // Compared as rows of the day grid, not as minutes: an end inside the
    // start's half hour is still a valid one-row entry.
    if (f.picker_enabled && end_slot(end_value, start_value) < start_slot(start_value)) {
        modal().message(end_before_start_text, MsgStyle::Information);
        return false;
    }
    a->appt_type = f.typeIcombo.selected_key();
    // A disabled picker still holds a time; writing it would give an untimed
    // entry an end and make the store see a timed one.
    if (f.picker_enabled) a->appt_end = end_value;
    return true;
}

void frmQuick_Cancel(PlannerState& view, QuickForm& f) {
    Q_UNUSED(f);
    // The row is left as the grid made it ("0", end = start): the caller
    // still writes it, so Cancel keeps a one-row entry rather than undoing it.
    // In the week and month planners the cell is the line typed into; the
    // refill after the write shows the entry there again.
    Grid& g = view.view_week || view.view_month ? view.vsOvervw : view.vsSched;
    if (g.Row() >= 0 && g.Col() >= 0 && g.Row() < g.Rows() && g.Col() < g.Cols())
        g.setTextMatrix(g.Row(), g.Col(), QString());
}

void frmNotes_Load(const OptionsState& options, EditorState& editing, NotesForm& f) {
    f.font_name = options.grid_font_name;
    bool ok = false;
    const double pt = options.grid_font_size.trimmed().toDouble(&ok);
    if (ok && pt > 0) f.font_size = pt;
    f.font_bold = options.grid_font_bold;

    // notes_text is normally a whole field, 200 blanks when there are no notes.
    const QString shown = rtrim(editing.notes_text);
    f.rtNotes = cut_to_bytes(shown, notes_limit);
    f.cursor = int(f.rtNotes.size());
    editing.notes_shown = editing.notes_text;

    if (editing.caller_form == u"apptfrm") {
        f.anchor = QStringLiteral("frmAppt1");
        f.dx = 2400;
        f.dy = 200;
    } else if (editing.caller_form == u"dtlfrm") {
        f.anchor = QStringLiteral("Frame2");
        f.dx = 1800;
        f.dy = 200;
    } else {
        f.anchor.clear();
        f.dx = f.dy = 0;
    }
}

void frmNotes_OK(EditorState& editing, NotesForm& f) {
    const QString text = cut_to_bytes(f.rtNotes, notes_limit);
    // notes_shown is usually blank-padded and the box never is: compared as
    // they stand, opening and OK alone would count as an edit.
    if (rtrim(text) != rtrim(editing.notes_shown)) editing.notes_dirty = true;
    editing.notes_text = text;
}

void frmNotes_Cancel(EditorState& editing, NotesForm& f) {
    Q_UNUSED(f);
    editing.notes_dirty = false;
}

} // namespace orva
