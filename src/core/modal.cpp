#include "core/modal.h"

namespace orva {
namespace {

class SilentModal final : public Modal {
  public:
    void message(const QString&, MsgStyle) override {}
    Answer ask_yes_no(const QString&, MsgStyle) override { return Answer::No; }
    QString save_file_dialog(const QString&) override { return {}; }
    QString open_file_dialog(const QString&, const QString&) override { return {}; }
    bool print_dialog(PrintSetup&) override { return false; }
    bool choose_color(quint32&) override { return false; }
    void open_form(const QString&) override {}
};

SilentModal silent;
Modal* current = &silent;

} // namespace

Modal& modal() {
    return *current;
}
void install_modal(Modal* m) {
    current = m ? m : &silent;
}

QString to_qt_filter(const QString& filter) {
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString caption = parts[i];
        const QString pattern = QString(parts[i + 1]).replace(QLatin1Char(';'), QLatin1Char(' '));
        // Qt reads the patterns from the last parentheses of the caption.
        if (!caption.contains(QLatin1Char('(')))
            caption += QStringLiteral(" (") + pattern + QLatin1Char(')');
        else
            caption = caption.left(caption.lastIndexOf(QLatin1Char('('))) + QLatin1Char('(') +
                      pattern + QLatin1Char(')');
        out << caption;
    }
    return out.join(QStringLiteral(";;"));
}

} // namespace orva
