#include "tests/monkey/AskModel.h"

#include "tests/plugin/PlainAskModel.h"

#include <QSet>

#include <algorithm>

using platform::Dictionary;
using platform::Value;
using testsupport::PlainAsk;

namespace monkey {
namespace {

const QString Entry = QStringLiteral("entry");

bool isGroupCall(const Request &request)
{
    return request.function == Function::ShowGroupView;
}

/// What a panel with one label asks for.
PlainAsk plainAsk(const Dictionary &config)
{
    PlainAsk ask;
    ask.labels = QStringList{Entry};
    ask.length = static_cast<int>(std::max<qint64>(lengthIn(config), 0));
    ask.pattern = config.value("pattern").toString();
    if (config.contains("number")) {
        const Dictionary parts = config.value("number").toMap();
        PlainAsk::Number number;
        if (parts.contains("min"))
            number.min = parts.value("min").toDouble();
        if (parts.contains("max"))
            number.max = parts.value("max").toDouble();
        if (parts.contains("decimals"))
            number.decimals = parts.value("decimals").toInt();
        ask.number = number;
    }
    ask.choices = labelsIn(config, "choices");
    ask.unique = config.value("unique").toString();
    return ask;
}

QStringList askedLabels(const Request &request)
{
    const bool isMessage =
        isGroupCall(request) && !platform::description(request.config.value("message", QString())).isEmpty();
    const bool enters = !isMessage && labelsIn(request.config, "switch").isEmpty();
    return enters ? labelsIn(request.config, "input") : QStringList();
}

bool isDefaultRefused(const Request &request, const Shape &shape)
{
    const Value value = request.config.value("default");
    if (!value.isValid())
        return false;
    if (!isGroupCall(request))
        return !taken(value.toString(), request.config);
    QStringList seen;
    const Dictionary table = value.toMap();
    for (auto entry = table.cbegin(); entry != table.cend(); ++entry) {
        if (!shape.slotNames.contains(entry.key()))
            return true;
        if (!askedLabels(request).contains(entry.key()))
            continue;
        const QString text = entry.value().toString();
        if (!taken(text, request.config) || (seen.contains(text) && !allowsEqual(request.config)))
            return true;
        seen.append(text);
    }
    return false;
}

bool isAutoConfirmRefused(const Request &request)
{
    const Value value = request.config.value("autoConfirm");
    if (!value.isValid())
        return false;
    if (value.metaType() != QMetaType::fromType<bool>())
        return true;
    const Value buttons = request.config.value("button");
    const bool hasOwn = platform::isArray(buttons) && !buttons.toList().isEmpty();
    const bool isOwnRow = !labelsIn(request.config, "switch").isEmpty() ||
                          (isGroupCall(request) && !labelsIn(request.config, "input").isEmpty());
    return value.toBool() && hasOwn && !isOwnRow &&
           !labelsIn(request.config, "button").contains(QStringLiteral("OK"));
}

bool isLimitRefused(const Request &request)
{
    const Value value = request.config.value("timeLimit");
    if (!value.isValid())
        return false;
    const bool isMessage =
        isGroupCall(request) && !platform::description(request.config.value("message", QString())).isEmpty();
    return isMessage || !platform::isNumber(value) || value.toDouble() <= 0;
}

} // namespace

bool areRulesRefused(const Request &request, const Shape &shape)
{
    const Dictionary &config = request.config;
    const QStringList labels = askedLabels(request);
    for (const char *key : {"pattern", "hint", "validate", "unique", "number", "choices", "default",
                            "placeholder", "autoConfirm"}) {
        if (config.contains(QLatin1String(key)) && labels.isEmpty())
            return true;
    }
    const bool hasFunction =
        !config.contains("validate") || config.value("validate").toMap().contains("function");
    const bool hasChoices = !config.contains("choices") || !labelsIn(config, "choices").isEmpty();
    if (!hasFunction || !hasChoices || !plainAsk(config).refusalCodes().isEmpty())
        return true;
    return isDefaultRefused(request, shape) || isAutoConfirmRefused(request) || isLimitRefused(request);
}

std::optional<Value> taken(const QString &entry, const Dictionary &config)
{
    PlainAsk ask = plainAsk(config);
    if (!fits(entry, lengthIn(config)) || !ask.enter(entry))
        return std::nullopt;
    return ask.answer().value(Entry);
}

bool isGood(const QString &function, const Value &entry)
{
    const QString text = platform::description(entry);
    return function != QLatin1String("refuses a third") || text.isEmpty() || text.back().unicode() % 3 != 0;
}

bool passesFunction(const QString &entry, const Dictionary &config)
{
    const QString function = config.value("validate").toMap().value("function").toString();
    const std::optional<Value> value = taken(entry, config);
    return function.isEmpty() || !value || isGood(function, *value);
}

bool allowsEqual(const Dictionary &config)
{
    return config.contains("number") || config.contains("choices");
}

QString defaultOf(const QString &label, const Dictionary &config)
{
    const Value value = config.value("default");
    return platform::isDictionary(value) ? value.toMap().value(label).toString() : value.toString();
}

int limitOf(const Dictionary &config)
{
    constexpr double LongerThanAnyTest = 100.0;
    const double seconds = config.value("timeLimit").toDouble();
    return seconds > 0 && seconds < LongerThanAnyTest ? static_cast<int>(seconds * 1000) : 0;
}

} // namespace monkey
