#include "station/check/CallCheck.h"

#include "kovan/KovanLuaSequencer/KVKCallRules.h"
#include "kovan/KovanUIExtension/KVKExtensionConfigurationCheck.h"
#include "platform/NearestWord.h"
#include "station/instruction/ImageFile.h"

namespace station {
namespace {

using Kind = LuaExpression::Kind;

/// What Lua calls the type of a value; empty where it is not known.
QString luaTypeOf(const LuaExpression &expression, const platform::Value &value)
{
    switch (expression.kind) {
    case Kind::Nil:
        return QStringLiteral("nil");
    case Kind::Boolean:
        return QStringLiteral("boolean");
    case Kind::Integer:
    case Kind::Number:
        return QStringLiteral("number");
    case Kind::Text:
        return QStringLiteral("string");
    case Kind::Table:
        return QStringLiteral("table");
    case Kind::Function:
        return QStringLiteral("function");
    default:
        break;
    }
    if (value.metaType() == QMetaType::fromType<QString>())
        return QStringLiteral("string");
    return platform::isNumber(value) ? QStringLiteral("number") : QString();
}

bool givesMany(const LuaExpression &expression)
{
    return expression.kind == Kind::Call || expression.kind == Kind::Method ||
           expression.kind == Kind::Varargs;
}

/// Looks at one call of a plug-in's function.
class CallLook
{
public:
    CallLook(LuaScript &script, const LuaExpression &call, const KnownFunction &known,
             const QStringList &imageFolders)
        : m_script(script)
        , m_call(call)
        , m_known(known)
        , m_imageFolders(imageFolders)
        , m_given(static_cast<int>(call.parts.size()) - 1)
        , m_wanted(static_cast<int>(known.function.arguments().size()))
    {}

    void look()
    {
        // The last argument may be any number of values, or none.
        const bool isOpen = m_given > 0 && givesMany(argument(m_given));
        const int fewest = isOpen ? m_given - 1 : m_given;
        const QString tooMany = KVKProblemOfCount(m_known.function, fewest);
        if (!tooMany.isEmpty())
            m_script.add(argument(m_wanted + 1).place, tooMany);
        for (int position = 1; position <= m_wanted; ++position)
            lookAtArgument(position, position <= fewest, isOpen);
        if (m_isRefused || !m_known.check)
            return;
        const KVKCallReport report = m_known.check->lookAtCall(m_known.function.name(), m_values);
        for (const KVKCallProblem &problem : report.problems)
            m_script.add(placeOf(problem.part), problem.text);
        for (const KVKCallPicture &picture : report.pictures) {
            const ImageFile file = findImage(picture.path, m_imageFolders);
            if (!file.problem.isEmpty())
                m_script.add(placeOf(picture.part),
                             QStringLiteral("picture '%1': %2").arg(picture.path, file.problem));
        }
    }

private:
    [[nodiscard]] const LuaExpression &argument(int position) const
    {
        return *m_call.parts[static_cast<std::size_t>(position)];
    }

    [[nodiscard]] LuaPlace placeOf(const KVKCallPart &part) const
    {
        if (part.argument > m_given)
            return m_call.place;
        return m_script.values().placeOf(argument(part.argument), part.keys);
    }

    void lookAtArgument(int position, bool isGiven, bool mayBeGiven)
    {
        platform::Value value = platform::Value::fromValue(KVKUnknownValue());
        QString type;
        LuaPlace place = m_call.place;
        if (isGiven) {
            const LuaExpression &expression = m_script.values().behind(argument(position));
            place = argument(position).place;
            value = m_script.values().valueOf(argument(position));
            type = luaTypeOf(expression, value);
            if (expression.kind == Kind::Table)
                lookForFunctions(expression, KVKNameOfArgument(m_known.function, position), 0);
        } else if (!mayBeGiven) {
            type = QStringLiteral("no value");
        }
        const QString problem = type.isEmpty() ? type : KVKProblemOfType(m_known.function, position, type);
        if (!problem.isEmpty()) {
            m_script.add(place, problem);
            m_isRefused = true;
        }
        // A list is what a table with the keys 1 to n is, or one without any.
        if (platform::isArray(value))
            value = dictionaryOf(value.toList());
        m_values.append(value);
    }

