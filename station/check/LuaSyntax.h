#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <deque>
#include <vector>

namespace station {

/// A place in a script. Lines and columns count from 1; a column is a character of its line.
struct LuaPlace
{
    int line = 1;
    int column = 1;

    friend auto operator<=>(const LuaPlace &, const LuaPlace &) = default;
};

struct LuaExpression;

/// A local variable, a parameter or a loop's variable: one for each place that declares it.
struct LuaLocal
{
    QByteArray name;
    const LuaExpression *value = nullptr; ///< What its declaration gives it; null where that is not known.
    bool isAssigned = false;              ///< Whether anything but its declaration gives it a value.
};

/// An expression of a script, as far as it can be told without running it. Nodes are owned by their LuaTree.
struct LuaExpression
{
    enum class Kind {
        Nil,
        Boolean,   ///< `integer` is 0 or 1.
        Integer,   ///< `integer`
        Number,    ///< `number`
        Text,      ///< `text`
        Varargs,   ///< ...
        Function,  ///< Its body stands in the tree's lists, like all others.
        Local,     ///< `local`
        Global,    ///< `text`
        Index,     ///< The object, then the key.
        Call,      ///< What is called, then the arguments.
        Method,    ///< The object, then the arguments; `text` is the method's name.
        Table,     ///< `items`
        Concat,    ///< The two sides of ..
        Minus,     ///< The operand of a unary minus.
        Paren,     ///< What stands in parentheses, one value.
        Measure,   ///< The operand of any other unary operator, which gives nothing of it on.
        Operation, ///< The operands of any other operators.
    };

    /// One entry of a table constructor. Without a key it takes the next number.
    struct Item
    {
        const LuaExpression *key = nullptr;
        const LuaExpression *value = nullptr;
    };

    Kind kind = Kind::Nil;
    LuaPlace place; ///< Where it begins; of an index, where the key stands.
    QByteArray text = {};
    qint64 integer = 0;
    double number = 0.0;
    LuaLocal *local = nullptr;
    std::vector<const LuaExpression *> parts = {};
    std::vector<Item> items = {};
};

/// What a script says, without its flow: which expressions it evaluates and to what it assigns, in the order
/// of the text, all functions' bodies included.
struct LuaTree
{
    struct Assignment
    {
        const LuaExpression *target = nullptr;
        const LuaExpression *value = nullptr; ///< Null where no one expression gives it.
    };

    std::vector<const LuaExpression *> evaluated;
    std::vector<Assignment> assignments;
    /// Lines that bear a comment "check: ignore" behind code, and those after one that stands alone.
    std::vector<int> ignoredLines;

    // What the lists point to. A deque's elements stay where they are.
    std::deque<LuaExpression> expressions;
    std::deque<LuaLocal> locals;
};

} // namespace station
