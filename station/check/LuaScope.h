#pragma once

#include "station/check/LuaSyntax.h"

#include <vector>

namespace station {

/// The locals that can be seen at a place of a script, while it is read from its beginning to its end.
///
/// Thread: that of its use. Ownership: the locals are the tree's, which outlives this.
class LuaScope
{
public:
    /// What was visible at a place.
    using Mark = std::size_t;

    explicit LuaScope(LuaTree &tree)
        : m_tree(tree)
    {}

    LuaLocal *declare(const QByteArray &name, const LuaExpression *value = nullptr)
    {
        LuaLocal &local = m_tree.locals.emplace_back();
        local.name = name;
        local.value = value;
        m_visible.push_back(&local);
        return &local;
    }
    /// The one that the name means here; null where it means a global.
    [[nodiscard]] LuaLocal *find(const QByteArray &name) const
    {
        for (auto each = m_visible.rbegin(); each != m_visible.rend(); ++each) {
            if ((*each)->name == name)
                return *each;
        }
        return nullptr;
    }
    [[nodiscard]] Mark mark() const { return m_visible.size(); }
    /// What has been declared since the mark is gone.
    void leave(Mark mark) { m_visible.resize(mark); }

private:
    LuaTree &m_tree;
    std::vector<LuaLocal *> m_visible; ///< The innermost last.
};

} // namespace station
