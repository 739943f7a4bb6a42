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
    return before(Separator, identifier).text();
}

QString slotPart(const platform::Identifier &identifier)
{
    return after(Separator, identifier).text();
}

} // namespace interactive::identifiers
