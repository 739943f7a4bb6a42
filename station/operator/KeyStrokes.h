#pragma once

#include <QList>
#include <QString>
#include <Qt>

namespace station {

/// One key as a person presses and releases it.
struct KeyStroke
{
    int key = 0; ///< A Qt::Key.
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    QString text;

    friend bool operator==(const KeyStroke &, const KeyStroke &) = default;
};

/// The keys that enter a text: a line end is Return, a tabulator Tab, backspace, escape and delete are the
/// keys of these names, the other control characters 1 to 26 are Control with a letter ("\1" is Control+A),
/// an upper-case letter is pressed with Shift, and any other character is a key that yields it.
[[nodiscard]] QList<KeyStroke> keyStrokes(const QString &text);

/// One of the keys that end a line or a field: Qt::Key_Return, Qt::Key_Tab, or Qt::Key_Enter of the keypad.
[[nodiscard]] KeyStroke keyStroke(Qt::Key key);

} // namespace station
