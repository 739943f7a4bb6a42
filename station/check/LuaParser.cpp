#include "station/check/LuaParser.h"

#include "station/check/LuaLexer.h"
#include "station/check/LuaOperators.h"
#include "station/check/LuaScope.h"

#include <optional>
#include <utility>

namespace station {
namespace {

using Kind = LuaExpression::Kind;

/// Lua itself lets blocks and parentheses be nested 200 deep, but a chain of calls and indices be of any
/// length; whoever looks at a tree goes down one.
constexpr int LongestChain = 2000;
constexpr int DeepestNesting = 400;

class Parser
{
public:
    explicit Parser(const QByteArray &script)
        : m_lexer(script)
        , m_tree(std::make_unique<LuaTree>())
        , m_scope(*m_tree)
    {
        m_token = m_lexer.next();
        m_next = m_lexer.next();
    }

    std::unique_ptr<LuaTree> parse()
    {
        block();
        if (m_token.kind != LuaToken::Kind::End)
            fail("the end of the script is expected");
        m_tree->ignoredLines = m_lexer.ignoredLines();
        return std::move(m_tree);
    }

private:
    /// Counts how deep the parser has gone into itself.
    struct Depth
    {
        explicit Depth(Parser &counted)
            : parser(counted)
        {
            if (++parser.m_depth > DeepestNesting)
                parser.fail("is nested too deep to be looked at");
        }
        ~Depth() { --parser.m_depth; }
        Parser &parser;
    };

    [[noreturn]] void fail(const char *why) const { throw LuaSyntaxError(m_token.place, why); }

    void advance()
    {
        m_token = std::exchange(m_next, m_next.kind == LuaToken::Kind::End ? m_next : m_lexer.next());
    }
    bool accept(const char *text)
    {
        if (!m_token.is(text))
            return false;
        advance();
        return true;
    }
    void expect(const char *text)
    {
        if (!accept(text))
            fail("something else is expected here");
    }
    LuaToken expectName()
    {
        if (m_token.kind != LuaToken::Kind::Name)
            fail("a name is expected here");
        LuaToken name = m_token;
        advance();
        return name;
    }

    LuaExpression *make(Kind kind, LuaPlace place)
    {
        LuaExpression &made = m_tree->expressions.emplace_back();
        made.kind = kind;
        made.place = place;
        return &made;
    }

    // Scopes

    LuaExpression *nameExpression(const LuaToken &name)
    {
        LuaLocal *local = m_scope.find(name.text);
        LuaExpression *made = make(local ? Kind::Local : Kind::Global, name.place);
        made->text = name.text;
        made->local = local;
        return made;
    }

    // Statements

    bool endsBlock() const
    {
        return m_token.kind == LuaToken::Kind::End || m_token.is("end") || m_token.is("else") ||
               m_token.is("elseif") || m_token.is("until");
    }

    /// What a block declares is gone behind it.
    void block()
    {
        const LuaScope::Mark visible = m_scope.mark();
        statements();
        m_scope.leave(visible);
    }

    void statements()
    {
        const Depth depth(*this);
        while (!endsBlock()) {
            if (accept("return")) {
                if (!endsBlock() && !m_token.is(";"))
                    evaluateList();
                accept(";");
                return;
            }
            statement();
        }
    }

    void statement()
    {
        if (accept(";") || accept("break"))
            return;
        if (accept("::")) {
            expectName();
            expect("::");
        } else if (accept("goto")) {
            expectName();
        } else if (accept("do")) {
            block();
            expect("end");
        } else if (accept("while")) {
            evaluate();
            expect("do");
            block();
            expect("end");
        } else if (accept("repeat")) {
            repeatStatement();
        } else if (accept("if")) {
            ifStatement();
        } else if (accept("for")) {
            forStatement();
        } else if (m_token.is("function")) {
            functionStatement();
        } else if (accept("local")) {
            localStatement();
        } else {
            expressionStatement();
        }
    }

    void repeatStatement()
    {
        // The condition sees what the body declares.
        const LuaScope::Mark visible = m_scope.mark();
        statements();
        expect("until");
        evaluate();
        m_scope.leave(visible);
    }

    void ifStatement()
    {
        evaluate();
        expect("then");
        block();
        while (accept("elseif")) {
            evaluate();
            expect("then");
            block();
        }
        if (accept("else"))
            block();
        expect("end");
    }

