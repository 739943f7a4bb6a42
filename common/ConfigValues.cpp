#include "common/ConfigValues.h"

namespace interactive::config {

QString text(const QString &key, const platform::Dictionary &from)
{
    const auto found = from.constFind(key);
    // A value of nothing counts as a missing key: its description would be the text "(null)".
    return found == from.constEnd() || !found->isValid() ? QString(QLatin1String(""))
                                                         : platform::description(*found);
}

qint64 integer(const QString &key, const platform::Dictionary &from)
{
    // By way of the text, so that 12 and "12" mean the same, whichever of them a sequence was written with.
    return platform::integerValue(text(key, from));
}

QString label(const platform::Dictionary &from)
{
    const QString given = text(Label, from);
    // An empty one too: the field would be captioned with a colon alone.
    return given.isEmpty() ? DefaultLabel : given;
}

} // namespace interactive::config
