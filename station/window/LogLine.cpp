#include "station/window/LogLine.h"

namespace station {
namespace {

int weight(KVKLogLevel level)
{
    switch (level) {
    case KVKLogLevel::Debug:
        return 0;
    case KVKLogLevel::Error:
        return 2;
    case KVKLogLevel::Default:
        break;
    }
    return 1;
}

} // namespace

bool LogFilter::passes(const LogLine &line) const
{
    // Whoever looks for something has to know that it may be among those that are gone.
    if (!line.time.isValid())
        return true;
    return weight(line.level) >= weight(least) && (system == AllSystems || line.systems.contains(system)) &&
           line.text.contains(text, Qt::CaseInsensitive);
}

} // namespace station
