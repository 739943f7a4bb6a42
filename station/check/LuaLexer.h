#pragma once

#include "station/check/LuaSyntax.h"

#include <stdexcept>
#include <vector>

namespace station {

/// What the lexer or the parser does not understand. Lua has judged the script before, so this tells of a
/// script that is too deep, or of a fault in here.
class LuaSyntaxError : public std::runtime_error
{
public:
    LuaSyntaxError(LuaPlace where, const char *what)
        : std::runtime_error(what)
        , place(where)
    {}
    LuaPlace place;
};

struct LuaToken
{
    enum class Kind { End, Name, Word, Symbol, Text, Integer, Number };

    Kind kind = Kind::End;
    LuaPlace place;
    QByteArray text = {}; ///< The name, word or symbol, or what a text holds, its escapes resolved.
    qint64 integer = 0;
    double number = 0.0;

    [[nodiscard]] bool is(const char *wordOrSymbol) const
    {
        return (kind == Kind::Word || kind == Kind::Symbol) && text == wordOrSymbol;
    }
};

/// The tokens of a Lua 5.4 script, the last one an End.
///
/// Thread: that of its use.
class LuaLexer
{
public:
    /// Requires: the script outlives the lexer.
    explicit LuaLexer(const QByteArray &script)
        : m_script(script)
    {}

    /// Errors: throws LuaSyntaxError.
    [[nodiscard]] LuaToken next();
    /// See LuaTree. Complete when the End was read.
    [[nodiscard]] const std::vector<int> &ignoredLines() const { return m_ignoredLines; }

private:
    [[nodiscard]] char at(qsizetype ahead = 0) const;
    [[nodiscard]] LuaPlace here() const;
    void advance(qsizetype count = 1);
    void skipBlanksAndComments();
    void skipComment();
    [[nodiscard]] qsizetype longBracketLevel() const;
    QByteArray readLongBracket(qsizetype level);
    LuaToken readWord();
    LuaToken readNumber();
    LuaToken readText();
    void readEscape(QByteArray &text);
    void readCodePoint(QByteArray &text);
    LuaToken readSymbol();

    const QByteArray &m_script;
    qsizetype m_at = 0;
    qsizetype m_lineStart = 0;
    qsizetype m_continued = 0; ///< Bytes of the line that go on with a character.
    int m_line = 1;
    int m_lastTokenLine = 0;
    std::vector<int> m_ignoredLines;
};

} // namespace station
