#include "help/ui/frmHelpIdx.h"

#include "core/ui/form_helpers.h"
#include "core/ui/printer.h"
#include "core/ui/qt_modal.h"
#include "core/ui/tool_icons.h"
#include "grid/ui/grid_printer.h"
#include "state/app_state.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPrinter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace orva {

namespace {

// The outline's line data: its line number in HelpForm::vsHelpIndex.
constexpr int line_role = Qt::UserRole;

int twips_to_px(const QWidget* w, int twips) {
    return (twips * w->logicalDpiY() + 720) / 1440;
}

// Prints one document `copies` times, one job each. False when the printer
// or the file could not be written.
bool print_document(const QTextDocument& doc, const PrintSetup& setup) {
    for (int copy = 0; copy < std::max(1, setup.copies); ++copy) {
        QPrinter printer(QPrinter::HighResolution);
        apply_setup(printer, setup);
        doc.print(&printer);
        if (printer.printerState() == QPrinter::Error) return false;
    }
    return true;
}

} // namespace

FrmHelpIdx::FrmHelpIdx(const QString& app_path, HelpState& help, QWidget* parent)
    : QDialog(parent) {
    build();
    const QString topic = help.help_topic;
    help.help_topic.clear();
    Form_Load(f_, app_path, topic);
    fill_outline();
    render();
    vsHelpIndex_->setFocus();
}

