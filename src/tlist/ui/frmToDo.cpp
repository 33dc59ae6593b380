#include "tlist/ui/frmToDo.h"

#include "appointments/ui/sticker_pictures.h"
#include "core/ui/form_helpers.h"
#include "core/ui/qt_modal.h"
#include "core/ui/tool_icons.h"
#include "grid/ui/grid_printer.h"
#include "grid/ui/grid_widget.h"
#include "printing/print_setup.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace orva {

namespace {

struct ToolKey {
    const char* key;
    const char* theme; // freedesktop icon name
    const char16_t* emoji;
};

// "Font Size" stands there doing nothing, as the sheet always had it.
constexpr ToolKey tool_keys[] = {
    {"Copy", "edit-copy", u"\U0001F4C4"},
    {"Cut", "edit-cut", u"\u2702\uFE0F"},
    {"Paste", "edit-paste", u"\U0001F4CB"},
    {"Color", "format-text-color", u"\U0001F3A8"},
    {"Italics", "format-text-italic", u"\u270D\uFE0F"},
    {"Bold", "format-text-bold", u"\U0001F171\uFE0F"},
    {"Font Size", "preferences-desktop-font", u"\U0001F520"},
    {"Insert", "insert-text", u"\u21AA\uFE0F"},
    {"Tab Right", "format-indent-more", u"\u27A1\uFE0F"},
    {"Tab Left", "format-indent-less", u"\u2B05\uFE0F"},
    {"Timestamp", "document-open-recent", u"\U0001F552"},
    {"Checkmark", "checkbox", u"\u2611\uFE0F"},
    {"Delete", "edit-delete", u"\U0001F5D1\uFE0F"},
    {"Print", "document-print", u"\U0001F5A8\uFE0F"},
    {"Help", "help-contents", u"\u2753"},
};

// The sheet's pictures as the sticker list shows them, without the ring the
// planners put round them for their yellow: the sheet is white.
PictureProvider sheet_pictures() {
    return [](const QString& key, int px) { return sticker_picture(key, px); };
}

} // namespace

FrmToDo::FrmToDo(AppState& s, QWidget* parent) : QDialog(parent), s_(s) {
    setObjectName(QStringLiteral("frmToDo"));
    setAccessibleDescription(QStringLiteral("frmToDo"));
    setWindowTitle(todo_title);
    setModal(true);

    build_toolbar();

    Label2_ = new QLabel(f_.Label2, this);
    name_control(Label2_, QStringLiteral("Label2"));
    QFont heading = Label2_->font();
    heading.setBold(true);
    Label2_->setFont(heading);

    vsToDo_ = new GridWidget(this);
    name_control(vsToDo_, QStringLiteral("vsToDo"), QStringLiteral("To do list"));
    vsToDo_->set_picture_provider(sheet_pictures());
    sheet_viewport_ = vsToDo_->viewport();
    sheet_viewport_->installEventFilter(this);
    Label2_->setBuddy(vsToDo_);

    Image1_ = new QToolButton(this);
    Image1_->setIcon(tool_icon(QStringLiteral("list-add"), QStringLiteral("\u2795")));
    Image1_->setToolTip(QStringLiteral("Add a line at the end"));
    Image1_->setAutoRaise(true);
    name_control(Image1_, QStringLiteral("Image1"));

    typeIcombo_ = new QComboBox(this);
    name_control(typeIcombo_, QStringLiteral("typeIcombo"), QStringLiteral("Type of the line"));
    typeIcombo_->setIconSize(QSize(20, 20));
    typeIcombo_->setToolTip(QStringLiteral("Type of the line"));

    // Return belongs to the sheet, where it ends an edit; a default button
    // would close the list on it.
    Command1_ = new QPushButton(QStringLiteral("OK"), this);
    name_control(Command1_, QStringLiteral("Command1"));
    Command1_->setAutoDefault(false);
    Command2_ = new QPushButton(QStringLiteral("Cancel"), this);
    name_control(Command2_, QStringLiteral("Command2"));
    Command2_->setAutoDefault(false);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(Image1_);
    bottom->addWidget(typeIcombo_);
    bottom->addStretch(1);
    bottom->addWidget(Command1_);
    bottom->addWidget(Command2_);
    auto* outer = new QVBoxLayout(this);
    outer->setMenuBar(Toolbar1_);
    outer->addWidget(Label2_);
    outer->addWidget(vsToDo_, 1);
    outer->addLayout(bottom);

    connect(Command1_, &QPushButton::clicked, this, &FrmToDo::accept);
    connect(Command2_, &QPushButton::clicked, this, [this] {
        Command2_Click(f_);
        reject();
    });
    connect(Image1_, &QToolButton::clicked, this, [this] {
        vsToDo_->commit_edit();
        Image1_Click(f_, s_.options());
    });
    connect(typeIcombo_, &QComboBox::activated, this, [this](int i) {
        f_.typeIcombo.list_index = i;
        typeIcombo_Click(f_);
    });
    connect(vsToDo_, &GridWidget::cursorMoved, this, [this] { vsToDo_EnterCell(f_); });
    connect(vsToDo_, &GridWidget::beforeEdit, this,
            [this](int row, int col, bool* cancel) { vsToDo_BeforeEdit(f_, row, col, *cancel); });
    connect(vsToDo_, &GridWidget::afterEdit, this,
            [this](int row, int col, const QString&) { vsToDo_AfterEdit(f_, row, col); });

    f_.print = [](const Grid& sheet, const PrintSetup& setup) {
        const bool printed = print_copies(setup, [&](const PrintSetup& one) {
            return PrintGrid(sheet, one, QString(), print_margin, print_margin, sheet_pictures());
        });
        if (!printed) modal().message(print_failed_msg, MsgStyle::Critical);
    };

    // The sheet learns its width before it opens: the text column is sized
    // from it. Shown first, so that fitting measures in the screen's fonts.
    f_.vsToDo.set_extent(todo_grid_width, 5600);
    vsToDo_->setGrid(&f_.vsToDo);
    frmToDo_Load(s_.store(), s_.view(), s_.options(), f_);
    render_types();
    vsToDo_->refresh();

    const int width_px = vsToDo_->twips_to_px(todo_grid_width);
    resize(width_px + 40, vsToDo_->twips_to_px(5600, Qt::Vertical) + 120);
}

