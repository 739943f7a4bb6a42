#include <cmath>
#include <stdexcept>

#include "common/Identifiers.h"
#include "common/SlotLabels.h"
#include "common/StationIndex.h"
#include "common/StationMap.h"
#include "fuzz/Target.h"
#include "fuzz/Values.h"

using platform::Array;
using platform::Identifier;
using platform::Value;

namespace {

using namespace interactive;
using fuzz::Input;
using fuzz::must;

void partsComeBack(const QString &key, qint64 position, const QString &name)
{
    const Identifier named = identifiers::named(key, name);
    const Identifier indexed = identifiers::indexed(key, position, name);
    // A key that holds the separator is split there, as its documentation says.
    if (key.contains(identifiers::Separator))
        return;
    must(identifiers::panelPart(named) == key && identifiers::slotPart(named) == name,
         "an identifier made of a key and a name is split into them", named.text());
    must(identifiers::panelPart(indexed) == key, "an indexed identifier begins with its key", indexed.text());
    const QString rest = identifiers::slotPart(indexed);
    must(rest == QString::number(position) + identifiers::Separator + name,
         "an indexed identifier keeps position and name", indexed.text());
    if (position >= 0) {
        must(identifiers::slotPart(Identifier(rest)) == name, "behind the position stands the name", rest);
        must(identifiers::panelPart(Identifier(rest)).toLongLong() == position, "the position can be read",
             rest);
    }
}

void isSplitOnce(const QString &separator, const QString &text)
{
    const Identifier whole(text);
    const Identifier before = identifiers::before(separator, whole);
    const Identifier after = identifiers::after(separator, whole);
    if (!text.contains(separator)) {
        must(before.isSameInstance(whole) && after.isSameInstance(whole),
             "what has no separator stays the very same instance", text);
        return;
    }
    must(before.text() + separator + after.text() == text, "nothing is lost at a split", text);
    must(separator.isEmpty() || !before.text().contains(separator), "it is split at the first separator",
         text);
}

void elementIsFound(const Array &list, const Value &index)
{
    try {
        const bool within = isWithin(list, index, "fuzz:", "number");
        must(platform::isNumber(index), "only a number names an element", platform::description(index));
        const Value element = elementAt(list, index, "fuzz:", "number");
        must(within, "an element is found only within the list", platform::description(index));
        must(fuzz::areSame(element, list.at(platform::integerValue(index))),
             "it is the element of that number");
    } catch (const std::out_of_range &) {
        must(!isWithin(list, index, "fuzz:", "number"), "a number within the list is not refused",
             platform::description(index));
    } catch (const std::invalid_argument &) {
        must(!platform::isNumber(index) || index.toDouble() != std::trunc(index.toDouble()),
             "a whole number is not refused as such", platform::description(index));
    }
}

void labelsKeepTheirRules(const Array &list, const Array &mapping)
{
    const Array once = labels::unique(list);
    must(!labels::hasDuplication(once), "unique labels have no duplicate", platform::description(list));
    for (const Value &label : list)
        must(labels::contains(once, label), "no label is lost", platform::description(label));
    const Array ordered = labels::ordered(list, mapping, static_cast<quint64>(mapping.size()));
    for (const Value &label : ordered)
        must(labels::contains(list, label), "no label is added", platform::description(label));
    if (!labels::hasInvalidLabel(list, mapping) && !labels::hasDuplication(mapping))
        must(ordered.size() == once.size(), "valid labels are all put in order", platform::description(list));
}

void systemsAreFound(const Array &groups, const Array &slotNames)
{
    const StationMap map(groups, slotNames);
    must(map.systemCount() == groups.size(), "each system has its group");
    for (qint64 system = 0; system < map.systemCount(); ++system) {
        const QString group = platform::description(map.groupOf(system));
        must(map.groupNumber(group).has_value(), "a system's group has a number", group);
        must(map.systemsOf(group).contains(static_cast<quint64>(system)), "a group knows its systems", group);
    }
    must(!map.groupOf(map.systemCount()).isValid() && !map.slotOf(-1).isValid(),
         "beyond the mapping is nothing");
}

Array listFrom(Input &input)
{
    Array list;
    for (int left = input.below(8); left > 0; --left)
        list.append(fuzz::valueFrom(input, 1));
    return list;
}

class IdentifiersTarget : public fuzz::Target
{
public:
    void feed(Input input) override
    {
        const QString key = input.textLike({"G1", "0", "17", "Loop"});
        const qint64 position = input.integer();
        const QString name = input.textLike({"OK", "SharedInput", "S-1"});
        partsComeBack(key, position, name);
        isSplitOnce(input.textLike({"-", "--", "G"}), input.text());
        const int system = static_cast<int>(position % 1'000'000);
        must(identifiers::systemOfTag(identifiers::tagOfSystem(system)) == system,
             "a tag stands for its system");
        const Array list = listFrom(input);
        elementIsFound(list, fuzz::valueFrom(input, 1));
        const Array others = listFrom(input);
        labelsKeepTheirRules(list, others);
        systemsAreFound(list, others);
    }
};

} // namespace

std::unique_ptr<fuzz::Target> fuzz::makeTarget()
{
    return std::make_unique<IdentifiersTarget>();
}
