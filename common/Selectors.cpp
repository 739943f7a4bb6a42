#include "common/Selectors.h"

#include <QStringBuilder>

namespace interactive::selectors {

QString bracketed(const char *selector)
{
    // Put together in one go: nearly every log line has one.
    return QLatin1String("-[InteractiveView ") % QLatin1String(selector) % QLatin1Char(']');
}

QString blockName(const char *selector)
{
    const QString method = bracketed(selector);
    return QLatin1String("__") % QString::number(method.size()) % method % QLatin1String("_block_invoke");
}

} // namespace interactive::selectors
