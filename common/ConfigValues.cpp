#include "common/ConfigValues.h"

namespace interactive::config {

QString text(const QString &key, const platform::Dictionary &from)
{
    const auto found = from.constFind(key);
    return found == from.constEnd() || !found->isValid() ? QString(QLatin1String(""))
                                                         : platform::description(*found);
}

qint64 integer(const QString &key, const platform::Dictionary &from)
{
    return platform::integerValue(text(key, from));
}

QString label(const platform::Dictionary &from)
{
    const QString given = text(Label, from);
    return given.isEmpty() ? DefaultLabel : given;
}

} // namespace interactive::config
