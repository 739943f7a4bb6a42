#include "kovan/KovanLuaSequencer/KVKLuaValue.h"
#include "kovan/KovanLuaSequencer/KVKLuaVocabulary.h"
#include "kovan/KovanUIExtension/KVKExtensionConfigurationCheck.h"
#include "station/check/LuaLexer.h"
#include "station/check/LuaParser.h"
#include "station/check/LuaScript.h"
#include "station/check/NameCheck.h"

#include <QDir>
#include <QFile>

#include <lua.hpp>

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "fuzz/Surroundings.h"
#include "fuzz/Target.h"
#include "fuzz/Values.h"

using platform::Value;
using station::LuaExpression;
using station::LuaTree;

namespace {

using fuzz::Input;
using fuzz::must;

bool onlyReads(const QString &function)
{
    return function == QLatin1String("showView") || function == QLatin1String("print");
}

void endsOrIsRefused(const QByteArray &script)
{
    station::LuaLexer lexer(script);
    try {
        // Each token takes a byte at least.
        for (qsizetype left = script.size() + 1; left >= 0; --left) {
            if (lexer.next().kind == station::LuaToken::Kind::End)
                return;
        }
        must(false, "the lexer comes to an end");
    } catch (const station::LuaSyntaxError &) {
        // Not Lua.
    }
}

bool isKnown(const Value &value)
{
    if (value.metaType() == QMetaType::fromType<KVKUnknownValue>())
        return false;
    const platform::Array list = value.toList();
    const platform::Dictionary dictionary = value.toMap();
    return std::all_of(list.cbegin(), list.cend(), isKnown) &&
           std::all_of(dictionary.cbegin(), dictionary.cend(), isKnown);
}

void *withinLimit(void *, void *block, std::size_t, std::size_t size)
{
    constexpr std::size_t Most = 1 << 20;
    if (size == 0) {
        std::free(block);
        return nullptr;
    }
    return size > Most ? nullptr : std::realloc(block, size);
}

/// What Lua itself makes of a script that has no function to call; nothing when it raises an error.
std::optional<Value> valueInLua(const QByteArray &script)
{
    const std::unique_ptr<lua_State, decltype(&lua_close)> state(lua_newstate(withinLimit, nullptr),
                                                                 &lua_close);
    constexpr int MostInstructions = 10'000;
    const auto giveUp = [](lua_State *running, lua_Debug *) { luaL_error(running, "takes too long"); };
    lua_sethook(state.get(), giveUp, LUA_MASKCOUNT, MostInstructions);
    const auto size = static_cast<std::size_t>(script.size());
    if (luaL_loadbufferx(state.get(), script.constData(), size, "it", "t") != LUA_OK ||
        lua_pcall(state.get(), 0, 1, 0) != LUA_OK)
        return std::nullopt;
    try {
        return KVKLuaToValue(state.get(), -1, QStringLiteral("it"));
    } catch (const KVKLuaValueError &) {
        return std::nullopt;
    }
}

/// A value that is told without running the script is the one that running it gives. A script of one `return`
/// and nothing else is run to see.
void isWhatLuaSays(const QByteArray &script, const LuaTree &tree, const station::LuaValues &values)
{
    const bool isOne = script.startsWith("return") && tree.evaluated.size() == 1 && tree.locals.empty() &&
                       tree.assignments.empty();
    if (!isOne)
        return;
    const Value told = values.valueOf(*tree.evaluated.front());
    if (!isKnown(told))
        return;
    if (const std::optional<Value> real = valueInLua(script))
        must(fuzz::areSame(told, *real), "what is known of a value is what Lua gives",
             platform::description(told) + QStringLiteral(" is not ") + platform::description(*real));
}

class LuaScriptTarget : public fuzz::Target
{
public:
    LuaScriptTarget()
        : m_path(QDir(fuzz::Surroundings::folder()).filePath(QStringLiteral("it.lua")))
    {
        m_known.library = KVKLuaLibraryVocabulary();
        m_known.globals = {QStringLiteral("showView")};
        m_known.reader = QStringLiteral("a sequence");
    }

    void feed(Input input) override
    {
        const QByteArray script = input.rest();
        endsOrIsRefused(script);
        const bool isLua = !KVKLuaSyntaxProblemOf(script);
        if (isLua)
            isUnderstood(script);
        isReadFromItsFile(script, isLua);
    }

private:
    /// What Lua takes the parser takes, unless it is too deep.
    static void isUnderstood(const QByteArray &script)
    {
        try {
            const std::unique_ptr<LuaTree> tree = station::parseLua(script);
            const station::LuaValues values(*tree, onlyReads);
            for (const LuaExpression *expression : tree->evaluated) {
                must(values.behind(*expression).place.line >= 1, "a place has a line");
                static_cast<void>(values.valueOf(*expression));
                static_cast<void>(values.nameBehind(*expression));
                static_cast<void>(
                    values.placeOf(*expression, {QStringLiteral("input"), QStringLiteral("1")}));
            }
            isWhatLuaSays(script, *tree, values);
        } catch (const station::LuaSyntaxError &problem) {
            must(QByteArray(problem.what()).contains("deep"), "what Lua takes is understood", problem.what());
        }
    }

    void isReadFromItsFile(const QByteArray &script, bool isLua) const
    {
        {
            QFile file(m_path);
            must(file.open(QIODevice::WriteOnly) && file.write(script) == script.size(),
                 "a file can be written");
        }
        station::LuaScript read(m_path, QStringLiteral("it.lua"), onlyReads);
        must(isLua || !read.isReadable(), "what is not Lua is not readable");
        must(read.isReadable() || read.problems().size() == 1, "what is not readable has one problem");
        if (read.isReadable())
            station::checkNames(read, m_known, read.assigned(), read.definesAnything());
        for (const station::Problem &problem : read.problems()) {
            must(problem.line >= 1 && problem.line <= script.count('\n') + script.count('\r') + 1,
                 "a problem stands in a line of the script", problem.text);
            must(problem.column >= 0 && problem.column <= script.size() + 1, "and in a column of it",
                 problem.text);
        }
    }

    QString m_path;
    station::KnownNames m_known;
};

} // namespace

std::unique_ptr<fuzz::Target> fuzz::makeTarget()
{
    return std::make_unique<LuaScriptTarget>();
}
