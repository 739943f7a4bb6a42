#include "kovan/KovanLuaSequencer/KVKLabels.h"

namespace {

const QString SelectorPrefix = QStringLiteral("selector ");
const QString NumberLabel = QStringLiteral("type NSNumber");
const QString DictionaryLabel = QStringLiteral("type NSDictionary");

} // namespace

QString __kviGetSelectorLabel(const char *selector) // NOLINT(bugprone-reserved-identifier)
{
    return SelectorPrefix + QLatin1String(selector);
}

QString __kviArgTypeLabel(KVKArgType type) // NOLINT(bugprone-reserved-identifier)
{
    return type == KVKArgType::NSNumber ? NumberLabel : DictionaryLabel;
}

std::optional<QByteArray> KVKSelectorOfLabel(const QString &label)
{
    if (!label.startsWith(SelectorPrefix) || label.size() == SelectorPrefix.size())
        return std::nullopt;
    return label.mid(SelectorPrefix.size()).toLatin1();
}

std::optional<KVKArgType> KVKArgTypeOfLabel(const QString &label)
{
    if (label == NumberLabel)
        return KVKArgType::NSNumber;
    if (label == DictionaryLabel)
        return KVKArgType::NSDictionary;
    return std::nullopt;
}
