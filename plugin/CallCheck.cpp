#include "plugin/CallCheck.h"

#include "platform/LogFormat.h"
#include "plugin/Configuration.h"
#include "plugin/Wanted.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "common/ConfigValues.h"
#include "common/ErrorCodes.h"
#include "common/Messages.h"
#include "common/Selectors.h"
#include "common/StationIndex.h"

namespace interactive {

namespace {

using platform::Array;
using platform::Dictionary;
using platform::Value;

constexpr int ConfigArgument = 2;

bool isUnknown(const Value &value)
{
    return value.metaType() == QMetaType::fromType<KVKUnknownValue>();
}

/// A configuration without what is not known of it.
struct KnownPart
{
    Dictionary config;
    QStringList unknown;    ///< Keys of which nothing is known.
    QStringList incomplete; ///< Keys of whose lists or tables a part is not known.

    [[nodiscard]] bool knows(const QString &key) const { return !unknown.contains(key); }
};

/// The value without what is not known inside of it. Nothing, where that is all of it.
Value knownPartOf(const Value &value, bool &isWhole)
{
    if (isUnknown(value)) {
        isWhole = false;
        return {};
    }
    if (platform::isArray(value)) {
        Array known;
        for (const Value &each : value.toList()) {
            const Value part = knownPartOf(each, isWhole);
            if (part.isValid())
                known.append(part);
        }
        return known.isEmpty() && !isWhole ? Value() : Value(known);
    }
    if (platform::isDictionary(value)) {
        Dictionary known;
        const Dictionary table = value.toMap();
        for (auto entry = table.cbegin(); entry != table.cend(); ++entry) {
            const Value part = knownPartOf(entry.value(), isWhole);
            if (part.isValid())
                known.insert(entry.key(), part);
        }
        return known.isEmpty() && !isWhole ? Value() : Value(known);
    }
    return value;
}

KnownPart knownPartOf(const Dictionary &config)
{
    KnownPart known;
    for (auto entry = config.cbegin(); entry != config.cend(); ++entry) {
        bool isWhole = true;
        const Value part = knownPartOf(entry.value(), isWhole);
        if (part.isValid())
            known.config.insert(entry.key(), part);
        else
            known.unknown.append(entry.key());
        if (!isWhole)
            known.incomplete.append(entry.key());
    }
    return known;
}

/// A station that has every slot which the call names: where the real one is not known, none is wrong.
StationMap stationThatFits(const Dictionary &config)
{
    QStringList names;
    for (const QString &key : {config::Input, config::Switch}) {
        for (const Value &label : config.value(key).toList())
            names.append(platform::description(label));
    }
    for (const QString &key : {config::Pattern, config::Default})
        names += config.value(key).toMap().keys();
    constexpr qint64 MostColumns = 1000;
    const qint64 columns = std::min(config::integer(config::Column, config), MostColumns);
    // A label that is named twice makes one slot, and is no label too many.
    const qint64 enough = std::max<qint64>(columns, 2 * names.size() + 1);
    while (names.size() < enough)
        names.append(QStringLiteral("\x01%1").arg(names.size()));
    Array groups;
    Array slotNames;
    for (const QString &name : std::as_const(names)) {
        groups.append(QStringLiteral("G"));
        slotNames.append(name);
    }
    return {groups, slotNames};
}

/// Looks at one call.
class Looker
{
public:
    Looker(QString function, const Array &arguments, const StationMap &station)
        : m_function(std::move(function))
        , m_arguments(arguments)
        , m_station(station)
    {}

    KVKCallReport look()
    {
        if (m_function == QLatin1String("showView")) {
            lookAtIndex(m_station.systemIndexToGroupMapping(), selectors::ShowInteractiveView,
                        "system index");
            lookAtConfig(false);
        } else if (m_function == QLatin1String("showGroupView")) {
            lookAtIndex(m_station.groupNames(), selectors::ShowInteractiveView, "group number");
            lookAtConfig(true);
        } else if (m_function == QLatin1String("getData")) {
            lookAtIndex(m_station.systemIndexToGroupMapping(), selectors::GetData, "system index");
        } else if (m_function == QLatin1String("isLoopFinished")) {
            lookAtIndex(m_station.groupNames(), selectors::IsLoopFinished, "group number");
        }
        return m_report;
    }

private:
    void add(int argument, const QStringList &keys, const QString &text)
    {
        m_report.problems.append({{argument, keys}, text});
    }
    void addForKey(const QString &key, const QString &text) { add(ConfigArgument, {key}, text); }
    void addForKey(const QString &key, const Refusal &refusal)
    {
        addForKey(key, QStringLiteral("%1: %2").arg(m_function, refusal.message));
    }

