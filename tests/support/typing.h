#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QString>
#include <QWidget>

namespace orva::testing {

// Types `text` into `w` one code point at a time, each as the key event a
// keyboard of that script sends. QTest::keyClicks cannot: it passes every
// character through Latin-1.
inline void type_text(QWidget* w, const QString& text) {
    for (qsizetype i = 0; i < text.size();) {
        const qsizetype n =
            text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate() ? 2
                                                                                             : 1;
        const QString ch = text.mid(i, n);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, ch);
        QApplication::sendEvent(w, &press);
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, ch);
        QApplication::sendEvent(w, &release);
        i += n;
    }
}

} // namespace orva::testing
