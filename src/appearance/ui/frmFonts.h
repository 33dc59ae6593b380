#pragma once

#include "appearance/colors_fonts.h"

#include <QDialog>

class QCheckBox;
class QFontComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace orva {

class QtModal;

// "Font": the planners' shared font. QFontDialog offers no colour and no
// size limits, so the choice is made here: family, size 8 to 18, bold and a
// colour button, with a sample. The dialog works on the FontsForm of the
// command that opened it (OptionsState::fonts_form), or on one of its own
// when opened by itself.
class FrmFonts : public QDialog {
    Q_OBJECT
  public:
    explicit FrmFonts(AppState& s, QWidget* parent = nullptr);

    const FontsForm& form() const { return *f_; }

    void accept() override;
    // Cancel, Escape and the close box alike.
    void reject() override;

  private:
    void render();
    void collect();

    AppState& s_;
    FontsForm own_;
    FontsForm* f_ = nullptr;
    QFontComboBox* cboFontName_ = nullptr;
    QSpinBox* spnFontSize_ = nullptr;
    QCheckBox* chkBold_ = nullptr;
    QPushButton* cmdColor_ = nullptr;
    QLabel* lblSample_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
};

// Registers "frmFonts" with the seam: made afresh each time, shown with exec().
void register_frmFonts(QtModal& m, AppState& s);

} // namespace orva
