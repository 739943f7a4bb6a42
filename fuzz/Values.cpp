#include "fuzz/Values.h"

#include <algorithm>
#include <cmath>

namespace fuzz {

using platform::Array;
using platform::Dictionary;
using platform::Value;

Value valueFrom(Input &input, int depth)
{
    switch (input.below(depth > 0 ? 8 : 6)) {
    case 0:
        return input.text();
    case 1:
        return qlonglong{input.integer()};
    case 2:
        return input.decimal();
    case 3:
        return input.truth();
    case 4:
        return {};
    case 5:
        return input.textLike({"S1", "S2", "SN", "1", "length", "{", ")", "(null)"});
    case 6: {
        Array list;
        for (int left = input.below(6); left > 0; --left)
            list.append(valueFrom(input, depth - 1));
        return list;
    }
    default: {
        Dictionary dictionary;
        for (int left = input.below(6); left > 0; --left) {
            const QString key = input.text();
            dictionary.insert(key, valueFrom(input, depth - 1));
        }
        return dictionary;
    }
    }
}

bool areSame(const Value &a, const Value &b)
{
    if (a.metaType() != b.metaType())
        return false;
    if (a.metaType() == QMetaType::fromType<double>()) {
        const double first = a.toDouble();
        const double second = b.toDouble();
        return std::isnan(first) ? std::isnan(second)
                                 : first == second && std::signbit(first) == std::signbit(second);
    }
    if (platform::isArray(a)) {
        const Array first = a.toList();
        const Array second = b.toList();
        return std::equal(first.cbegin(), first.cend(), second.cbegin(), second.cend(), areSame);
    }
    if (platform::isDictionary(a)) {
        const Dictionary first = a.toMap();
        const Dictionary second = b.toMap();
        return first.keys() == second.keys() &&
               std::equal(first.cbegin(), first.cend(), second.cbegin(), second.cend(), areSame);
    }
    return a == b;
}

} // namespace fuzz