    static platform::Dictionary dictionaryOf(const platform::Array &list)
    {
        platform::Dictionary dictionary;
        for (qsizetype i = 0; i < list.size(); ++i)
            dictionary.insert(QString::number(i + 1), list.at(i));
        return dictionary;
    }

    /// Functions can be handed over under some keys of an argument only.
    void lookForFunctions(const LuaExpression &table, const QString &path, int depth)
    {
        constexpr int Deepest = 64;
        constexpr int MostItems = 100'000;
        int number = 0;
        for (const LuaExpression::Item &item : table.items) {
            number += item.key ? 0 : 1;
            if (++m_items > MostItems)
                return;
            const LuaExpression &value = m_script.values().behind(*item.value);
            if (value.kind != Kind::Function && value.kind != Kind::Table)
                continue;
            const QString key = m_script.values().keyOf(item, number).value_or(QString());
            const QString place =
                item.key ? path + QLatin1Char('.') + key : QStringLiteral("%1[%2]").arg(path, key);
            const bool mayBe = depth == 0 && m_known.function.takesFunctionUnder(key);
            if (value.kind == Kind::Table && depth < Deepest)
                lookForFunctions(value, place, depth + 1);
            else if (value.kind == Kind::Function && !mayBe && !key.isEmpty())
                refuseFunction(item, place);
        }
    }

    void refuseFunction(const LuaExpression::Item &item, const QString &path)
    {
        m_script.add(item.key ? item.key->place : item.value->place,
                     KVKProblemOfValue(path, QStringLiteral("function")));
        m_isRefused = true;
    }

    LuaScript &m_script;
    const LuaExpression &m_call;
    const KnownFunction &m_known;
    const QStringList &m_imageFolders;
    int m_given;
    int m_wanted;
    int m_items = 0;
    bool m_isRefused = false;
    platform::Array m_values;
};

} // namespace

void checkCalls(LuaScript &script, const KnownFunctions &functions, const QSet<QString> &own,
                const QStringList &imageFolders)
{
    for (const LuaScript::Call &call : script.calls()) {
        const auto known = functions.value(call.name);
        if (known && !own.contains(call.name))
            CallLook(script, *call.expression, *known, imageFolders).look();
    }
}

void checkPanelKeys(LuaScript &script, const QStringList &panelKeys)
{
    const auto check = [&](const LuaExpression &expression, LuaPlace place) {
        const platform::Value key = script.values().valueOf(expression);
        const bool isKey = key.metaType() == QMetaType::fromType<QString>() || platform::isNumber(key);
        if (!isKey || panelKeys.contains(key.toString()))
            return;
        const QString meant = platform::nearestWord(key.toString(), panelKeys);
        script.add(place,
                   QStringLiteral("the station has no group or system '%1'%2")
                       .arg(key.toString(),
                            meant.isEmpty() ? meant : QStringLiteral("; did you mean '%1'?").arg(meant)));
    };
    for (const LuaScript::Call &call : script.calls()) {
        if (call.expression->parts.size() < 2)
            continue;
        const LuaExpression &first = *call.expression->parts[1];
        if (call.name == QLatin1String("operator.waitForPanel") ||
            call.name == QLatin1String("operator.waitForPanelGone"))
            check(first, first.place);
        const LuaExpression &target = script.values().behind(first);
        if (call.name != QLatin1String("operator.click") || target.kind != Kind::Table)
            continue;
        for (const LuaExpression::Item &item : target.items) {
            if (item.key && item.key->kind == Kind::Text && item.key->text == "panel")
                check(*item.value, item.value->place);
        }
    }
}

} // namespace station
