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
    return judges || !hint.isEmpty() || validate || unique != Unique::Group || !defaults.isEmpty();
}

} // namespace interactive
