#pragma once

#include "platform/Value.h"

#include <QChar>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <optional>

namespace interactive {

/// A measured value that is asked for.
struct NumberRule
{
    std::optional<double> min; ///< Open below when absent.
    std::optional<double> max; ///< Open above when absent.
    /// The most digits after the decimal point; any number of them when absent. 0 asks for a whole number.
    std::optional<int> decimals;
    QString unit;
    /// What stands before the decimals besides the point, which is always taken.
    QChar decimalPoint = QLatin1Char('.');
};

/// What one entry has to be besides its length: at most one of a form, a number and one of a list.
struct EntryRule
{
    std::optional<QRegularExpression> pattern; ///< The whole entry matches it.
    std::optional<NumberRule> number;
    QStringList choices; ///< Any text when empty.

    /// Whether the same entry may be given twice: a measured value and a choice say nothing about which unit
    /// it is.
    [[nodiscard]] bool allowsEqualEntries() const { return number || !choices.isEmpty(); }
};

/// What became of a text that was held against a rule.
struct Verdict
{
    /// The answer that the text stands for: the text itself, the choice that it fits, or its number. Nothing
    /// when the text is refused.
    platform::Value value;
    QString why; ///< Why it is refused, in words for the operator; empty when it is taken.

    [[nodiscard]] bool isAccepted() const { return why.isEmpty(); }
};

/// Rules about what an operator enters: plain values in, a result out. Thread: any.
namespace entries {

/// Holds a text against its rule.
[[nodiscard]] Verdict judged(const QString &text, const EntryRule &rule);

/// The range of a number in words, with its unit: "3.0 to 3.6 V", "at least 3 V"; empty when it is open.
[[nodiscard]] QString rangeOf(const NumberRule &rule);

} // namespace entries

} // namespace interactive
