#include "common/StationIndex.h"

#include "platform/LogFormat.h"

#include <cmath>
#include <stdexcept>

#include "common/Messages.h"
#include "common/Selectors.h"

namespace interactive {

namespace {

qint64 wholeNumber(const platform::Value &index, const char *selector, const char *what)
{
    // A sequence's arithmetic may give 2.0, which names an element. 2.5 names none, and to cut it off would
    // show the panel of another system.
    const bool whole = platform::isNumber(index) && std::trunc(index.toDouble()) == index.toDouble();
    if (!whole) {
        throw std::invalid_argument(
            platform::formatMessage(messages::NotAnInteger, {selectors::bracketed(selector), what, index})
                .toStdString());
    }
    return platform::integerValue(index);
}

} // namespace

bool isWithin(const platform::Array &list, const platform::Value &index, const char *selector,
              const char *what)
{
    const qint64 number = wholeNumber(index, selector, what);
    return number >= 0 && number < list.size();
}

platform::Value elementAt(const platform::Array &list, const platform::Value &index, const char *selector,
                          const char *what)
{
    if (isWithin(list, index, selector, what))
        return list.at(static_cast<qsizetype>(platform::integerValue(index)));
    const QString method = selectors::bracketed(selector);
    // Where there is no element there is no highest number to tell.
    const QString text = list.isEmpty()
                             ? platform::formatMessage(messages::OutOfRangeOfNone, {method, what, index})
                             : platform::formatMessage(messages::OutOfRange,
                                                       {method, what, index, list.size(), list.size() - 1});
    throw std::out_of_range(text.toStdString());
}

} // namespace interactive