// The sheet is a member and dies before the base class deletes the grid
// widget, whose editor would commit into it on the way out.
FrmToDo::~FrmToDo() {
    vsToDo_->disconnect(this);
    delete vsToDo_;
}

void FrmToDo::build_toolbar() {
    Toolbar1_ = new QToolBar(this);
    name_control(Toolbar1_, QStringLiteral("Toolbar1"), QStringLiteral("To do list tools"));
    Toolbar1_->setIconSize(QSize(20, 20));
    Toolbar1_->setToolButtonStyle(Qt::ToolButtonIconOnly);
    for (const ToolKey& t : tool_keys) {
        const QString key = QString::fromLatin1(t.key);
        QAction* a = Toolbar1_->addAction(
            tool_icon(QString::fromLatin1(t.theme), QString::fromUtf16(t.emoji)), key);
        a->setObjectName(key);
        a->setToolTip(key);
        if (QWidget* b = Toolbar1_->widgetForAction(a)) name_control(b, key);
        connect(a, &QAction::triggered, this, [this, key] { run_key(key); });
        if (key == u"Paste" || key == u"Font Size" || key == u"Timestamp")
            Toolbar1_->addSeparator();
    }
}

QAction* FrmToDo::tool(const QString& key) const {
    for (QAction* a : Toolbar1_->actions())
        if (a->objectName() == key) return a;
    return nullptr;
}

void FrmToDo::run_key(const QString& key) {
    // A line still being typed belongs to the sheet before a command reads it.
    vsToDo_->commit_edit();
    QClipboard* board = QGuiApplication::clipboard();
    ClipText clip{board->text(), false};
    Toolbar1_ButtonClick(f_, s_.options(), s_.help(), key, clip);
    if (clip.changed) board->setText(clip.text);
}

void FrmToDo::render_types() {
    typeIcombo_->clear();
    for (const auto& item : f_.typeIcombo.items)
        typeIcombo_->addItem(sticker_icon(item.picture), item.caption, item.key);
    typeIcombo_->setCurrentIndex(f_.typeIcombo.list_index);
}

void FrmToDo::unload() {
    if (unloaded_) return;
    unloaded_ = true;
    // The close box takes no focus from the cell editor, so its text would
    // otherwise be lost.
    if (!f_.cancelled) vsToDo_->commit_edit();
    frmToDo_Unload(s_.store(), s_.view(), f_);
}

void FrmToDo::accept() {
    Command1_Click(f_);
    unload();
    QDialog::accept();
}

void FrmToDo::reject() {
    unload();
    QDialog::reject();
}

bool FrmToDo::eventFilter(QObject* watched, QEvent* event) {
    // Compared by address: the filter still hears the viewport while the
    // grid around it is being destroyed.
    if (watched == sheet_viewport_ && (event->type() == QEvent::MouseButtonPress ||
                                           event->type() == QEvent::MouseButtonDblClick)) {
        bool cancel = false;
        vsToDo_BeforeMouseDown(f_, static_cast<QMouseEvent*>(event)->button(), cancel);
        if (cancel) return true;
    }
    return QDialog::eventFilter(watched, event);
}

void register_frmToDo(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmToDo"), [&s](QWidget* parent) {
        FrmToDo form(s, parent);
        form.exec();
    });
}

} // namespace orva