    void forStatement()
    {
        std::vector<QByteArray> names{expectName().text};
        while (accept(","))
            names.push_back(expectName().text);
        if (!accept("="))
            expect("in");
        evaluateList();
        expect("do");
        const LuaScope::Mark visible = m_scope.mark();
        for (const QByteArray &name : names)
            m_scope.declare(name);
        block();
        m_scope.leave(visible);
        expect("end");
    }

    void functionStatement()
    {
        const LuaPlace place = m_token.place;
        advance();
        LuaExpression *target = nameExpression(expectName());
        bool isMethod = false;
        while (m_token.is(".") || m_token.is(":")) {
            isMethod = m_token.is(":");
            advance();
            const LuaToken name = expectName();
            LuaExpression *key = make(Kind::Text, name.place);
            key->text = name.text;
            target = indexed(target, key);
        }
        assign(target, functionBody(place, isMethod));
    }

    void localStatement()
    {
        if (m_token.is("function")) {
            const LuaPlace place = m_token.place;
            advance();
            // Declared first: the body may call it.
            LuaLocal *local = m_scope.declare(expectName().text);
            local->value = functionBody(place, false);
            return;
        }
        std::vector<QByteArray> names;
        do {
            names.push_back(expectName().text);
            if (accept("<")) {
                expectName();
                expect(">");
            }
        } while (accept(","));
        const auto values = accept("=") ? evaluateList() : std::vector<const LuaExpression *>();
        // The values do not see the names yet.
        for (std::size_t i = 0; i < names.size(); ++i)
            m_scope.declare(names[i], valueAt(values, i));
    }

    /// What gives the value at a place; null for what a call may give, or leave out.
    static const LuaExpression *valueAt(const std::vector<const LuaExpression *> &values, std::size_t place)
    {
        return place < values.size() ? values[place] : nullptr;
    }

    void expressionStatement()
    {
        LuaExpression *first = suffixed();
        if (!m_token.is("=") && !m_token.is(",")) {
            m_tree->evaluated.push_back(first);
            return;
        }
        std::vector<LuaExpression *> targets{first};
        while (accept(","))
            targets.push_back(suffixed());
        expect("=");
        const std::vector<const LuaExpression *> values = evaluateList();
        for (std::size_t i = 0; i < targets.size(); ++i)
            assign(targets[i], valueAt(values, i));
    }

    void assign(LuaExpression *target, const LuaExpression *value)
    {
        if (target->kind == Kind::Local)
            target->local->isAssigned = true;
        m_tree->assignments.push_back({target, value});
    }

    // Expressions

    const LuaExpression *evaluate()
    {
        const LuaExpression *value = expression();
        m_tree->evaluated.push_back(value);
        return value;
    }

    std::vector<const LuaExpression *> evaluateList()
    {
        std::vector<const LuaExpression *> values{evaluate()};
        while (accept(","))
            values.push_back(evaluate());
        return values;
    }

    LuaExpression *expression(int limit = 0)
    {
        const Depth depth(*this);
        LuaExpression *left = unary();
        for (;;) {
            const bool mayBe = m_token.kind == LuaToken::Kind::Symbol || m_token.kind == LuaToken::Kind::Word;
            const std::optional<LuaBinding> binding = mayBe ? bindingOfBinary(m_token.text) : std::nullopt;
            if (!binding || binding->left <= limit)
                return left;
            const bool joins = m_token.is("..");
            advance();
            LuaExpression *right = expression(binding->right);
            if (!joins && left->kind == Kind::Operation) {
                // Nobody asks what is worked out from what, and a flat list can have any length.
                left->parts.push_back(right);
                continue;
            }
            LuaExpression *made = make(joins ? Kind::Concat : Kind::Operation, left->place);
            made->parts = {left, right};
            left = made;
        }
    }

    LuaExpression *unary()
    {
        const LuaPlace place = m_token.place;
        const bool isMinus = m_token.is("-");
        if (!isMinus && !m_token.is("not") && !m_token.is("#") && !m_token.is("~"))
            return simple();
        advance();
        LuaExpression *operand = expression(BindingOfUnary);
        LuaExpression *made = make(isMinus ? Kind::Minus : Kind::Measure, place);
        made->parts = {operand};
        return made;
    }

