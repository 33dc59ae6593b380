#pragma once

#include "core/modal.h"

#include <QString>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace orva::testing {

// The modal seam as a test drives it: answers are queued ahead, and every
// message, question, dialog and form opened is recorded with its exact text.
class ScriptedModal final : public Modal {
  public:
    struct Shown {
        QString kind; // "message", "question", "save", "open", "print", "color", "form"
        QString text; // the message text, the filter, or the form's name
        MsgStyle style = MsgStyle::Plain;
        QString preset; // a file dialog's preset name
    };

    std::vector<Shown> shown;
    std::deque<Answer> answers;                     // for ask_yes_no; No when empty
    std::deque<QString> file_answers;               // for both file dialogs; "" when empty
    std::map<QString, std::function<void()>> forms; // what a form "does"
    // For print_dialog: a setup accepts with it, nullopt (or none queued)
    // cancels. The setups the dialogs were opened with are kept.
    std::deque<std::optional<PrintSetup>> print_answers;
    std::vector<PrintSetup> print_presets;
    // Also for print_dialog, asked before print_answers: the user accepts
    // the dialog as it was preset, only sending the pages to this PDF file.
    std::deque<QString> print_to_pdf;
    // Runs while the print dialog is up, to see what stands behind it.
    std::function<void()> during_print;
    // For choose_color: a colour accepts with it, nullopt (or none) cancels.
    std::deque<std::optional<quint32>> color_answers;

    void message(const QString& text, MsgStyle style) override {
        shown.push_back({QStringLiteral("message"), text, style, {}});
    }
    Answer ask_yes_no(const QString& text, MsgStyle style) override {
        shown.push_back({QStringLiteral("question"), text, style, {}});
        if (answers.empty()) return Answer::No;
        const Answer a = answers.front();
        answers.pop_front();
        return a;
    }
    QString save_file_dialog(const QString& filter) override { return file(u"save", filter); }
    QString open_file_dialog(const QString& filter, const QString& file_name = QString()) override {
        QString a = file(u"open", filter);
        shown.back().preset = file_name;
        return a;
    }
    bool print_dialog(PrintSetup& setup) override {
        shown.push_back({QStringLiteral("print"), {}, MsgStyle::Plain, {}});
        print_presets.push_back(setup);
        if (during_print) during_print();
        if (!print_to_pdf.empty()) {
            setup.output_file = print_to_pdf.front();
            setup.printer_name.clear();
            print_to_pdf.pop_front();
            return true;
        }
        if (print_answers.empty()) return false;
        const std::optional<PrintSetup> a = print_answers.front();
        print_answers.pop_front();
        if (!a) return false;
        setup = *a;
        return true;
    }
    bool choose_color(quint32& color) override {
        shown.push_back({QStringLiteral("color"), {}, MsgStyle::Plain, {}});
        if (color_answers.empty()) return false;
        const std::optional<quint32> a = color_answers.front();
        color_answers.pop_front();
        if (!a) return false;
        color = *a;
        return true;
    }
    void open_form(const QString& name) override {
        shown.push_back({QStringLiteral("form"), name, MsgStyle::Plain, {}});
        if (auto it = forms.find(name); it != forms.end() && it->second) it->second();
    }

    // The texts of all messages (not questions), in order.
    std::vector<QString> messages() const {
        std::vector<QString> out;
        for (const auto& s : shown)
            if (s.kind == u"message") out.push_back(s.text);
        return out;
    }
    const Shown* last(QStringView kind) const {
        for (auto it = shown.rbegin(); it != shown.rend(); ++it)
            if (it->kind == kind) return &*it;
        return nullptr;
    }

  private:
    QString file(QStringView kind, const QString& filter) {
        shown.push_back({kind.toString(), filter, MsgStyle::Plain, {}});
        if (file_answers.empty()) return {};
        QString a = file_answers.front();
        file_answers.pop_front();
        return a;
    }
};

// Installs a seam for the life of a test and puts the silent one back after.
class ModalGuard {
  public:
    explicit ModalGuard(Modal* m) { install_modal(m); }
    ~ModalGuard() { install_modal(nullptr); }
};

} // namespace orva::testing
