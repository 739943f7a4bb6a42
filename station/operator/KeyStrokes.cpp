#include "station/operator/KeyStrokes.h"

#include <optional>

namespace station {
namespace {

std::optional<int> namedKey(char32_t character)
{
    switch (character) {
    case U'\n':
    case U'\r':
        return Qt::Key_Return;
    case U'\t':
        return Qt::Key_Tab;
    case U'\b':
        return Qt::Key_Backspace;
    case U'\x1b':
        return Qt::Key_Escape;
    case U'\x7f':
        return Qt::Key_Delete;
    default:
        return std::nullopt;
    }
}

KeyStroke strokeOf(char32_t character)
{
    // What the Return key yields, whichever line end the script wrote.
    const QString text = character == U'\n' ? QStringLiteral("\r") : QString::fromUcs4(&character, 1);
    if (const std::optional<int> key = namedKey(character))
        return {*key, Qt::NoModifier, text};
    // A control character is the letter that its number counts to, with the control key held.
    if (character >= 1 && character <= 26)
        return {Qt::Key_A + static_cast<int>(character) - 1, Qt::ControlModifier, text};
    const bool shifted = QChar::isUpper(character);
    return {static_cast<int>(QChar::toUpper(character)), shifted ? Qt::ShiftModifier : Qt::NoModifier, text};
}

} // namespace

QList<KeyStroke> keyStrokes(const QString &text)
{
    QString lines = text;
    lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QList<KeyStroke> strokes;
    for (const auto character : lines.toUcs4())
        strokes.append(strokeOf(static_cast<char32_t>(character)));
    return strokes;
}

KeyStroke keyStroke(Qt::Key key)
{
    const QString text = key == Qt::Key_Tab ? QStringLiteral("\t") : QStringLiteral("\r");
    return {key, key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier, text};
}

} // namespace station
