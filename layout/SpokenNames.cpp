#include "layout/SpokenNames.h"

#include <QStringList>

namespace interactive::spoken {

QString whose(const QString &slot, const QString &group)
{
    return QStringLiteral("slot %1, group %2").arg(slot, group);
}

QString whose(const PanelSubject &subject)
{
    const QString group = subject.groupName.text();
    if (subject.isGroup || !subject.slot.isValid())
        return QStringLiteral("group %1").arg(group);
    return whose(platform::description(subject.slot), group);
}

QString panel(const PanelSubject &subject)
{
    QString name = whose(subject);
    name.front() = name.front().toUpper();
    return name;
}

QString control(const QString &name, const QString &whose)
{
    return QStringLiteral("%1, %2").arg(name, whose);
}

QString askedFor(const AskRules &rules, const QString &label, qint64 length)
{
    QStringList parts;
    if (!rules.hint.isEmpty())
        parts.append(rules.hint);
    if (length > 0)
        parts.append(QStringLiteral("%1 characters").arg(length));
    if (const std::optional<NumberRule> &number = rules.of(label).number) {
        const QString range = entries::rangeOf(*number);
        parts.append(range.isEmpty() ? number->unit : range);
        parts.removeAll(QString());
    }
    return parts.join(QStringLiteral("; "));
}

} // namespace interactive::spoken