void FrmHelpIdx::build() {
    setObjectName(QStringLiteral("frmHelpIdx"));
    setAccessibleDescription(QStringLiteral("frmHelpIdx"));
    setWindowTitle(help_title);
    setModal(true);
    // The viewer stays above the planner and the forms it was opened from,
    // so it can be read beside them.
    setWindowFlag(Qt::WindowStaysOnTopHint);

    TabStrip1_ = new QTabWidget(this);
    name_control(TabStrip1_, QStringLiteral("TabStrip1"), QStringLiteral("Contents"));
    vsHelpIndex_ = new QTreeWidget(TabStrip1_);
    name_control(vsHelpIndex_, QStringLiteral("vsHelpIndex"), QStringLiteral("Help topics"));
    vsHelpIndex_->setColumnCount(1);
    vsHelpIndex_->setHeaderHidden(true);
    vsHelpIndex_->header()->setStretchLastSection(true);
    vsHelpIndex_->setIconSize(QSize(20, 20));
    // The topic shown is marked by its background and its open book, as the
    // outline always marked it; a selection colour on top would hide both.
    vsHelpIndex_->setSelectionMode(QAbstractItemView::NoSelection);
    vsHelpIndex_->installEventFilter(this);
    TabStrip1_->addTab(vsHelpIndex_, QStringLiteral("Contents"));

    rtfContents_ = new QTextBrowser(this);
    name_control(rtfContents_, QStringLiteral("rtfContents"), QStringLiteral("Help topic"));
    rtfContents_->setOpenLinks(false);
    rtfContents_->document()->setDocumentMargin(12);
    rtfPrint_ = new QTextEdit(this);
    name_control(rtfPrint_, QStringLiteral("rtfPrint"), QStringLiteral("Pages to print"));
    rtfPrint_->hide();

    imgOpenbook_ = new QLabel(this);
    name_control(imgOpenbook_, QStringLiteral("imgOpenbook"), QStringLiteral("Open book"));
    imgOpenbook_->setPixmap(emoji_pixmap(QStringLiteral("\U0001F4D6"), 20));
    imgOpenbook_->hide();
    imgClosebook_ = new QLabel(this);
    name_control(imgClosebook_, QStringLiteral("imgClosebook"), QStringLiteral("Closed book"));
    imgClosebook_->setPixmap(emoji_pixmap(QStringLiteral("\U0001F4D5"), 20));
    imgClosebook_->hide();

    split_ = new QSplitter(Qt::Horizontal, this);
    split_->setObjectName(QStringLiteral("helpSplit"));
    split_->addWidget(TabStrip1_);
    split_->addWidget(rtfContents_);
    split_->setChildrenCollapsible(false);
    split_->setStretchFactor(0, 0);
    split_->setStretchFactor(1, 1);
    // 90 twips between the outline and the topic.
    split_->setHandleWidth(std::max(4, twips_to_px(this, 90)));
    split_->setSizes({300, 640});

    hlpCmd_ = new QPushButton(hide_topics_text, this);
    name_control(hlpCmd_, QStringLiteral("hlpCmd"));
    priorCmd_ = new QPushButton(QStringLiteral("Prior"), this);
    name_control(priorCmd_, QStringLiteral("priorCmd"));
    nextCmd_ = new QPushButton(QStringLiteral("Next"), this);
    name_control(nextCmd_, QStringLiteral("nextCmd"));
    prtCmd_ = new QPushButton(QStringLiteral("Print"), this);
    name_control(prtCmd_, QStringLiteral("prtCmd"));
    Command1_ = new QPushButton(QStringLiteral("Print All"), this);
    name_control(Command1_, QStringLiteral("Command1"));
    for (QPushButton* b : {hlpCmd_, priorCmd_, nextCmd_, prtCmd_, Command1_})
        b->setAutoDefault(false);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(hlpCmd_);
    buttons->addStretch(1);
    buttons->addWidget(priorCmd_);
    buttons->addWidget(nextCmd_);
    buttons->addSpacing(16);
    buttons->addWidget(prtCmd_);
    buttons->addWidget(Command1_);

    auto* outer = new QVBoxLayout(this);
    outer->addWidget(split_, 1);
    outer->addLayout(buttons);

    connect(vsHelpIndex_, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* item) { line_clicked(item); });
    // Keys move the outline's cursor as a click would, without showing a
    // page until Enter: next and prior then go on from where it stands.
    connect(vsHelpIndex_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item) f_.cursor = item->data(0, line_role).toInt();
    });
    connect(rtfContents_, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) {
        follow_link(f_, url.toString());
        render();
    });
    connect(nextCmd_, &QPushButton::clicked, this, [this] {
        nextCmd_Click(f_);
        render();
    });
    connect(priorCmd_, &QPushButton::clicked, this, [this] {
        priorCmd_Click(f_);
        render();
    });
    connect(hlpCmd_, &QPushButton::clicked, this, [this] {
        hlpCmd_Click(f_);
        render();
    });
    connect(prtCmd_, &QPushButton::clicked, this, &FrmHelpIdx::print_shown);
    connect(Command1_, &QPushButton::clicked, this, &FrmHelpIdx::print_all);

    resize(960, 660);
}

void FrmHelpIdx::fill_outline() {
    const QSignalBlocker hold(vsHelpIndex_);
    vsHelpIndex_->clear();
    items_.clear();
    // Rows at least 400 twips high.
    const int height = twips_to_px(this, 400);
    std::vector<std::pair<int, QTreeWidgetItem*>> open; // level, item: the line's ancestors
    for (int r = 0; r < int(f_.vsHelpIndex.size()); ++r) {
        const HelpLine& line = f_.vsHelpIndex[size_t(r)];
        while (!open.empty() && open.back().first >= line.level)
            open.pop_back();
        auto* item = open.empty() ? new QTreeWidgetItem(vsHelpIndex_)
                                  : new QTreeWidgetItem(open.back().second);
        item->setText(0, line.caption);
        item->setData(0, line_role, r);
        item->setSizeHint(0, QSize(1, height));
        open.emplace_back(line.level, item);
        items_.push_back(item);
    }
    vsHelpIndex_->collapseAll();
}

