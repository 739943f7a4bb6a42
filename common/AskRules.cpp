#include "common/AskRules.h"

#include <algorithm>

namespace interactive {

const EntryRule &AskRules::of(const QString &label) const
{
    static const EntryRule any;
    const auto found = entries.constFind(label);
    return found == entries.constEnd() ? any : *found;
}

bool AskRules::hasStatusLine() const
{
    const bool judges = std::any_of(entries.cbegin(), entries.cend(), [](const EntryRule &rule) {
        return rule.pattern || rule.number || !rule.choices.isEmpty();
    });
    // "OK" confirms defaults that may read like what was entered meanwhile.
    const bool confirmsSeveral = entries.size() > 1 && !defaults.isEmpty();
    return judges || !hint.isEmpty() || validate || unique != Unique::Group || confirmsSeveral;
}

} // namespace interactive
