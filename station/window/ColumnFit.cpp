#include "station/window/ColumnFit.h"

#include <algorithm>
#include <numeric>

namespace station {
namespace {

/// The columns that have a turn, in its order.
QList<int> inTurn(const QList<ColumnWish> &wishes, int ColumnWish::*turn)
{
    QList<int> columns;
    for (int column = 0; column < wishes.size(); ++column) {
        if (wishes[column].*turn > 0)
            columns.append(column);
    }
    std::stable_sort(columns.begin(), columns.end(),
                     [&](int one, int other) { return wishes[one].*turn < wishes[other].*turn; });
    return columns;
}

} // namespace

QList<int> fitColumns(const QList<ColumnWish> &wishes, int room)
{
    QList<int> widths;
    for (const ColumnWish &wish : wishes)
        widths.append(wish.wanted);
    const auto missing = [&] { return std::accumulate(widths.cbegin(), widths.cend(), 0) - room; };
    const QList<int> narrowing = inTurn(wishes, &ColumnWish::narrows);
    for (const int column : narrowing)
        widths[column] -= std::clamp(missing(), 0, std::max(0, widths[column] - wishes[column].least));
    for (const int column : inTurn(wishes, &ColumnWish::goes)) {
        if (missing() > 0)
            widths[column] = 0;
    }
    // One that has narrowed in vain, since another one had to go all the same, gets back what that has left.
    for (auto column = narrowing.crbegin(); column != narrowing.crend(); ++column) {
        if (widths[*column] > 0)
            widths[*column] += std::clamp(-missing(), 0, wishes[*column].wanted - widths[*column]);
    }
    for (qsizetype column = wishes.size() - 1; column >= 0; --column) {
        if (wishes[column].takesRest && widths[column] > 0) {
            widths[column] += std::max(0, -missing());
            break;
        }
    }
    return widths;
}

} // namespace station
