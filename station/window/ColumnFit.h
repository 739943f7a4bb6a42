#pragma once

#include <QList>

namespace station {

/// What a column asks for, in pixels.
struct ColumnWish
{
    int wanted = 0;
    int least = 0; ///< Narrower than this it tells nothing. The same as `wanted` for one that never narrows.
    /// Its turn to give way: 1 narrows before 2; 0 never does. When all have narrowed, those that may be left
    /// out are, in the same order.
    int turn = 0;
    bool mayGo = false;
    bool takesRest = false; ///< What nobody needs goes to the last column that takes it.
};

/// How wide each column becomes, 0 where it is left out. Their sum is the room unless even the least of all
/// is more, or nobody takes the rest. Thread: any.
[[nodiscard]] QList<int> fitColumns(const QList<ColumnWish> &wishes, int room);

} // namespace station
