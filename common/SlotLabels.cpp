#include "common/SlotLabels.h"

#include <QSet>

#include <algorithm>

namespace interactive::labels {

namespace {

bool countsAsNumber(const platform::Value &value)
{
    // A boolean is described by 1 or 0, so that it is the same label as that number.
    return platform::isNumber(value) || value.metaType() == QMetaType::fromType<bool>();
}

/// Labels to be looked for many times. Equal as isEqual() says.
class Labels
{
public:
    explicit Labels(const platform::Array &list)
    {
        for (const platform::Value &label : list) {
            if (countsAsNumber(label))
                m_numbers.insert(platform::description(label));
            else if (isText(label))
                m_texts.insert(label.toString());
            else
                m_others.append(label);
        }
    }

    [[nodiscard]] bool contains(const platform::Value &label) const
    {
        if (countsAsNumber(label))
            return m_numbers.contains(platform::description(label));
        return isText(label) ? m_texts.contains(label.toString()) : labels::contains(m_others, label);
    }

private:
    static bool isText(const platform::Value &label)
    {
        return label.metaType() == QMetaType::fromType<QString>();
    }

    QSet<QString> m_numbers; ///< By their descriptions.
    QSet<QString> m_texts;
    platform::Array m_others;
};

} // namespace

bool isEqual(const platform::Value &a, const platform::Value &b)
{
    // By their text: 3 from the host and 3.0 from a sequence are one number in two types.
    if (countsAsNumber(a) && countsAsNumber(b))
        return platform::description(a) == platform::description(b);
    return a.metaType() == b.metaType() && a == b;
}

bool contains(const platform::Array &list, const platform::Value &value)
{
    return std::any_of(list.cbegin(), list.cend(),
                       [&](const platform::Value &element) { return isEqual(element, value); });
}

platform::Array unique(const platform::Array &list)
{
    platform::Array result;
    for (const platform::Value &element : list) {
        // One by one, since equal labels may be of different types, which no hash of a value sees; the lists
        // are short.
        if (!contains(result, element))
            result.append(element);
    }
    return result;
}

platform::Array ordered(const platform::Array &list, const platform::Array &slotMapping, quint64 slotCount)
{
    const Labels wanted(list);
    // The mapping names one group's slots after the other's; the first slotCount elements name each slot
    // once. A mapping laid out by hand may be shorter.
    const auto end = std::min<quint64>(slotCount, static_cast<quint64>(slotMapping.size()));
    platform::Array result;
    for (quint64 i = 0; i < end; ++i) {
        const platform::Value &label = slotMapping.at(static_cast<qsizetype>(i));
        if (wanted.contains(label))
            result.append(label);
    }
    return result;
}

bool hasDuplication(const platform::Array &list)
{
    return unique(list).size() != list.size();
}

bool hasInvalidLabel(const platform::Array &list, const platform::Array &slotMapping)
{
    return std::any_of(list.cbegin(), list.cend(),
                       [&](const platform::Value &label) { return !contains(slotMapping, label); });
}

platform::Array enabledSlots(const platform::Dictionary &status)
{
    platform::Array result;
    for (auto entry = status.cbegin(); entry != status.cend(); ++entry) {
        // Off is the lack of an entry, not a 0: only a negative number says that a slot takes no input.
        if (platform::integerValue(entry.value()) >= 0)
            result.append(entry.key());
    }
    return result;
}

platform::Value firstUnfilled(const platform::Array &orderedLabels, const platform::Array &filled)
{
    const Labels taken(filled);
    const auto found = std::find_if(orderedLabels.cbegin(), orderedLabels.cend(),
                                    [&](const platform::Value &label) { return !taken.contains(label); });
    return found == orderedLabels.cend() ? platform::Value() : *found;
}

} // namespace interactive::labels