    void lookAtIndex(const Array &list, const char *selector, const char *what)
    {
        const Value index = m_arguments.value(0);
        if (isUnknown(index))
            return;
        try {
            // Of a station that is not known, every whole number may be an element.
            if (isWithin(list, index, selector, what) || m_station.systemCount() == 0)
                return;
            if (m_function == QLatin1String("showView")) {
                add(1, {},
                    platform::formatMessage(messages::NoSuchSystem,
                                            {m_function, index, m_station.systemCount() - 1}));
                return;
            }
            static_cast<void>(elementAt(list, index, selector, what));
        } catch (const std::logic_error &problem) {
            // In a script the method of the platform says nothing; its function is named.
            QString text = QString::fromUtf8(problem.what());
            add(1, {}, text.replace(selectors::bracketed(selector), m_function));
        }
    }

    void lookAtConfig(bool forGroup)
    {
        const Value argument = m_arguments.value(1);
        if (isUnknown(argument))
            return;
        const KnownPart known = knownPartOf(argument.toMap());
        const StationMap fitting = stationThatFits(known.config);
        const StationMap &station = m_station.systemCount() == 0 ? fitting : m_station;
        lookAtKeys(known);
        const Wanted wanted = wantedBy(known.config);
        if (!wanted.wrongType.isEmpty()) {
            const bool isSwitch = wanted.wrongType == QLatin1String(messages::SwitchIsNotArray);
            addForKey(isSwitch ? config::Switch : config::Input,
                      QStringLiteral("%1: %2").arg(m_function, wanted.wrongType));
            return;
        }
        if (wanted.buttonsAreNoList)
            addForKey(config::Button,
                      QStringLiteral("%1: %2").arg(m_function, QLatin1String(messages::ButtonIsNotArray)));
        lookAtLabels(known, wanted, forGroup, station);
        lookAtRules(known, wanted, forGroup, station);
        const Value image = known.config.value(config::Image);
        if (image.metaType() == QMetaType::fromType<QString>())
            m_report.pictures.append({{ConfigArgument, {config::Image}}, image.toString()});
    }

    /// Keys that nobody knows, whatever their values are, and odd values.
    void lookAtKeys(const KnownPart &known)
    {
        for (const Doubt &doubt : keyedDoubtsAbout(known.config, m_function))
            addForKey(doubt.key, doubt.text);
        Dictionary valueless;
        for (const QString &key : known.unknown)
            valueless.insert(key, QString());
        for (const Doubt &doubt : keyedDoubtsAbout(valueless, m_function))
            addForKey(doubt.key, doubt.text);
    }

    void lookAtLabels(const KnownPart &known, const Wanted &wanted, bool forGroup, const StationMap &station)
    {
        // A message is shown whatever else is asked for; so may be one that is not known.
        if (isInformative(known.config, forGroup) || (forGroup && !known.knows(config::Message)))
            return;
        // Where there may be entries, a switch that is named may not be what the panel is for.
        if (!known.knows(config::Input))
            return;
        const Refusal columns{ErrorColumnExceedsSlots, QLatin1String(messages::ColumnExceedsSlots)};
        const auto refused = refusalOf(known.config, forGroup, wanted.inputs, wanted.switches, station);
        if (refused)
            addForKey(keyOf(*refused, wanted), *refused);
        // Told beside what is wrong with the labels.
        const bool names = wanted.asks() && refused && *refused != columns;
        if (names && refusalOf(known.config, forGroup, Array(), {}, station) == columns)
            addForKey(config::Column, columns);
    }

    static QString keyOf(const Refusal &refused, const Wanted &wanted)
    {
        if (refused.code == ErrorColumnExceedsSlots)
            return config::Column;
        const bool isOfSwitch = refused.code == ErrorInputAndSwitch || wanted.inputCount == 0;
        return isOfSwitch && wanted.switches.isValid() ? config::Switch : config::Input;
    }

    void lookAtRules(const KnownPart &known, const Wanted &wanted, bool forGroup, const StationMap &station)
    {
        AskContext context = askContextOf(known.config, wanted, forGroup);
        context.unknown = known.unknown;
        for (const QString &key : {config::Input, config::Button}) {
            if (known.incomplete.contains(key))
                context.unknown.append(key);
        }
        // A default may be one of the choices that are not known.
        if (known.incomplete.contains(config::Choices))
            context.unknown.append(config::Default);
        for (const AskReading::OfKey &each : readAskRules(known.config, context, station).refusals)
            addForKey(each.key, each.refusal);
    }

    QString m_function;
    const Array &m_arguments;
    const StationMap &m_station;
    KVKCallReport m_report;
};

} // namespace

KVKCallReport reportOnCall(const QString &function, const platform::Array &arguments,
                           const StationMap &station)
{
    return Looker(function, arguments, station).look();
}

} // namespace interactive
