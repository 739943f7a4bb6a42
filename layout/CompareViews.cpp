#include "layout/CompareViews.h"

#include "platform/View.h"

namespace interactive {

namespace {

/// The run of digits that begins at `at`, without leading zeros; `at` moves behind it.
QString digitRun(const QString &text, qsizetype &at)
{
    const qsizetype begin = at;
    while (at < text.size() && text.at(at).isDigit())
        ++at;
    qsizetype first = begin;
    // Without leading zeros, so that the longer run is the larger number, however many digits there are. A
    // last 0 stays.
    while (first + 1 < at && text.at(first).digitValue() == 0)
        ++first;
    return text.mid(first, at - first);
}

int sign(qsizetype difference)
{
    return difference < 0 ? -1 : (difference > 0 ? 1 : 0);
}

int compareRuns(const QString &a, const QString &b)
{
    return a.size() != b.size() ? sign(a.size() - b.size()) : sign(a.compare(b));
}

} // namespace

int compareNumerically(const QString &a, const QString &b)
{
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < a.size() && j < b.size()) {
        int order = 0;
        if (a.at(i).isDigit() && b.at(j).isDigit()) {
            // Both runs are passed over at once, so that the texts behind them are compared at the same
            // place.
            order = compareRuns(digitRun(a, i), digitRun(b, j));
        } else {
            order = sign(a.at(i).unicode() - b.at(j).unicode());
            ++i;
            ++j;
        }
        if (order != 0)
            return order;
    }
    // Alike as far as the shorter one goes, which comes first.
    return sign((a.size() - i) - (b.size() - j));
}

int compareViews(const platform::View *a, const platform::View *b, void *)
{
    // The operands have changed places: views are sorted in descending order.
    return compareNumerically(b->identifier().text(), a->identifier().text());
}

} // namespace interactive
