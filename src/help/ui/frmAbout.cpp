#include "help/ui/frmAbout.h"

#include "core/modal.h"
#include "core/ui/form_helpers.h"
#include "core/ui/qt_modal.h"
#include "help/about.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orva {

FrmAbout::FrmAbout(QWidget* parent) : QDialog(parent) {
    const AboutText text = about_text();
    setObjectName(QStringLiteral("frmAbout"));
    setAccessibleDescription(QStringLiteral("frmAbout"));
    setWindowTitle(text.title);
    setModal(true);

    auto* picture = new QLabel(this);
    name_control(picture, QStringLiteral("imgIcon"), app_title);
    // The main window's picture, as the desktop shows it.
    const QIcon icon = parent ? parent->window()->windowIcon() : QApplication::windowIcon();
    picture->setPixmap(icon.pixmap(64, 64));
    picture->setVisible(!icon.isNull());

    lblName_ = new QLabel(text.title, this);
    name_control(lblName_, QStringLiteral("lblName"));
    QFont big = lblName_->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    lblName_->setFont(big);
    lblVersion_ = new QLabel(text.version, this);
    name_control(lblVersion_, QStringLiteral("lblVersion"));
    lblDescription_ = new QLabel(
        app_title + QStringLiteral(": a planner for one person, with day, week and month "
                                   "planners, reminders, a to-do list and world time zones."),
        this);
    name_control(lblDescription_, QStringLiteral("lblDescription"));
    lblDescription_->setWordWrap(true);

    cmdOK_ = new QPushButton(QStringLiteral("OK"), this);
    name_control(cmdOK_, QStringLiteral("cmdOK"));
    cmdOK_->setDefault(true);
    connect(cmdOK_, &QPushButton::clicked, this, &QDialog::accept);

    auto* lines = new QVBoxLayout;
    lines->addWidget(lblName_);
    lines->addWidget(lblVersion_);
    lines->addSpacing(8);
    lines->addWidget(lblDescription_);
    auto* top = new QHBoxLayout;
    top->addWidget(picture, 0, Qt::AlignTop);
    top->addSpacing(12);
    top->addLayout(lines, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK_);
    auto* outer = new QVBoxLayout(this);
    outer->addLayout(top);
    outer->addSpacing(12);
    outer->addLayout(buttons);
    setMinimumWidth(420);
    cmdOK_->setFocus();
}

void register_frmAbout(QtModal& m) {
    m.register_form(QStringLiteral("frmAbout"), [](QWidget* parent) {
        FrmAbout box(parent);
        box.exec();
    });
}

} // namespace orva
