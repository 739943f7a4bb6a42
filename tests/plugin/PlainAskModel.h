#pragma once

#include "platform/Value.h"

#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <optional>

namespace testsupport {

/// What one panel asks for and has been given, as plainly as the rules can be told: which configurations are
/// refused, which entries are taken, and what the answer is. It knows no view, no thread and nothing of how
/// the plug-in judges.
struct PlainAsk
{
    struct Number
    {
        std::optional<double> min;
        std::optional<double> max;
        std::optional<int> decimals;
    };

    bool isGroup = false;
    QStringList labels;
    int length = 0;
    QString pattern;
    std::optional<Number> number;
    QStringList choices;
    QString unique;
    QMap<QString, QString> defaults;
    QString hint;
    QString placeholder;
    bool autoConfirm = false;

    /// The codes of all that is wrong with the configuration; which of them is told first is left open.
    [[nodiscard]] QSet<int> refusalCodes() const
    {
        QSet<int> codes;
        if (!QRegularExpression(pattern).isValid())
            return {110};
        const bool isScope = QStringList{"", "group", "station", "run"}.contains(unique);
        if (!isScope || (!unique.isEmpty() && (number || !choices.isEmpty())))
            codes.insert(113);
        if (number && ((number->min && number->max && *number->min > *number->max) || !pattern.isEmpty()))
            codes.insert(114);
        if (!choices.isEmpty() && (number || !pattern.isEmpty() || areChoicesWrong()))
            codes.insert(115);
        QStringList seen;
        for (const QString &text : defaults) {
            if (!taken(text) || (isDistinct() && seen.contains(text)))
                codes.insert(116);
            seen.append(text);
        }
        return codes;
    }

    /// The label that the next entry goes to; empty when none waits.
    [[nodiscard]] QString waiting() const
    {
        const auto found = std::find_if(labels.cbegin(), labels.cend(),
                                        [this](const QString &label) { return !m_answer.contains(label); });
        return found == labels.cend() ? QString() : *found;
    }
    [[nodiscard]] bool isComplete() const { return waiting().isEmpty(); }
    /// What the field offers now; nothing once a refused text stands there.
    [[nodiscard]] std::optional<QString> offered() const
    {
        if (m_holdsRefused || !defaults.contains(waiting()))
            return std::nullopt;
        return defaults.value(waiting());
    }

    /// Enters a text for the label that waits; false when it is refused.
    bool enter(const QString &text)
    {
        const std::optional<platform::Value> value = taken(text);
        m_holdsRefused = !value || (isGroup && isDistinct() && m_texts.contains(text));
        if (m_holdsRefused)
            return false;
        m_answer.insert(waiting(), *value);
        m_texts.append(text);
        return true;
    }
    /// "OK": takes the defaults of all that wait; false when one is missing or refused.
    bool confirm()
    {
        // A slot's panel looks at what stands in its field.
        if (!isGroup && m_holdsRefused)
            return false;
        while (!isComplete()) {
            if (!defaults.contains(waiting()) || !enter(defaults.value(waiting())))
                return false;
        }
        return true;
    }
    [[nodiscard]] platform::Dictionary answer() const { return m_answer; }

private:
    /// Whether the same entry is refused for a second slot.
    [[nodiscard]] bool isDistinct() const { return !number && choices.isEmpty(); }
    [[nodiscard]] bool areChoicesWrong() const
    {
        QStringList all = choices;
        return all.removeDuplicates() > 0 ||
               std::any_of(choices.cbegin(), choices.cend(),
                           [this](const QString &choice) { return length > 0 && choice.size() != length; });
    }
    /// What a text stands for by itself; nothing when it is refused.
    [[nodiscard]] std::optional<platform::Value> taken(const QString &text) const
    {
        if (length > 0 && text.size() != length)
            return std::nullopt;
        if (number)
            return measured(text);
        if (!choices.isEmpty())
            return chosen(text);
        static const QString whole = "^(?:%1)$";
        if (!pattern.isEmpty() && !QRegularExpression(whole.arg(pattern)).match(text).hasMatch())
            return std::nullopt;
        return text;
    }
    [[nodiscard]] std::optional<platform::Value> measured(const QString &text) const
    {
        static const QRegularExpression plain("^[+-]?\\d+(\\.(\\d+))?$");
        const QRegularExpressionMatch match = plain.match(text);
        const double value = text.toDouble();
        const bool fits = match.hasMatch() && !(number->min && value < *number->min) &&
                          !(number->max && value > *number->max) &&
                          !(number->decimals && match.captured(2).size() > *number->decimals);
        return fits ? std::optional<platform::Value>(value) : std::nullopt;
    }
    [[nodiscard]] std::optional<platform::Value> chosen(const QString &text) const
    {
        if (choices.contains(text))
            return text;
        QStringList equal;
        QStringList beginning;
        for (const QString &choice : choices) {
            if (choice.toLower() == text.toLower())
                equal.append(choice);
            if (choice.toLower().startsWith(text.toLower()))
                beginning.append(choice);
        }
        if (equal.size() == 1)
            return equal.first();
        return beginning.size() == 1 ? std::optional<platform::Value>(beginning.first()) : std::nullopt;
    }

    platform::Dictionary m_answer;
    QStringList m_texts;
    bool m_holdsRefused = false;
};

} // namespace testsupport