    LuaExpression *simple()
    {
        const LuaToken token = m_token;
        if (token.kind == LuaToken::Kind::Text)
            return literal(Kind::Text);
        if (token.kind == LuaToken::Kind::Integer)
            return literal(Kind::Integer);
        if (token.kind == LuaToken::Kind::Number)
            return literal(Kind::Number);
        if (token.is("nil"))
            return literal(Kind::Nil);
        if (token.is("true") || token.is("false")) {
            LuaExpression *made = literal(Kind::Boolean);
            made->integer = token.is("true") ? 1 : 0;
            return made;
        }
        if (token.is("..."))
            return literal(Kind::Varargs);
        if (token.is("{"))
            return tableConstructor();
        if (accept("function"))
            return functionBody(token.place, false);
        return suffixed();
    }

    LuaExpression *literal(Kind kind)
    {
        LuaExpression *made = make(kind, m_token.place);
        made->text = kind == Kind::Text ? m_token.text : QByteArray();
        made->integer = m_token.integer;
        made->number = m_token.number;
        advance();
        return made;
    }

    LuaExpression *indexed(const LuaExpression *object, const LuaExpression *key)
    {
        LuaExpression *made = make(Kind::Index, key->place);
        made->parts = {object, key};
        return made;
    }

    LuaExpression *primary()
    {
        const LuaPlace place = m_token.place;
        if (!accept("("))
            return nameExpression(expectName());
        LuaExpression *made = make(Kind::Paren, place);
        made->parts = {expression()};
        expect(")");
        return made;
    }

    bool beginsArguments() const
    {
        return m_token.is("(") || m_token.is("{") || m_token.kind == LuaToken::Kind::Text;
    }

    LuaExpression *suffixed()
    {
        LuaExpression *made = primary();
        for (int length = 0;; ++length) {
            if (length > LongestChain)
                fail("is too long a chain to be looked at");
            if (accept(".")) {
                const LuaToken name = expectName();
                LuaExpression *key = make(Kind::Text, name.place);
                key->text = name.text;
                made = indexed(made, key);
            } else if (accept("[")) {
                const LuaExpression *key = expression();
                expect("]");
                made = indexed(made, key);
            } else if (accept(":")) {
                const LuaToken name = expectName();
                LuaExpression *call = make(Kind::Method, name.place);
                call->text = name.text;
                call->parts = {made};
                made = withArguments(call);
            } else if (beginsArguments()) {
                LuaExpression *call = make(Kind::Call, made->place);
                call->parts = {made};
                made = withArguments(call);
            } else {
                return made;
            }
        }
    }

    LuaExpression *withArguments(LuaExpression *call)
    {
        if (m_token.is("{")) {
            call->parts.push_back(tableConstructor());
        } else if (m_token.kind == LuaToken::Kind::Text) {
            call->parts.push_back(literal(Kind::Text));
        } else {
            expect("(");
            if (!m_token.is(")")) {
                do
                    call->parts.push_back(expression());
                while (accept(","));
            }
            expect(")");
        }
        return call;
    }

    LuaExpression *tableConstructor()
    {
        LuaExpression *table = make(Kind::Table, m_token.place);
        expect("{");
        while (!m_token.is("}")) {
            table->items.push_back(tableItem());
            if (!accept(",") && !accept(";"))
                break;
        }
        expect("}");
        return table;
    }

    LuaExpression::Item tableItem()
    {
        LuaExpression::Item item;
        if (accept("[")) {
            item.key = expression();
            expect("]");
            expect("=");
        } else if (m_token.kind == LuaToken::Kind::Name && m_next.is("=")) {
            LuaExpression *key = make(Kind::Text, m_token.place);
            key->text = m_token.text;
            item.key = key;
            advance();
            advance();
        }
        item.value = expression();
        return item;
    }

    LuaExpression *functionBody(LuaPlace place, bool isMethod)
    {
        const LuaScope::Mark visible = m_scope.mark();
        if (isMethod)
            m_scope.declare("self");
        expect("(");
        while (!m_token.is(")")) {
            if (!accept("..."))
                m_scope.declare(expectName().text);
            if (!accept(","))
                break;
        }
        expect(")");
        block();
        expect("end");
        m_scope.leave(visible);
        return make(Kind::Function, place);
    }

    LuaLexer m_lexer;
    std::unique_ptr<LuaTree> m_tree;
    LuaScope m_scope;
    LuaToken m_token;
    LuaToken m_next;
    int m_depth = 0;
};

} // namespace

std::unique_ptr<LuaTree> parseLua(const QByteArray &script)
{
    return Parser(script).parse();
}

} // namespace station
