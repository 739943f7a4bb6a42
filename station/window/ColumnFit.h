#pragma once

#include <QList>

namespace station {

/// What a column asks for, in pixels.
struct ColumnWish
{
    int wanted = 0;
    int least = 0; ///< Narrower than this it tells nothing. The same as `wanted` for one that never narrows.
    int narrows = 0;        ///< Its turn to become narrower: 1 does so before 2; 0 never does.
    int goes = 0;           ///< Its turn to be left out, when all have narrowed; 0 never is.
    bool takesRest = false; ///< What nobody needs goes to the last column that takes it.
};

/// How wide each column becomes, 0 where it is left out. Their sum is the room unless even the least of all
/// is more, or nobody takes the rest. Thread: any.
[[nodiscard]] QList<int> fitColumns(const QList<ColumnWish> &wishes, int room);

} // namespace station
