#include "station/badge/BadgeRule.h"

#include <QRegularExpression>

#include <algorithm>

namespace station {

std::optional<QString> BadgeRule::whyNot(const QString &text) const
{
    if (text.isEmpty())
        return QStringLiteral("it is empty");
    if (text.size() > LongestBadge)
        return QStringLiteral("it is longer than %1 characters").arg(LongestBadge);
    const bool hasControl = std::any_of(text.cbegin(), text.cend(), [](QChar character) {
        return character.category() == QChar::Other_Control;
    });
    if (hasControl)
        return QStringLiteral("it holds a control character");
    const QRegularExpression form(QRegularExpression::anchoredPattern(pattern));
    if (!pattern.isEmpty() && !form.match(text).hasMatch())
        return QStringLiteral("it does not have the form of a badge");
    return std::nullopt;
}

std::optional<QString> BadgeRule::whyNoPattern(const QString &pattern)
{
    const QRegularExpression form(pattern);
    if (form.isValid())
        return std::nullopt;
    return QStringLiteral("%1 at character %2").arg(form.errorString()).arg(form.patternErrorOffset() + 1);
}

} // namespace station
