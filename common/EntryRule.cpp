#include "common/EntryRule.h"

#include "platform/LogFormat.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>

#include "common/Messages.h"

namespace interactive::entries {

namespace {

using platform::formatMessage;

Verdict accepted(const platform::Value &value)
{
    return {value, {}};
}

Verdict refused(const QString &why)
{
    return {{}, why};
}

/// A number as a person writes it, in parts that need no locale any more.
struct Written
{
    QString digits; ///< Sign, digits and a point, as every reader of numbers takes it.
    int decimals = 0;
};

bool isDigits(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
}

/// No exponents and no marks between thousands: what is read off an instrument has neither, and a comma that
/// might be either would be guessed.
std::optional<Written> written(const QString &text, QChar decimalPoint)
{
    const bool hasSign = text.startsWith(QLatin1Char('+')) || text.startsWith(QLatin1Char('-'));
    const QString unsignedText = text.mid(hasSign ? 1 : 0);
    qsizetype mark = unsignedText.indexOf(QLatin1Char('.'));
    if (mark < 0)
        mark = unsignedText.indexOf(decimalPoint);
    const QString whole = mark < 0 ? unsignedText : unsignedText.left(mark);
    const QString fraction = mark < 0 ? QString() : unsignedText.mid(mark + 1);
    if ((whole.isEmpty() && fraction.isEmpty()) || !isDigits(whole) || !isDigits(fraction))
        return std::nullopt;
    return Written{(hasSign ? text.left(1) : QString()) + QLatin1Char('0') + whole + QLatin1Char('.') +
                       fraction + QLatin1Char('0'),
                   static_cast<int>(fraction.size())};
}

/// The text without blanks around it and without the unit that may follow the number.
QString withoutUnit(const QString &text, const QString &unit)
{
    QString number = text.trimmed();
    if (!unit.isEmpty() && number.endsWith(unit))
        number = number.chopped(unit.size()).trimmed();
    return number;
}

Verdict judgedAsNumber(const QString &text, const NumberRule &rule)
{
    const std::optional<Written> number = written(withoutUnit(text, rule.unit), rule.decimalPoint);
    if (!number)
        return refused(QLatin1String(messages::IsNoNumber));
    if (rule.decimals && number->decimals > *rule.decimals)
        return refused(*rule.decimals == 0 ? QLatin1String(messages::NoDecimals)
                                           : formatMessage(messages::TooManyDecimals, {*rule.decimals}));
    const double value = number->digits.toDouble();
    const bool isWithin = (!rule.min || value >= *rule.min) && (!rule.max || value <= *rule.max);
    if (!isWithin)
        return refused(formatMessage(messages::OutOfLimits, {rangeOf(rule)}));
    // Digits without end make no number that could be passed on.
    if (!std::isfinite(value))
        return refused(QLatin1String(messages::IsNoNumber));
    if (rule.decimals == 0) {
        bool fits = false;
        const qlonglong whole = number->digits.section(QLatin1Char('.'), 0, 0).toLongLong(&fits);
        if (fits)
            return accepted(whole);
    }
    return accepted(value);
}

QStringList choicesThat(const QStringList &choices, const std::function<bool(const QString &)> &fit)
{
    QStringList fitting;
    std::copy_if(choices.cbegin(), choices.cend(), std::back_inserter(fitting), fit);
    return fitting;
}

Verdict judgedAsChoice(const QString &text, const QStringList &choices)
{
    if (choices.contains(text))
        return accepted(text);
    if (text.isEmpty())
        return refused(QLatin1String(messages::NothingChosen));
    const QStringList equal = choicesThat(
        choices, [&text](const QString &choice) { return choice.compare(text, Qt::CaseInsensitive) == 0; });
    if (equal.size() == 1)
        return accepted(equal.first());
    const QStringList beginning = choicesThat(
        choices, [&text](const QString &choice) { return choice.startsWith(text, Qt::CaseInsensitive); });
    if (beginning.size() == 1)
        return accepted(beginning.first());
    return refused(beginning.isEmpty() ? QLatin1String(messages::IsNoChoice)
                                       : formatMessage(messages::FitsSeveralChoices, {beginning.size()}));
}

} // namespace

Verdict judged(const QString &text, const EntryRule &rule)
{
    if (rule.number)
        return judgedAsNumber(text, *rule.number);
    if (!rule.choices.isEmpty())
        return judgedAsChoice(text, rule.choices);
    if (rule.pattern && !rule.pattern->match(text).hasMatch())
        return refused(QLatin1String(messages::HasAnotherForm));
    return accepted(text);
}

QString rangeOf(const NumberRule &rule)
{
    const auto shown = [&rule](double limit) {
        QString text = rule.decimals ? QString::number(limit, 'f', *rule.decimals) : QString();
        // A limit that is finer than the entries may be is shown as it is.
        if (!rule.decimals || text.toDouble() != limit)
            text = platform::description(limit);
        return text.replace(QLatin1Char('.'), rule.decimalPoint);
    };
    const QString unit = rule.unit.isEmpty() ? QString() : QLatin1Char(' ') + rule.unit;
    if (rule.min && rule.max)
        return formatMessage(messages::RangeBetween, {shown(*rule.min), shown(*rule.max), unit});
    if (rule.min)
        return formatMessage(messages::RangeAbove, {shown(*rule.min), unit});
    return rule.max ? formatMessage(messages::RangeBelow, {shown(*rule.max), unit}) : QString();
}

} // namespace interactive::entries
