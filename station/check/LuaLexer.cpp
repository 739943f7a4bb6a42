#include "station/check/LuaLexer.h"

#include <QList>

#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>

namespace station {
namespace {

const QList<QByteArray> Words{"and",      "break",  "do",   "else", "elseif", "end",  "false", "for",
                              "function", "goto",   "if",   "in",   "local",  "nil",  "not",   "or",
                              "repeat",   "return", "then", "true", "until",  "while"};

// The longer ones first, since each begins with a shorter one.
constexpr std::array<const char *, 33> Symbols{
    "...", "<<", ">>", "//", "==", "~=", "<=", ">=", "::", "..", "+", "-", "*", "/", "%", "^", "#",
    "&",   "~",  "|",  "<",  ">",  "=",  "(",  ")",  "{",  "}",  "[", "]", ";", ":", ",", "."};

const QByteArray IgnoreComment = "check: ignore";

// Lua knows ASCII letters alone, whatever the locale.
bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool isHex(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
bool beginsName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool isInName(char c)
{
    return beginsName(c) || isDigit(c);
}

int hexValue(char c)
{
    if (isDigit(c))
        return c - '0';
    return (c >= 'a' ? c - 'a' : c - 'A') + 10;
}

/// UTF-8 as Lua has it, up to 31 bits.
void appendCodePoint(QByteArray &text, quint64 point)
{
    if (point < 0x80) {
        text.append(static_cast<char>(point));
        return;
    }
    QByteArray reversed;
    quint64 firstLimit = 0x3f;
    do {
        reversed.append(static_cast<char>(0x80 | (point & 0x3f)));
        point >>= 6;
        firstLimit >>= 1;
    } while (point > firstLimit);
    text.append(static_cast<char>((~firstLimit << 1) | point));
    for (qsizetype i = reversed.size() - 1; i >= 0; --i)
        text.append(reversed.at(i));
}

/// A number as Lua reads it, whatever the locale: one that is too large is infinite, and one that is too
/// small is 0.
double decimalOf(const QByteArray &written, bool isHexadecimal)
{
    const auto format = isHexadecimal ? std::chars_format::hex : std::chars_format::general;
    const char *begin = written.constData() + (isHexadecimal ? 2 : 0);
    const char *end = written.constData() + written.size();
    double number = 0.0;
    if (std::from_chars(begin, end, number, format).ec != std::errc::result_out_of_range)
        return number;
    long double wider = 0.0L;
    if (std::from_chars(begin, end, wider, format).ec != std::errc::result_out_of_range)
        return static_cast<double>(wider);
    const bool isSmall = written.toLower().contains(isHexadecimal ? "p-" : "e-");
    return isSmall ? 0.0 : std::numeric_limits<double>::infinity();
}

} // namespace

char LuaLexer::at(qsizetype ahead) const
{
    return m_at + ahead < m_script.size() ? m_script.at(m_at + ahead) : '\0';
}

LuaPlace LuaLexer::here() const
{
    return {m_line, static_cast<int>(m_at - m_lineStart - m_continued) + 1};
}

void LuaLexer::advance(qsizetype count)
{
    for (; count > 0 && m_at < m_script.size(); --count, ++m_at) {
        const char c = m_script.at(m_at);
        if ((static_cast<unsigned char>(c) & 0xc0) == 0x80)
            ++m_continued;
        if (c != '\n' && c != '\r')
            continue;
        // CR LF is one end of line, in either order.
        const char following = at(1);
        if ((following == '\n' || following == '\r') && following != c)
            ++m_at;
        ++m_line;
        m_lineStart = m_at + 1;
        m_continued = 0;
    }
}

void LuaLexer::skipBlanksAndComments()
{
    for (;;) {
        const char c = at();
        if (c == '-' && at(1) == '-')
            skipComment();
        else if (c == ' ' || (c >= '\t' && c <= '\r'))
            advance();
        else
            return;
    }
}

void LuaLexer::skipComment()
{
    const int line = m_line;
    advance(2);
    if (const qsizetype level = longBracketLevel(); level >= 0) {
        readLongBracket(level);
        return;
    }
    const qsizetype start = m_at;
    while (m_at < m_script.size() && at() != '\n' && at() != '\r')
        ++m_at;
    if (m_script.mid(start, m_at - start).trimmed() == IgnoreComment)
        m_ignoredLines.push_back(m_lastTokenLine == line ? line : line + 1);
}

/// How many = stand in the opening bracket here; -1 where there is none.
qsizetype LuaLexer::longBracketLevel() const
{
    if (at() != '[')
        return -1;
    qsizetype level = 0;
    while (at(1 + level) == '=')
        ++level;
    return at(1 + level) == '[' ? level : -1;
}

QByteArray LuaLexer::readLongBracket(qsizetype level)
{
    const LuaPlace start = here();
    advance(level + 2);
    if (at() == '\n' || at() == '\r')
        advance();
    const QByteArray end = ']' + QByteArray(level, '=') + ']';
    QByteArray text;
    while (m_at < m_script.size()) {
        if (at() == ']' && QByteArrayView(m_script).sliced(m_at).startsWith(end)) {
            advance(end.size());
            return text;
        }
        const bool endsLine = at() == '\n' || at() == '\r';
        text.append(endsLine ? '\n' : at());
        advance();
    }
    throw LuaSyntaxError(start, "a long bracket is not closed");
}

LuaToken LuaLexer::next()
{
    skipBlanksAndComments();
    if (m_at >= m_script.size())
        return {LuaToken::Kind::End, here()};
    const char c = at();
    LuaToken token;
    const LuaPlace place = here();
    if (beginsName(c))
        token = readWord();
    else if (isDigit(c) || (c == '.' && isDigit(at(1))))
        token = readNumber();
    else if (c == '"' || c == '\'')
        token = readText();
    else if (const qsizetype level = longBracketLevel(); level >= 0)
        token = {LuaToken::Kind::Text, place, readLongBracket(level)};
    else
        token = readSymbol();
    token.place = place;
    m_lastTokenLine = m_line;
    return token;
}

LuaToken LuaLexer::readWord()
{
    const qsizetype start = m_at;
    while (isInName(at()))
        advance();
    const QByteArray word = m_script.mid(start, m_at - start);
    return {Words.contains(word) ? LuaToken::Kind::Word : LuaToken::Kind::Name, {}, word};
}

LuaToken LuaLexer::readNumber()
{
    const qsizetype start = m_at;
    const bool isHexadecimal = at() == '0' && (at(1) == 'x' || at(1) == 'X');
    if (isHexadecimal)
        advance(2);
    bool isWhole = true;
    while (isHex(at()) || at() == '.' || at() == 'p' || at() == 'P' || at() == '+' || at() == '-') {
        const char before = m_at > start ? m_script.at(m_at - 1) : '\0';
        const bool signFits = isHexadecimal ? before == 'p' || before == 'P' : before == 'e' || before == 'E';
        if ((at() == '+' || at() == '-') && (!signFits || m_at == start))
            break;
        const bool isExponent = isHexadecimal ? at() == 'p' || at() == 'P' : at() == 'e' || at() == 'E';
        isWhole = isWhole && at() != '.' && !isExponent;
        advance();
    }
    const QByteArray written = m_script.mid(start, m_at - start);
    LuaToken token{LuaToken::Kind::Integer, {}, written};
    if (isWhole && isHexadecimal) {
        quint64 value = 0; // wraps around, as in Lua
        for (qsizetype i = 2; i < written.size(); ++i)
            value = value * 16 + static_cast<quint64>(hexValue(written.at(i)));
        token.integer = static_cast<qint64>(value);
        return token;
    }
    bool fits = false;
    token.integer = isWhole ? written.toLongLong(&fits) : 0;
    if (fits)
        return token;
    token.kind = LuaToken::Kind::Number;
    token.number = decimalOf(written, isHexadecimal);
    return token;
}

LuaToken LuaLexer::readText()
{
    const LuaPlace start = here();
    const char quote = at();
    advance();
    LuaToken token{LuaToken::Kind::Text, start};
    while (at() != quote) {
        if (m_at >= m_script.size() || at() == '\n' || at() == '\r')
            throw LuaSyntaxError(start, "a text is not closed");
        if (at() == '\\') {
            advance();
            readEscape(token.text);
        } else {
            token.text.append(at());
            advance();
        }
    }
    advance();
    return token;
}

void LuaLexer::readEscape(QByteArray &text)
{
    const char c = at();
    static const QByteArray named = "abfnrtv";
    static const QByteArray meant = "\a\b\f\n\r\t\v";
    if (const qsizetype found = c == '\0' ? -1 : named.indexOf(c); found >= 0) {
        text.append(meant.at(found));
        advance();
    } else if (c == 'x') {
        text.append(static_cast<char>(hexValue(at(1)) * 16 + hexValue(at(2))));
        advance(3);
    } else if (c == 'u') {
        readCodePoint(text);
    } else if (c == 'z') {
        advance();
        while (at() == ' ' || (at() >= '\t' && at() <= '\r'))
            advance();
    } else if (isDigit(c)) {
        int value = 0;
        for (int i = 0; i < 3 && isDigit(at()); ++i, advance())
            value = value * 10 + (at() - '0');
        text.append(static_cast<char>(value));
    } else {
        // A line that goes on, whose end is a line feed whatever it was, or the character itself.
        text.append(c == '\r' ? '\n' : c);
        advance();
    }
}

void LuaLexer::readCodePoint(QByteArray &text)
{
    advance(2); // u{
    quint64 point = 0;
    while (isHex(at())) {
        point = (point << 4 | static_cast<quint64>(hexValue(at()))) & 0x7fffffff;
        advance();
    }
    advance(); // }
    appendCodePoint(text, point);
}

LuaToken LuaLexer::readSymbol()
{
    const QByteArrayView rest = QByteArrayView(m_script).sliced(m_at);
    for (const char *symbol : Symbols) {
        if (rest.startsWith(symbol)) {
            advance(static_cast<qsizetype>(qstrlen(symbol)));
            return {LuaToken::Kind::Symbol, {}, symbol};
        }
    }
    throw LuaSyntaxError(here(), "a character that Lua does not know");
}

} // namespace station
