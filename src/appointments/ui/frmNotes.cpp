#include "appointments/ui/frmNotes.h"
#include "core/ui/form_helpers.h"

#include "core/field_text.h"
#include "core/ui/qt_modal.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>

namespace orva {

namespace {

// The editor is a window of its own and the detail pane a frame inside the
// main window, so the anchor may be either.
QWidget* find_anchor(QWidget* parent, const QString& name) {
    if (name.isEmpty()) return nullptr;
    if (parent) {
        QWidget* top = parent->window();
        if (top->objectName() == name) return top;
        if (auto* w = top->findChild<QWidget*>(name)) return w;
    }
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == name && w->isVisible()) return w;
    return nullptr;
}

} // namespace

FrmNotes::FrmNotes(AppState& s, QWidget* parent) : QDialog(parent), s_(s) {
    setObjectName(QStringLiteral("frmNotes"));
    setAccessibleDescription(QStringLiteral("frmNotes"));
    setWindowTitle(QStringLiteral("Notes"));
    setModal(true);

    rtNotes_ = new QPlainTextEdit(this);
    name_control(rtNotes_, QStringLiteral("rtNotes"), QStringLiteral("Notes"));
    rtNotes_->setTabChangesFocus(true);
    Command1_ = new QPushButton(QStringLiteral("OK"), this);
    name_control(Command1_, QStringLiteral("Command1"));
    Command2_ = new QPushButton(QStringLiteral("Cancel"), this);
    name_control(Command2_, QStringLiteral("Command2"));

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1_);
    buttons->addWidget(Command2_);
    auto* outer = new QVBoxLayout(this);
    outer->addWidget(rtNotes_);
    outer->addLayout(buttons);
    resize(420, 240);

    connect(Command1_, &QPushButton::clicked, this, &FrmNotes::accept);
    connect(Command2_, &QPushButton::clicked, this, &FrmNotes::reject);
    connect(rtNotes_->document(), &QTextDocument::contentsChange, this,
            [this](int pos, int, int added) { change_end_ = pos + added; });
    connect(rtNotes_, &QPlainTextEdit::textChanged, this, &FrmNotes::enforce_limit);

    frmNotes_Load(s_.options(), s_.editing(), f_);
    render();
    place(parent);
}

void FrmNotes::render() {
    QFont font = rtNotes_->font();
    if (!f_.font_name.isEmpty()) font.setFamily(f_.font_name);
    if (f_.font_size > 0) font.setPointSizeF(f_.font_size);
    font.setBold(f_.font_bold);
    rtNotes_->setFont(font);
    rtNotes_->setPlainText(f_.rtNotes);
    QTextCursor c = rtNotes_->textCursor();
    c.setPosition(std::clamp(f_.cursor, 0, int(rtNotes_->toPlainText().size())));
    rtNotes_->setTextCursor(c);
}

void FrmNotes::enforce_limit() {
    if (limiting_) return;
    const QString text = rtNotes_->toPlainText();
    // The field counts bytes of UTF-8, not characters.
    if (utf8_size(text) <= notes_limit) return;
    // Cut the tail of what just arrived, so the notes already there survive a
    // paste that is too long.
    const int length = int(text.size());
    int end = change_end_ < 0 || change_end_ > length ? length : change_end_;
    qsizetype room = notes_limit - utf8_size(QStringView(text).mid(end));
    if (room < 0) {
        end = length;
        room = notes_limit;
    }
    const int keep = int(cut_to_bytes(text.left(end), room).size());
    limiting_ = true;
    QTextCursor c(rtNotes_->document());
    c.setPosition(keep);
    c.setPosition(end, QTextCursor::KeepAnchor);
    c.removeSelectedText();
    limiting_ = false;
}

void FrmNotes::accept() {
    f_.rtNotes = rtNotes_->toPlainText();
    f_.cursor = rtNotes_->textCursor().position();
    frmNotes_OK(s_, f_);
    QDialog::accept();
}

void FrmNotes::reject() {
    frmNotes_Cancel(s_, f_);
    QDialog::reject();
}

void FrmNotes::place(QWidget* parent) {
    if (QWidget* anchor = find_anchor(parent, f_.anchor)) {
        const QPoint corner =
            anchor->isWindow() ? anchor->frameGeometry().topLeft() : anchor->mapToGlobal(QPoint());
        const QPoint offset(f_.dx * anchor->logicalDpiX() / 1440,
                            f_.dy * anchor->logicalDpiY() / 1440);
        move(on_screen(corner + offset, frameGeometry().size(), anchor));
        return;
    }
    if (parent) {
        QWidget* top = parent->window();
        move(on_screen(top->frameGeometry().center() - rect().center(), frameGeometry().size(),
                       top));
    }
}

void register_frmNotes(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmNotes"), [&s](QWidget* parent) {
        FrmNotes form(s, parent);
        form.exec();
    });
}

} // namespace orva