void FrmHelpIdx::render() {
    {
        const QSignalBlocker hold(vsHelpIndex_);
        // The system colours of the outline: button face for the line shown,
        // the window's own background for the rest.
        const QBrush lit = palette().brush(QPalette::Button);
        const QBrush plain = palette().brush(QPalette::Base);
        const QIcon open_book(imgOpenbook_->pixmap());
        const QIcon closed_book(imgClosebook_->pixmap());
        for (size_t r = 0; r < items_.size() && r < f_.vsHelpIndex.size(); ++r) {
            const HelpLine& line = f_.vsHelpIndex[r];
            items_[r]->setBackground(0, line.lit ? lit : plain);
            items_[r]->setIcon(0, line.open_book ? open_book : closed_book);
        }
        if (f_.cursor >= 0 && f_.cursor < int(items_.size())) {
            QTreeWidgetItem* current = items_[size_t(f_.cursor)];
            if (vsHelpIndex_->currentItem() != current) {
                for (QTreeWidgetItem* up = current->parent(); up; up = up->parent())
                    up->setExpanded(true);
                vsHelpIndex_->setCurrentItem(current);
                vsHelpIndex_->scrollToItem(current);
            }
        }
    }
    if (f_.rtfContents != shown_) {
        shown_ = f_.rtfContents;
        rtfContents_->setHtml(shown_);
    }
    nextCmd_->setEnabled(f_.nextCmd_enabled);
    priorCmd_->setEnabled(f_.priorCmd_enabled);
    hlpCmd_->setText(f_.hlpCmd_caption);
    // Hidden, the outline's room goes to the topic; shown again, the splitter
    // gives back the widths it had.
    TabStrip1_->setVisible(f_.list_shown);
}

void FrmHelpIdx::line_clicked(QTreeWidgetItem* item) {
    if (!item) return;
    const int r = item->data(0, line_role).toInt();
    const bool heading =
        r >= 0 && r < int(f_.vsHelpIndex.size()) &&
        f_.vsHelpHold.TextMatrix(f_.vsHelpIndex[size_t(r)].index_row, help_col::file) == help_label;
    // A heading has no page: a click opens or closes its group instead.
    if (heading) item->setExpanded(!item->isExpanded());
    vsHelpIndex_Click(f_, r);
    render();
}

bool FrmHelpIdx::eventFilter(QObject* watched, QEvent* event) {
    if (watched == vsHelpIndex_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            line_clicked(vsHelpIndex_->currentItem());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FrmHelpIdx::print_shown() {
    const QTextCursor selected = rtfContents_->textCursor();
    if (!prtCmd_Click(f_, selected.hasSelection())) return;
    QTextDocument pages;
    if (f_.print_setup.selection && selected.hasSelection())
        QTextCursor(&pages).insertFragment(selected.selection());
    else
        pages.setHtml(shown_);
    pages.setDefaultFont(rtfContents_->document()->defaultFont());
    if (!print_document(pages, f_.print_setup))
        modal().message(print_failed_msg, MsgStyle::Critical);
}

void FrmHelpIdx::print_all() {
    const std::vector<QString> topics = Command1_Click(f_);
    render();
    if (topics.empty()) return;
    rtfPrint_->resize(rtfContents_->size());
    QTextDocument* pages = rtfPrint_->document();
    pages->clear();
    pages->setDefaultFont(rtfContents_->document()->defaultFont());
    QTextCursor end(pages);
    for (size_t i = 0; i < topics.size(); ++i) {
        if (i > 0) end.insertBlock();
        const int start = end.position();
        end.insertFragment(QTextDocumentFragment::fromHtml(topics[i]));
        if (i == 0) continue;
        // Each topic begins a page of its own.
        QTextCursor first(pages);
        first.setPosition(start);
        QTextBlockFormat page_break;
        page_break.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        first.mergeBlockFormat(page_break);
    }
    if (!print_document(*pages, f_.print_setup))
        modal().message(print_failed_msg, MsgStyle::Critical);
}

void register_frmHelpIdx(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmHelpIdx"), [&s](QWidget* parent) {
        FrmHelpIdx form(s.app_path, s.help(), parent);
        form.exec();
    });
}

} // namespace orva
