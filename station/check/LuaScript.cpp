#include "station/check/LuaScript.h"

#include "kovan/KovanLuaSequencer/KVKLuaVocabulary.h"
#include "station/check/LuaLexer.h"
#include "station/check/LuaParser.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace station {
namespace {

using Kind = LuaExpression::Kind;

/// Lua itself would need some hundred times this to read it.
constexpr qint64 LargestScript = 64 * 1024 * 1024;

/// Calls that run other text as Lua, in which anything may be defined.
bool runsOtherText(const QString &function)
{
    return function == QLatin1String("load") || function == QLatin1String("loadfile") ||
           function == QLatin1String("dofile");
}

} // namespace

LuaScript::LuaScript(const QString &path, QString shown, const LuaValues::OnlyReads &onlyReads)
    : m_path(path)
    , m_shown(std::move(shown))
{
    read(onlyReads);
}

void LuaScript::read(const LuaValues::OnlyReads &onlyReads)
{
    QFile file(m_path);
    const QFileInfo info(m_path);
    if (info.isDir())
        return m_problems.append({m_shown, 1, 0, QStringLiteral("is a folder")});
    if (!file.open(QIODevice::ReadOnly))
        return m_problems.append({m_shown, 1, 0, file.errorString()});
    if (file.size() > LargestScript)
        return m_problems.append({m_shown, 1, 0, QStringLiteral("is too large for a script")});
    const QByteArray text = file.readAll();
    if (const auto wrong = KVKLuaSyntaxProblemOf(text))
        return m_problems.append({m_shown, wrong->line, 0, wrong->text});
    try {
        m_tree = parseLua(text);
    } catch (const LuaSyntaxError &problem) {
        return m_problems.append(
            {m_shown, problem.place.line, problem.place.column, QString::fromUtf8(problem.what())});
    }
    m_values = std::make_unique<LuaValues>(*m_tree, onlyReads);
    noteNames();
}

void LuaScript::add(LuaPlace place, const QString &text)
{
    const auto &ignored = m_tree->ignoredLines;
    if (!std::binary_search(ignored.begin(), ignored.end(), place.line))
        m_problems.append({m_shown, place.line, place.column, text});
}

void LuaScript::forEach(const std::function<void(const LuaExpression &)> &look) const
{
    std::vector<const LuaExpression *> open;
    const auto goThrough = [&](const LuaExpression *first) {
        open.push_back(first);
        while (!open.empty()) {
            const LuaExpression *expression = open.back();
            open.pop_back();
            look(*expression);
            open.insert(open.end(), expression->parts.begin(), expression->parts.end());
            for (const LuaExpression::Item &item : expression->items) {
                if (item.key)
                    open.push_back(item.key);
                open.push_back(item.value);
            }
        }
    };
    for (const LuaExpression *expression : m_tree->evaluated)
        goThrough(expression);
    for (const LuaTree::Assignment &assignment : m_tree->assignments) {
        // What is assigned to is not read, but what leads there is.
        if (assignment.target->kind == Kind::Index) {
            for (const LuaExpression *part : assignment.target->parts)
                goThrough(part);
        }
    }
}

void LuaScript::noteNames()
{
    for (const LuaTree::Assignment &assignment : m_tree->assignments) {
        if (const auto name = LuaValues::nameOf(*assignment.target))
            m_assigned.insert(*name);
    }
    std::size_t globalTables = 0;
    std::size_t globalTablesNamed = 0;
    forEach([&](const LuaExpression &expression) {
        if (expression.kind == Kind::Call)
            noteCall(expression);
        const bool isGlobal = expression.kind == Kind::Global;
        m_definesAnything = m_definesAnything || (isGlobal && expression.text == "_ENV");
        globalTables += isGlobal && expression.text == "_G" ? 1 : 0;
        const bool names = expression.kind == Kind::Index && expression.parts[1]->kind == Kind::Text &&
                           expression.parts[0]->kind == Kind::Global && expression.parts[0]->text == "_G";
        globalTablesNamed += names ? 1 : 0;
    });
    for (const LuaTree::Assignment &assignment : m_tree->assignments) {
        const LuaExpression &target = *assignment.target;
        const bool names = target.kind == Kind::Index && target.parts[1]->kind == Kind::Text &&
                           target.parts[0]->kind == Kind::Global && target.parts[0]->text == "_G";
        globalTablesNamed += names ? 1 : 0;
    }
    // Handed on, or indexed by what is not known.
    m_definesAnything = m_definesAnything || globalTables != globalTablesNamed;
    const bool hasOwnEnvironment = std::any_of(m_tree->locals.begin(), m_tree->locals.end(),
                                               [](const LuaLocal &local) { return local.name == "_ENV"; });
    m_definesAnything = m_definesAnything || hasOwnEnvironment || m_assigned.contains(QStringLiteral("_ENV"));
    // Problems are told in the order of the text.
    std::sort(m_calls.begin(), m_calls.end(),
              [](const Call &a, const Call &b) { return a.expression->place < b.expression->place; });
}

void LuaScript::noteCall(const LuaExpression &expression)
{
    const auto name = m_values->nameBehind(*expression.parts[0]);
    if (!name)
        return;
    m_calls.push_back({*name, &expression});
    m_definesAnything = m_definesAnything || runsOtherText(*name);
    if (*name != QLatin1String("require") || expression.parts.size() < 2)
        return;
    const platform::Value module = m_values->valueOf(*expression.parts[1]);
    if (module.metaType() == QMetaType::fromType<QString>())
        m_modules.emplace_back(module.toString(), expression.parts[1]->place);
    else
        m_definesAnything = true;
}

} // namespace station
