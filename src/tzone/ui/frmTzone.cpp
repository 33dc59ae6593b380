#include "tzone/ui/frmTzone.h"

#include "core/ui/form_helpers.h"
#include "core/ui/qt_modal.h"
#include "state/app_state.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace orva {

namespace {

QLabel* label(QWidget* parent, const QString& name, const QString& text = {}) {
    auto* l = new QLabel(text, parent);
    name_control(l, name);
    return l;
}

QLineEdit* text_box(QWidget* parent, const QString& name, const QString& spoken) {
    auto* t = new QLineEdit(parent);
    name_control(t, name, spoken);
    t->setReadOnly(true);
    return t;
}

QListWidget* zone_list(QWidget* parent, const QString& name, const QString& spoken) {
    auto* l = new QListWidget(parent);
    name_control(l, name, spoken);
    l->setSelectionMode(QAbstractItemView::SingleSelection);
    l->setMinimumHeight(220);
    return l;
}

void show_list(QListWidget* w, const QStringList& items, int index) {
    const QSignalBlocker hold(w);
    bool same = w->count() == items.size();
    for (int i = 0; same && i < items.size(); ++i)
        same = w->item(i)->text() == items[i];
    if (!same) {
        w->clear();
        w->addItems(items);
    }
    w->setCurrentRow(index);
}

} // namespace

FrmTzone::FrmTzone(const QString& app_path, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmTzone"));
    setAccessibleDescription(QStringLiteral("frmTzone"));
    setWindowTitle(tzone_title);
    setModal(true);

    auto* menus = new QMenuBar(this);
    QMenu* file = menus->addMenu(QStringLiteral("&File"));
    mnuExit_ = file->addAction(QStringLiteral("E&xit"));
    mnuExit_->setObjectName(QStringLiteral("mnuExit"));
    QMenu* help = menus->addMenu(QStringLiteral("&Help"));
    mnuContent_ = help->addAction(QStringLiteral("&Contents"));
    mnuContent_->setObjectName(QStringLiteral("mnuContent"));
    mnuAbout_ = help->addAction(QStringLiteral("&About"));
    mnuAbout_->setObjectName(QStringLiteral("mnuAbout"));

    auto* lblCurrent =
        label(this, QStringLiteral("lblCurrent"), QStringLiteral("Current Time Zone:"));
    Text2_ = text_box(this, QStringLiteral("Text2"), QStringLiteral("Current time zone"));
    lblCurrent->setBuddy(Text2_);
    Label2_ = label(this, QStringLiteral("Label2"));
    lblTz24_ = label(this, QStringLiteral("lblTz24"));

    auto* lblWhat = label(this, QStringLiteral("lblWhat"), QStringLiteral("What Time is it in:"));
    auto* lblZone1 = label(this, QStringLiteral("lblZone1"), QStringLiteral("Time Zone 1:"));
    auto* lblZone2 = label(this, QStringLiteral("lblZone2"), QStringLiteral("Time Zone 2 :"));
    List1_ = zone_list(this, QStringLiteral("List1"), QStringLiteral("Time zone 1"));
    List2_ = zone_list(this, QStringLiteral("List2"), QStringLiteral("Time zone 2"));
    lblZone1->setBuddy(List1_);
    lblZone2->setBuddy(List2_);
    Label3_ = label(this, QStringLiteral("Label3"));
    Label4_ = label(this, QStringLiteral("Label4"));
    zone124Lbl_ = label(this, QStringLiteral("zone124Lbl"));
    zone224lbl_ = label(this, QStringLiteral("zone224lbl"));

    Text1_ = text_box(this, QStringLiteral("Text1"), QStringLiteral("Zone 1"));
    Text3_ = text_box(this, QStringLiteral("Text3"), QStringLiteral("Time difference"));
    Text4_ = text_box(this, QStringLiteral("Text4"), QStringLiteral("Zone 2"));
    Text3_->setAlignment(Qt::AlignCenter);
    Command1_ = new QPushButton(QStringLiteral("Calculate Time Difference"), this);
    name_control(Command1_, QStringLiteral("Command1"));
    Command1_->setDefault(true);
    Command2_ = new QPushButton(QStringLiteral("Help"), this);
    name_control(Command2_, QStringLiteral("Command2"));

    auto* local = new QGridLayout;
    local->addWidget(lblCurrent, 0, 0);
    local->addWidget(Text2_, 0, 1, 1, 2);
    local->addWidget(Label2_, 1, 1);
    local->addWidget(lblTz24_, 1, 2);
    local->setColumnStretch(1, 1);
    local->setColumnStretch(2, 1);

    auto* zones = new QGridLayout;
    zones->addWidget(lblZone1, 0, 0);
    zones->addWidget(lblZone2, 0, 1);
    zones->addWidget(List1_, 1, 0);
    zones->addWidget(List2_, 1, 1);
    zones->addWidget(Label3_, 2, 0);
    zones->addWidget(Label4_, 2, 1);
    zones->addWidget(zone124Lbl_, 3, 0);
    zones->addWidget(zone224lbl_, 3, 1);
    zones->setColumnStretch(0, 1);
    zones->setColumnStretch(1, 1);

    auto* sentence = new QHBoxLayout;
    sentence->addWidget(Text1_, 3);
    sentence->addWidget(Text3_, 2);
    sentence->addWidget(Text4_, 3);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1_);
    buttons->addWidget(Command2_);

    auto* outer = new QVBoxLayout(this);
    outer->setMenuBar(menus);
    outer->addLayout(local);
    outer->addSpacing(8);
    outer->addWidget(lblWhat);
    outer->addLayout(zones);
    outer->addLayout(sentence);
    outer->addLayout(buttons);

    // A pick is a selection, not a current row: focus coming into a list
    // makes its first row current without the user choosing it.
    connect(List1_, &QListWidget::itemSelectionChanged, this, [this] { list_clicked(1); });
    connect(List2_, &QListWidget::itemSelectionChanged, this, [this] { list_clicked(2); });
    connect(List1_, &QListWidget::itemDoubleClicked, this, [this] {
        List1_DblClick(f_);
        render();
    });
    connect(List2_, &QListWidget::itemDoubleClicked, this, [this] {
        List2_DblClick(f_);
        render();
    });
    connect(Command1_, &QPushButton::clicked, this, [this] {
        Command1_Click(f_);
        render();
    });
    connect(Command2_, &QPushButton::clicked, this, [] { Command2_Click(); });
    connect(mnuContent_, &QAction::triggered, this, [] { Command2_Click(); });
    connect(mnuAbout_, &QAction::triggered, this, [] { mnuAbout_Click(); });
    connect(mnuExit_, &QAction::triggered, this, &QDialog::reject);

    Form_Load(f_, app_path);
    render();
    // Wide enough for the longest names of the shipped table without a
    // scroll bar across the lists.
    resize(sizeHint().expandedTo(QSize(880, 0)));
    List1_->setFocus();
}

