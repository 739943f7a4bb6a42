#pragma once

#include "platform/Value.h"
#include "station/check/LuaSyntax.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <optional>
#include <set>

namespace station {

/// What is known of the values of a script's expressions without running it: literals, table constructors,
/// the locals that are given one and keep it, and what is joined from these. What is not known for certain is
/// unknown: a table that anything could have changed meanwhile is.
///
/// Thread: any. Ownership: refers to the tree, which outlives it.
class LuaValues
{
public:
    /// Whether a function, "showView" or "string.format", neither changes nor keeps a table that it is given.
    using OnlyReads = std::function<bool(const QString &function)>;

    LuaValues(const LuaTree &tree, const OnlyReads &onlyReads);

    /// The expression that gives the value, behind parentheses, locals and fields; the expression itself
    /// where there is no other.
    [[nodiscard]] const LuaExpression &behind(const LuaExpression &expression) const;
    /// What a global name or its fields are called: "string.format"; nothing for anything else, and for what
    /// is not known. The table of globals itself, _G, is left out.
    [[nodiscard]] static std::optional<QString> nameOf(const LuaExpression &expression);
    /// The same for what stands behind the expression.
    [[nodiscard]] std::optional<QString> nameBehind(const LuaExpression &expression) const;

    /// The value as a function of a plug-in gets it; a KVKUnknownValue where it is not known, also inside of
    /// lists and tables. Nothing for nil.
    [[nodiscard]] platform::Value valueOf(const LuaExpression &expression) const;
    /// The key of a table's item, as valueOf() has it; nothing where it is not known. `position` is what the
    /// item would be numbered with.
    [[nodiscard]] std::optional<QString> keyOf(const LuaExpression::Item &item, int position) const;
    /// Where the value stands that a list of keys leads to from an expression; as near to it as is known.
    [[nodiscard]] LuaPlace placeOf(const LuaExpression &expression, const QStringList &keys) const;

private:
    /// What becomes of an expression's value.
    struct Use
    {
        enum class Kind { Read, Held, Anything };

        Kind kind = Kind::Anything;
        const LuaLocal *holder = nullptr; ///< Where it is held.
    };

    void look(const LuaExpression &expression, const Use &use);
    void lookAtCall(const LuaExpression &call);
    void lookAtTarget(const LuaExpression &target);
    void releaseHeld();
    [[nodiscard]] const LuaExpression *step(const LuaExpression &expression) const;
    /// A key as Lua tells it from others: there 1 and "1" are two.
    struct Key
    {
        QString text;
        bool isNumber = false;
    };
    [[nodiscard]] std::optional<Key> luaKeyOf(const LuaExpression::Item &item, int position) const;
    struct Entry
    {
        const LuaExpression::Item *item = nullptr;
        bool isNumber = false; ///< As of the key.
    };
    /// A table's items by their keys; nothing where a key is not known, which may be any of them, or where
    /// it cannot be told which of two items Lua leaves under a key.
    using Items = std::optional<QHash<QString, Entry>>;
    [[nodiscard]] const Items &itemsOf(const LuaExpression &table) const;
    [[nodiscard]] const LuaExpression::Item *itemOf(const LuaExpression &table, const QString &key) const;
    [[nodiscard]] bool holdsTables(const LuaExpression &expression) const;
    [[nodiscard]] platform::Value value(const LuaExpression &expression, int depth) const;
    [[nodiscard]] platform::Value tableValue(const LuaExpression &table, int depth) const;
    [[nodiscard]] platform::Value joined(const LuaExpression &concat, int depth) const;

    OnlyReads m_onlyReads;
    std::set<const LuaLocal *> m_changeable;
    mutable std::map<const LuaExpression *, Items> m_items; ///< Those that were asked for.
    mutable int m_valuesLeft = 0; ///< How many more a value may be made of: tables can hold each other often.
    std::map<const LuaLocal *, std::set<const LuaLocal *>> m_held; ///< Holder to what it holds.
};

} // namespace station
