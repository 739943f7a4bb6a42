#include "common/Identifiers.h"

namespace interactive::identifiers {

platform::Identifier named(const QString &panelKey, const QString &name)
{
    return platform::Identifier(panelKey + Separator + name);
}

platform::Identifier indexed(const QString &panelKey, qint64 position, const QString &name)
{
    return platform::Identifier(panelKey + Separator + QString::number(position) + Separator + name);
}

platform::Identifier before(const QString &separator, const platform::Identifier &from)
{
    const QString text = from.text();
    const qsizetype at = text.indexOf(separator);
    // The very instance where there is nothing to cut off: a group button's identifier is its panel's key,
    // and panels are hidden and removed by instance.
    return at < 0 ? from : platform::Identifier(text.left(at));
}

platform::Identifier after(const QString &separator, const platform::Identifier &from)
{
    const QString text = from.text();
    const qsizetype at = text.indexOf(separator);
    return at < 0 ? from : platform::Identifier(text.mid(at + separator.size()));
}

QString panelPart(const platform::Identifier &identifier)
{
    // As text alone, for look-ups in records: the part that was cut out is an instance of its own, which no
    // panel bears.
    return before(Separator, identifier).text();
}

QString slotPart(const platform::Identifier &identifier)
{
    return after(Separator, identifier).text();
}

} // namespace interactive::identifiers
