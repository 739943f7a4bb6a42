#include "kovan/KovanLuaSequencer/KVKLabels.h"

QString __kviGetSelectorLabel(const char *selector) // NOLINT(bugprone-reserved-identifier)
{
    return QStringLiteral("selector ") + QLatin1String(selector);
}

QString __kviArgTypeLabel(KVKArgType type) // NOLINT(bugprone-reserved-identifier)
{
    return type == KVKArgType::NSNumber ? QStringLiteral("type NSNumber") : QStringLiteral("type NSDictionary");
}
