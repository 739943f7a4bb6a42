#include "tests/monkey/Model.h"

#include "tests/monkey/AskModel.h"

#include <QSet>

#include <algorithm>
#include <cmath>

using platform::Dictionary;
using platform::Value;

namespace monkey {
namespace {

const QString Input = QStringLiteral("input");
const QString Switch = QStringLiteral("switch");
const QString Column = QStringLiteral("column");
constexpr qint64 MostGroupInputs = 12;
constexpr qint64 MostColumns = 67'000;

qint64 integerIn(const Dictionary &config, const QString &key)
{
    const Value value = config.value(key);
    return value.isValid() ? platform::integerValue(platform::description(value)) : 0;
}

bool isWhole(const Value &value)
{
    return platform::isNumber(value) && std::trunc(value.toDouble()) == value.toDouble();
}

bool isWrongType(const Dictionary &config, const QString &key)
{
    const Value value = config.value(key);
    return value.isValid() && !platform::isArray(value);
}

bool isReserved(const QString &label)
{
    return label == QLatin1String("length") || label == QLatin1String("clickedButton") ||
           label == QLatin1String("SharedInput");
}

bool isGroupRefused(const Dictionary &config, const Shape &shape)
{
    const QStringList inputs = labelsIn(config, Input);
    const QStringList labels = inputs.isEmpty() ? labelsIn(config, Switch) : inputs;
    const auto isNoSlot = [&](const QString &label) { return !shape.slotNames.contains(label); };
    const qint64 column = integerIn(config, Column);
    return std::any_of(inputs.cbegin(), inputs.cend(), isNoSlot) ||
           std::any_of(labels.cbegin(), labels.cend(), isReserved) ||
           labels.size() > shape.slotNames.size() || column < 0 || column > shape.slotNames.size() ||
           inputs.size() > MostGroupInputs ||
           QSet<QString>(labels.cbegin(), labels.cend()).size() != labels.size();
}

bool isRefused(const Request &request, const Shape &shape)
{
    const Dictionary &config = request.config;
    if (isWrongType(config, Input) || isWrongType(config, Switch))
        return true;
    const QStringList inputs = labelsIn(config, Input);
    const QStringList switches = labelsIn(config, Switch);
    if (!config.contains(Input) && switches.isEmpty())
        return false;
    if (config.contains(Input) && config.contains(Switch))
        return true;
    if (request.function == Function::ShowGroupView)
        return isGroupRefused(config, shape);
    return inputs.size() > 1 || (!inputs.isEmpty() && isReserved(inputs.first()));
}

QString nameOf(Function function)
{
    static const QStringList names{"showView", "showGroupView", "getData",
                                   "setLoop",  "getLoopConfig", "isLoopFinished"};
    return names.at(static_cast<int>(function));
}

} // namespace

Dictionary Request::toData() const
{
    Dictionary data{{"function", nameOf(function)}};
    if (subject.isValid())
        data.insert("subject", subject);
    if (!config.isEmpty())
        data.insert("config", config);
    return data;
}

Request Request::fromData(const Dictionary &data)
{
    Request request{Function::GetLoopConfig, data.value("subject"), data.value("config").toMap()};
    for (int function = 0; function <= static_cast<int>(Function::IsLoopFinished); ++function) {
        if (nameOf(static_cast<Function>(function)) == data.value("function").toString())
            request.function = static_cast<Function>(function);
    }
    return request;
}

QString Request::inWords() const
{
    QString words = nameOf(function) + QLatin1Char('(');
    if (function != Function::GetLoopConfig)
        words += platform::description(subject);
    if (shows())
        words += QLatin1String(", ") + platform::description(config);
    return words + QLatin1Char(')');
}

Fate fateOf(const Request &request, const Shape &shape)
{
    if (!request.shows())
        return Fate::Returns;
    const bool forGroup = request.function == Function::ShowGroupView;
    const qint64 subject = platform::integerValue(request.subject);
    const bool isThere = subject >= 0 && subject < (forGroup ? shape.groups.size() : shape.systems());
    if (!isWhole(request.subject) || (forGroup && !isThere))
        return Fate::Throws;
    if (!isThere)
        return Fate::Beyond;
    const bool hasTypes = !isWrongType(request.config, Input) && !isWrongType(request.config, Switch);
    const qint64 column = integerIn(request.config, Column);
    const bool isDrawable = column >= 0 && column < MostColumns;
    const bool isMessage =
        forGroup && hasTypes && !platform::description(request.config.value("message", QString())).isEmpty();
    if (isMessage && !areRulesRefused(request, shape))
        return isDrawable ? Fate::Message : Fate::CannotDraw;
    if (isMessage || isRefused(request, shape) || areRulesRefused(request, shape))
        return Fate::Refused;
    return isDrawable ? Fate::Asks : Fate::CannotDraw;
}

std::optional<int> bandOf(const Request &request, Fate fate, const Shape &shape)
{
    if (fate != Fate::Message && fate != Fate::Refused && fate != Fate::Asks)
        return std::nullopt;
    const int subject = static_cast<int>(platform::integerValue(request.subject));
    return request.function == Function::ShowGroupView ? subject : shape.groupOf(subject);
}

QString panelKeyOf(const Request &request, Fate fate, const Shape &shape)
{
    const std::optional<int> band = bandOf(request, fate, shape);
    if (!band || fate == Fate::Message)
        return {};
    if (fate == Fate::Asks && request.function == Function::ShowView)
        return platform::description(request.subject);
    return shape.groups.at(*band);
}

QString questionOf(const Request &request)
{
    QStringList inputs = labelsIn(request.config, Input);
    QStringList switches = labelsIn(request.config, Switch);
    inputs.sort();
    switches.sort();
    QString value;
    if (request.function == Function::ShowGroupView)
        value = platform::description(request.config.value("label", QString()));
    if (value.isEmpty())
        value = QStringLiteral("SN");
    return nameOf(request.function) + QLatin1Char(' ') + platform::description(request.subject) +
           QLatin1String(": ") + value + QLatin1String(" of ") + inputs.join(QLatin1Char(',')) +
           QLatin1String(" | ") + switches.join(QLatin1Char(','));
}

QStringList labelsIn(const Dictionary &config, const QString &key)
{
    QStringList labels;
    for (const Value &label : config.value(key).toList())
        labels.append(platform::description(label));
    return labels;
}

qint64 lengthIn(const Dictionary &config)
{
    return integerIn(config, QStringLiteral("length"));
}

bool fits(const QString &entry, qint64 length)
{
    constexpr qsizetype Longest = 4096;
    constexpr char16_t GroupSeparator = 0x1D;
    const auto isUnwanted = [](QChar c) {
        return c.category() == QChar::Other_Control && c != GroupSeparator;
    };
    return entry.size() <= Longest && std::none_of(entry.cbegin(), entry.cend(), isUnwanted) &&
           (length <= 0 || entry.size() == length);
}

} // namespace monkey
