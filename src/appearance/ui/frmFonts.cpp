#include "appearance/ui/frmFonts.h"

#include "core/ui/form_helpers.h"
#include "core/ui/qt_modal.h"

#include <QCheckBox>
#include <QFontComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

namespace orva {
namespace {

QColor qt_color(Color c) {
    return QColor(red_of(c), green_of(c), blue_of(c));
}

} // namespace

FrmFonts::FrmFonts(AppState& s, QWidget* parent) : QDialog(parent), s_(s) {
    setObjectName(QStringLiteral("frmFonts"));
    setAccessibleDescription(QStringLiteral("frmFonts"));
    setWindowTitle(QStringLiteral("Font"));
    setModal(true);

    if (s_.fonts_form) {
        f_ = s_.fonts_form;
    } else {
        frmFonts_Load(s_.options(), s_.view(), own_);
        f_ = &own_;
    }

    cboFontName_ = new QFontComboBox(this);
    name_control(cboFontName_, QStringLiteral("cboFontName"), QStringLiteral("Font"));
    auto* lblFont = new QLabel(QStringLiteral("&Font:"), this);
    name_control(lblFont, QStringLiteral("lblFont"));
    lblFont->setBuddy(cboFontName_);

    spnFontSize_ = new QSpinBox(this);
    name_control(spnFontSize_, QStringLiteral("spnFontSize"), QStringLiteral("Size"));
    spnFontSize_->setRange(font_size_min, font_size_max);
    auto* lblSize = new QLabel(QStringLiteral("&Size:"), this);
    name_control(lblSize, QStringLiteral("lblSize"));
    lblSize->setBuddy(spnFontSize_);

    chkBold_ = new QCheckBox(QStringLiteral("&Bold"), this);
    name_control(chkBold_, QStringLiteral("chkBold"));

    cmdColor_ = new QPushButton(QStringLiteral("&Color..."), this);
    name_control(cmdColor_, QStringLiteral("cmdColor"));

    lblSample_ = new QLabel(QStringLiteral("AaBbYyZz  9:30 am"), this);
    name_control(lblSample_, QStringLiteral("lblSample"), QStringLiteral("Sample"));
    lblSample_->setAlignment(Qt::AlignCenter);
    lblSample_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    // Room for the largest size in bold, so the sample is never clipped.
    lblSample_->setMinimumSize(380, 64);
    lblSample_->setAutoFillBackground(true);

    Command1_ = new QPushButton(QStringLiteral("OK"), this);
    name_control(Command1_, QStringLiteral("Command1"));
    Command1_->setDefault(true);
    Command2_ = new QPushButton(QStringLiteral("Cancel"), this);
    name_control(Command2_, QStringLiteral("Command2"));

    auto* grid = new QGridLayout;
    grid->addWidget(lblFont, 0, 0);
    grid->addWidget(cboFontName_, 0, 1, 1, 2);
    grid->addWidget(lblSize, 1, 0);
    grid->addWidget(spnFontSize_, 1, 1);
    grid->addWidget(chkBold_, 1, 2);
    grid->addWidget(cmdColor_, 2, 1);
    grid->addWidget(lblSample_, 3, 0, 1, 3);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1_);
    buttons->addWidget(Command2_);
    auto* outer = new QVBoxLayout(this);
    outer->addLayout(grid);
    outer->addLayout(buttons);

    connect(Command1_, &QPushButton::clicked, this, &FrmFonts::accept);
    connect(Command2_, &QPushButton::clicked, this, &FrmFonts::reject);
    connect(cmdColor_, &QPushButton::clicked, this, [this] {
        collect();
        frmFonts_Color(*f_);
        render();
    });
    // The sample follows every change at once.
    connect(cboFontName_, &QFontComboBox::currentFontChanged, this, [this] {
        collect();
        render();
    });
    connect(spnFontSize_, &QSpinBox::valueChanged, this, [this] {
        collect();
        render();
    });
    connect(chkBold_, &QCheckBox::toggled, this, [this] {
        collect();
        render();
    });

    render();
}

void FrmFonts::render() {
    {
        const QSignalBlocker b1(cboFontName_), b2(spnFontSize_), b3(chkBold_);
        cboFontName_->setCurrentFont(QFont(f_->font_name));
        // A family the system lacks still shows by its name, as it is kept.
        if (cboFontName_->currentText() != f_->font_name) cboFontName_->setEditText(f_->font_name);
        spnFontSize_->setValue(f_->font_size);
        chkBold_->setChecked(f_->font_bold);
    }
    QPixmap swatch(16, 16);
    swatch.fill(qt_color(f_->font_color));
    cmdColor_->setIcon(QIcon(swatch));

    QFont sample(f_->font_name);
    sample.setPointSize(f_->font_size);
    sample.setBold(f_->font_bold);
    sample.setItalic(f_->font_italic);
    lblSample_->setFont(sample);
    QPalette p = lblSample_->palette();
    p.setColor(QPalette::WindowText, qt_color(f_->font_color));
    p.setColor(QPalette::Window, qt_color(s_.vsSched.BackColor()));
    lblSample_->setPalette(p);
}

void FrmFonts::collect() {
    const QString family = cboFontName_->currentText();
    if (!family.isEmpty()) f_->font_name = family;
    f_->font_size = limit_font_size(spnFontSize_->value());
    f_->font_bold = chkBold_->isChecked();
}

void FrmFonts::accept() {
    collect();
    frmFonts_OK(*f_);
    QDialog::accept();
}

void FrmFonts::reject() {
    frmFonts_Cancel(*f_);
    QDialog::reject();
}

void register_frmFonts(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmFonts"), [&s](QWidget* parent) {
        FrmFonts form(s, parent);
        form.exec();
    });
}

} // namespace orva
