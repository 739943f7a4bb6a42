#include "plugin/AskConfiguration.h"

#include "platform/LogFormat.h"

#include <QSet>

#include <algorithm>
#include <cmath>

#include "common/ConfigValues.h"
#include "common/ErrorCodes.h"
#include "common/Messages.h"
#include "common/SlotLabels.h"

namespace interactive {

namespace {

using platform::Dictionary;
using platform::formatMessage;
using platform::Value;

/// Eleven days and a half. Whoever means "for ever" leaves the key out.
constexpr qint64 LongestTimeLimit = 1'000'000;
constexpr int MostDecimals = 15; // digits that a number of the platform holds exactly
constexpr qsizetype LongestShown = 80;

const QString OkTitle = QStringLiteral("OK");

/// Leaves the reading of a key with a refusal.
struct Refused
{
    QString key;
    Refusal refusal;
};

/// Leaves the reading of a key that depends on something unknown.
struct NotKnown
{};

bool isText(const Value &value)
{
    return value.metaType() == QMetaType::fromType<QString>();
}

QString shown(const Value &value)
{
    const QString text = platform::description(value);
    return text.size() <= LongestShown ? text : text.left(LongestShown) + QChar(0x2026);
}

/// A number, or a text that is one and nothing else, as everywhere in a configuration.
std::optional<double> numberOf(const Value &value)
{
    if (!platform::isNumber(value) && !isText(value))
        return std::nullopt;
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// An empty table of Lua is read as an empty list.
std::optional<Dictionary> tableOf(const Value &value)
{
    if (platform::isDictionary(value))
        return value.toMap();
    if (platform::isArray(value) && value.toList().isEmpty())
        return Dictionary();
    return std::nullopt;
}

/// Reads the optional keys one by one. Each throws Refused for a value that its key does not take.
class Reader
{
public:
    Reader(const Dictionary &config, const AskContext &context, const StationMap &station)
        : m_config(config)
        , m_context(context)
        , m_station(station)
    {
        // Each label has a rule, so that what is looked up later is there.
        for (const QString &label : context.labels)
            m_rules.entries.insert(label, {});
    }

    AskReading read()
    {
        step([this] { readPattern(); });
        step([this] { m_rules.hint = entryText(config::Hint, ErrorHint); });
        step([this] { readValidate(); });
        step([this] { readUnique(); });
        step([this] { readNumber(); });
        step([this] { readChoices(); });
        // Behind what forbids it, so that a broken number or list is told before their meeting.
        step([this] { checkUnique(); });
        // Judged by the rules above, which have to be complete.
        if (m_areComplete)
            step([this] { readDefault(); });
        step([this] { m_rules.placeholder = entryText(config::Placeholder, ErrorPlaceholder); });
        step([this] { readAutoConfirm(); });
        step([this] { readTimeLimit(); });
        step([this] { m_rules.image = text(config::Image, ErrorImage); });
        step([this] { m_rules.instruction = text(config::Instruction, ErrorInstruction); });
        if (!m_refusals.isEmpty())
            return {{}, m_refusals.first().refusal, m_refusals};
        return {m_rules, std::nullopt, {}};
    }

private:
    template <class Step>
    void step(const Step &read)
    {
        try {
            read();
            return;
        } catch (const Refused &refused) {
            m_refusals.append({refused.key, refused.refusal});
        } catch (const NotKnown &) {
            // Nothing to say about it.
        }
        m_areComplete = false;
    }

    [[nodiscard]] bool isKnown(const QString &key) const { return !m_context.unknown.contains(key); }
    void needKnown(const QString &key) const
    {
        if (!isKnown(key))
            throw NotKnown();
    }
    /// The value of a key; nothing when it is not there.
    [[nodiscard]] Value valueOf(const QString &key) const
    {
        needKnown(key);
        return m_config.value(key);
    }

    [[noreturn]] void refuse(const QString &key, int code, const QString &why) const
    {
        throw Refused{key,
                      {code, formatMessage(messages::WrongValue, {key, shown(m_config.value(key)), why})}};
    }
    [[noreturn]] void refuse(const QString &key, int code, const char *why) const
    {
        refuse(key, code, QString::fromUtf8(why));
    }

    /// The value of a key that says something about entries; nothing when it is not there.
    Value entryValue(const QString &key, int code) const
    {
        const Value value = valueOf(key);
        if (value.isValid() && m_context.labels.isEmpty()) {
            needKnown(config::Input);
            refuse(key, code, messages::NeedsInput);
        }
        return value;
    }
    QString checkedText(const QString &key, int code, const Value &value) const
    {
        if (value.isValid() && !isText(value))
            refuse(key, code, messages::MustBeText);
        return value.toString();
    }
    QString entryText(const QString &key, int code) const
    {
        return checkedText(key, code, entryValue(key, code));
    }
    QString text(const QString &key, int code) const { return checkedText(key, code, valueOf(key)); }

    /// Refuses a table that names a slot which the station does not have, or a label that nobody asks for.
    void checkNames(const QString &key, int code, const Dictionary &table) const
    {
        for (const QString &name : table.keys()) {
            if (m_context.forGroup && !labels::contains(m_station.systemIndexToSlotMapping(), name))
                refuse(key, code, formatMessage(messages::UnknownSlot, {name}));
            if (!m_context.forGroup && !m_context.labels.contains(name)) {
                needKnown(config::Input);
                refuse(key, code, formatMessage(messages::UnknownLabel, {name}));
            }
        }
    }

    void readPattern()
    {
        const Value value = entryValue(config::Pattern, ErrorPattern);
        if (!value.isValid())
            return;
        if (isText(value)) {
            const QRegularExpression form = compiled(value.toString());
            for (EntryRule &rule : m_rules.entries)
                rule.pattern = form;
            return;
        }
        const std::optional<Dictionary> table = tableOf(value);
        if (!table)
            refuse(config::Pattern, ErrorPattern, messages::MustBeForm);
        checkNames(config::Pattern, ErrorPattern, *table);
        for (auto entry = table->cbegin(); entry != table->cend(); ++entry) {
            if (!isText(entry.value()))
                refuse(config::Pattern, ErrorPattern, messages::MustBeForm);
            const QRegularExpression form = compiled(entry.value().toString());
            const auto rule = m_rules.entries.find(entry.key());
            if (rule != m_rules.entries.end())
                rule->pattern = form;
        }
    }

    [[nodiscard]] QRegularExpression compiled(const QString &text) const
    {
        const QRegularExpression alone(text);
        // What is good by itself may still swallow the end that is put behind it, as a comment does.
        const QRegularExpression whole(QRegularExpression::anchoredPattern(text));
        for (const QRegularExpression &each : {alone, whole}) {
            if (!each.isValid())
                refuse(config::Pattern, ErrorPattern,
                       formatMessage(messages::BrokenForm,
                                     {each.errorString(), each.patternErrorOffset() + 1, each.pattern()}));
        }
        return whole;
    }

    void readValidate()
    {
        const Value value = entryValue(config::Validate, ErrorValidate);
        if (!value.isValid())
            return;
        m_rules.validate = value.value<std::shared_ptr<platform::Callback>>();
        if (!m_rules.validate)
            refuse(config::Validate, ErrorValidate, messages::MustBeFunction);
    }

    void readUnique()
    {
        const QString scope = entryText(config::Unique, ErrorUnique);
        if (!m_config.value(config::Unique).isValid())
            return;
        if (scope == QLatin1String("station"))
            m_rules.unique = AskRules::Unique::Station;
        else if (scope == QLatin1String("run"))
            m_rules.unique = AskRules::Unique::Run;
        else if (scope != QLatin1String("group"))
            refuse(config::Unique, ErrorUnique, messages::MustBeScope);
    }
    void checkUnique() const
    {
        const Value value = valueOf(config::Unique);
        for (const QString &key : {config::Number, config::Choices}) {
            if (value.isValid() && isKnown(key) && m_config.value(key).isValid())
                refuse(config::Unique, ErrorUnique, formatMessage(messages::UniqueNeedsText, {key}));
        }
    }

    void readNumber()
    {
        const Value value = entryValue(config::Number, ErrorNumber);
        if (!value.isValid())
            return;
        refuseBeside(config::Number, ErrorNumber, {config::Pattern});
        const std::optional<Dictionary> table = tableOf(value);
        if (!table)
            refuse(config::Number, ErrorNumber, messages::MustBeNumberTable);
        const NumberRule number = numberRule(*table);
        // The same for all: one instrument measures all positions of a panel.
        for (EntryRule &rule : m_rules.entries)
            rule.number = number;
    }

    [[nodiscard]] NumberRule numberRule(const Dictionary &table) const
    {
        NumberRule number;
        number.decimalPoint = m_context.decimalPoint;
        for (auto part = table.cbegin(); part != table.cend(); ++part) {
            if (part.key() == QLatin1String("min"))
                number.min = limit(part.key(), part.value());
            else if (part.key() == QLatin1String("max"))
                number.max = limit(part.key(), part.value());
            else if (part.key() == QLatin1String("decimals"))
                number.decimals = decimals(part.value());
            else if (part.key() == QLatin1String("unit") && isText(part.value()))
                number.unit = part.value().toString().trimmed();
            else if (part.key() == QLatin1String("unit"))
                refuse(config::Number, ErrorNumber,
                       formatMessage(messages::MustBeUnit, {shown(part.value())}));
            else
                refuse(config::Number, ErrorNumber, formatMessage(messages::NoSuchPart, {part.key()}));
        }
        if (number.min && number.max && *number.min > *number.max)
            refuse(config::Number, ErrorNumber, messages::MinAboveMax);
        return number;
    }
    [[nodiscard]] double limit(const QString &name, const Value &value) const
    {
        const std::optional<double> number = numberOf(value);
        if (!number)
            refuse(config::Number, ErrorNumber, formatMessage(messages::MustBeLimit, {name, shown(value)}));
        return *number;
    }
    [[nodiscard]] int decimals(const Value &value) const
    {
        const std::optional<double> number = numberOf(value);
        if (!number || *number != std::floor(*number) || *number < 0 || *number > MostDecimals)
            refuse(config::Number, ErrorNumber,
                   formatMessage(messages::MustBeDecimals, {MostDecimals, shown(value)}));
        return static_cast<int>(*number);
    }

    void readChoices()
    {
        const Value value = entryValue(config::Choices, ErrorChoices);
        if (!value.isValid())
            return;
        refuseBeside(config::Choices, ErrorChoices, {config::Pattern, config::Number});
        if (!platform::isArray(value) || value.toList().isEmpty())
            refuse(config::Choices, ErrorChoices, messages::MustBeChoices);
        QStringList choices;
        // Looked up in a set: lists of thousands are usual, and each is compared with all before it.
        QSet<QString> known;
        for (const Value &each : value.toList()) {
            if (!isText(each) && !platform::isNumber(each))
                refuse(config::Choices, ErrorChoices, messages::MustBeChoices);
            const QString choice = platform::description(each);
            if (choice.isEmpty())
                refuse(config::Choices, ErrorChoices, messages::ChoiceIsEmpty);
            if (known.contains(choice))
                refuse(config::Choices, ErrorChoices, formatMessage(messages::ChoiceTwice, {shown(choice)}));
            if (m_context.length > 0 && choice.size() != m_context.length)
                refuse(config::Choices, ErrorChoices,
                       formatMessage(messages::ChoiceLength, {shown(choice), m_context.length}));
            known.insert(choice);
            choices.append(choice);
        }
        for (EntryRule &rule : m_rules.entries)
            rule.choices = choices;
    }

    void refuseBeside(const QString &key, int code, const QStringList &others) const
    {
        for (const QString &other : others) {
            if (isKnown(other) && m_config.value(other).isValid())
                refuse(key, code, formatMessage(messages::OneOfThree, {other}));
        }
    }

    void readDefault()
    {
        const Value value = entryValue(config::Default, ErrorDefault);
        if (!value.isValid())
            return;
        // A text for a whole group would be the same entry in every slot.
        if (!m_context.forGroup && !platform::isDictionary(value)) {
            needKnown(config::Input);
            addDefault(m_context.labels.first(), value);
            return;
        }
        const std::optional<Dictionary> table = tableOf(value);
        if (!table)
            refuse(config::Default, ErrorDefault, messages::MustBeDefaults);
        checkNames(config::Default, ErrorDefault, *table);
        for (auto entry = table->cbegin(); entry != table->cend(); ++entry) {
            // A table may serve several calls, of which this one asks for some of the slots.
            if (m_context.labels.contains(entry.key()))
                addDefault(entry.key(), entry.value());
        }
    }

    void addDefault(const QString &label, const Value &value)
    {
        if (!isText(value) && !platform::isNumber(value))
            refuse(config::Default, ErrorDefault,
                   m_context.forGroup ? messages::MustBeDefaults : messages::MustBeDefault);
        const QString text = platform::description(value);
        const EntryRule &rule = m_rules.of(label);
        QString why;
        if (m_context.length > 0 && text.size() != m_context.length)
            why = formatMessage(messages::HasAnotherLength, {text.size(), m_context.length});
        else
            why = entries::judged(text, rule).why;
        if (!why.isEmpty())
            refuse(config::Default, ErrorDefault,
                   formatMessage(messages::DefaultIsRefused, {shown(text), why}));
        const bool isTaken =
            std::find(m_rules.defaults.cbegin(), m_rules.defaults.cend(), text) != m_rules.defaults.cend();
        if (isTaken && !rule.allowsEqualEntries())
            refuse(config::Default, ErrorDefault, formatMessage(messages::DefaultTwice, {shown(text)}));
        m_rules.defaults.insert(label, text);
    }

    void readAutoConfirm()
    {
        const Value value = entryValue(config::AutoConfirm, ErrorAutoConfirm);
        if (!value.isValid())
            return;
        // Other keys guess at texts and numbers; what ends a panel by itself is not guessed at.
        if (value.metaType() != QMetaType::fromType<bool>())
            refuse(config::AutoConfirm, ErrorAutoConfirm, messages::MustBeTrueOrFalse);
        m_rules.autoConfirm = value.toBool();
        if (m_rules.autoConfirm && !m_context.buttons.contains(OkTitle)) {
            needKnown(config::Button);
            refuse(config::AutoConfirm, ErrorAutoConfirm, messages::NeedsOkButton);
        }
    }

    void readTimeLimit()
    {
        const Value value = valueOf(config::TimeLimit);
        if (!value.isValid())
            return;
        if (m_context.isMessage)
            refuse(config::TimeLimit, ErrorTimeLimit, messages::NeedsWaiting);
        const std::optional<double> seconds = numberOf(value);
        if (!seconds || *seconds <= 0 || *seconds > static_cast<double>(LongestTimeLimit))
            refuse(config::TimeLimit, ErrorTimeLimit,
                   formatMessage(messages::MustBeSeconds, {LongestTimeLimit}));
        // A limit that is no whole millisecond must not become none.
        m_rules.timeLimit = std::chrono::milliseconds(static_cast<qint64>(std::ceil(*seconds * 1000.0)));
    }

    const Dictionary &m_config;
    const AskContext &m_context;
    const StationMap &m_station;
    AskRules m_rules;
    QList<AskReading::OfKey> m_refusals;
    bool m_areComplete = true; ///< Whether every step so far has read its key.
};

} // namespace

AskReading readAskRules(const Dictionary &config, const AskContext &context, const StationMap &station)
{
    return Reader(config, context, station).read();
}

} // namespace interactive