void FrmTzone::list_clicked(int list) {
    QListWidget* w = list == 1 ? List1_ : List2_;
    const QList<QListWidgetItem*> picked = w->selectedItems();
    if (picked.isEmpty()) return;
    if (list == 1) {
        f_.List1_index = w->row(picked.first());
        List1_Click(f_);
    } else {
        f_.List2_index = w->row(picked.first());
        List2_Click(f_);
    }
    render();
}

void FrmTzone::render() {
    show_list(List1_, f_.List1, f_.List1_index);
    show_list(List2_, f_.List2, f_.List2_index);
    Text1_->setText(f_.Text1);
    Text2_->setText(f_.Text2);
    Text3_->setText(f_.Text3);
    Text4_->setText(f_.Text4);
    // Long names show from their start, not scrolled to their end.
    for (QLineEdit* t : {Text1_, Text2_, Text3_, Text4_})
        t->setCursorPosition(0);
    Label2_->setText(f_.Label2);
    lblTz24_->setText(f_.lblTz24);
    Label3_->setText(f_.Label3);
    Label4_->setText(f_.Label4);
    zone124Lbl_->setText(f_.zone124Lbl);
    zone224lbl_->setText(f_.zone224lbl);
}

void register_frmTzone(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmTzone"), [&s](QWidget* parent) {
        FrmTzone form(s.app_path, parent);
        form.exec();
    });
}

} // namespace orva
