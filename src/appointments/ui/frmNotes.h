#pragma once

#include "appointments/quick_add.h"

#include <QDialog>

class QPlainTextEdit;
class QPushButton;

namespace orva {

class QtModal;

// "Notes": a roomier box for the notes_limit bytes of an entry's notes. Works on
// notes_text, notes_shown, notes_dirty and caller_form through the logic.
class FrmNotes : public QDialog {
    Q_OBJECT
  public:
    explicit FrmNotes(AppState& s, QWidget* parent = nullptr);

    const NotesForm& form() const { return f_; }

    void accept() override;
    // Cancel, Escape and the close box alike.
    void reject() override;

  private:
    void render();
    void place(QWidget* parent);
    void enforce_limit();

    AppState& s_;
    NotesForm f_;
    QPlainTextEdit* rtNotes_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
    // Where the last change to the text landed, so an overflow is cut from
    // what was just typed or pasted rather than from the end of the notes.
    int change_end_ = -1;
    bool limiting_ = false;
};

// Registers "frmNotes" with the seam: made afresh each time, shown with exec().
void register_frmNotes(QtModal& m, AppState& s);

} // namespace orva
