#include "station/record/LuaText.h"

#include <QList>

namespace station {
namespace {

/// Whether a reader sees the character, where and as what it is.
bool canBeRead(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    case QChar::Separator_Space:
        return character == U' ';
    default:
        return true;
    }
}

QString written(char32_t character)
{
    switch (character) {
    case U'"':
        return QStringLiteral("\\\"");
    case U'\\':
        return QStringLiteral("\\\\");
    case U'\n':
        return QStringLiteral("\\n");
    case U'\r':
        return QStringLiteral("\\r");
    case U'\t':
        return QStringLiteral("\\t");
    default:
        break;
    }
    if (canBeRead(character))
        return QString::fromUcs4(&character, 1);
    // Three digits, so that a digit that follows is none of it.
    if (character < 0x80)
        return QStringLiteral("\\%1").arg(static_cast<uint>(character), 3, 10, QLatin1Char('0'));
    return QStringLiteral("\\u{%1}").arg(QString::number(static_cast<uint>(character), 16).toUpper());
}

} // namespace

QString luaText(const QString &text)
{
    QString quoted(QLatin1Char('"'));
    // The conversion puts U+FFFD where half a character is.
    for (const auto character : text.toUcs4())
        quoted += written(static_cast<char32_t>(character));
    return quoted + QLatin1Char('"');
}

} // namespace station
