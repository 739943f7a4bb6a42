#include "common/Selectors.h"

namespace interactive::selectors {

QString bracketed(const char *selector)
{
    return QStringLiteral("-[InteractiveView %1]").arg(QLatin1String(selector));
}

QString blockName(const char *selector)
{
    const QString method = bracketed(selector);
    return QStringLiteral("__%1%2_block_invoke").arg(method.size()).arg(method);
}

} // namespace interactive::selectors
