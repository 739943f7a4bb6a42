#include "station/check/NameCheck.h"

#include "platform/NearestWord.h"

#include <algorithm>

namespace station {
namespace {

using Kind = LuaExpression::Kind;

class Checker
{
public:
    Checker(LuaScript &script, const KnownNames &known, const QSet<QString> &own, bool definesAnything)
        : m_script(script)
        , m_known(known)
        , m_own(own)
        , m_definesAnything(definesAnything)
        , m_globals(known.globals)
        , m_fields(known.fields)
    {
        for (const QString &name : known.library.names)
            m_globals.insert(name);
        m_fields.insert(known.library.fields);
        for (const QString &name : own)
            m_nearer.append(name);
        m_nearer += m_globals.values();
        m_nearer.sort();
        // Hardly anybody means one of Lua's own names for its insides.
        std::stable_partition(m_nearer.begin(), m_nearer.end(),
                              [](const QString &name) { return !name.startsWith(QLatin1Char('_')); });
    }

    void check()
    {
        m_script.forEach([this](const LuaExpression &expression) {
            if (expression.kind == Kind::Global)
                checkGlobal(QString::fromUtf8(expression.text), expression.place);
            else if (expression.kind == Kind::Index)
                checkField(expression);
            else if (expression.kind == Kind::Method)
                checkMethod(expression);
        });
        for (const LuaScript::Call &call : m_script.calls()) {
            const bool hasNone = call.expression->parts.size() == 1;
            if (hasNone && m_known.library.refusedWithoutArguments.contains(call.name) &&
                !m_own.contains(call.name))
                refuse(call.expression->place, call.name + QStringLiteral(" without a file"));
        }
    }

private:
    void refuse(LuaPlace place, const QString &name)
    {
        const QString allowance = m_known.library.allowances.value(name);
        m_script.add(place,
                     QStringLiteral("%1 is not available to %2%3")
                         .arg(name, m_known.reader, allowance.isEmpty() ? QString() : adviceFor(allowance)));
    }

    [[nodiscard]] static QString didYouMean(const QString &word, const QStringList &known)
    {
        const QString meant = platform::nearestWord(word, known);
        return meant.isEmpty() ? meant : QStringLiteral("; did you mean '%1'?").arg(meant);
    }

    void checkGlobal(const QString &name, LuaPlace place)
    {
        if (m_definesAnything || m_globals.contains(name) || m_own.contains(name) ||
            name == QLatin1String("_ENV"))
            return;
        const QString elsewhere = m_known.elsewhere.value(name);
        m_script.add(place,
                     elsewhere.isEmpty()
                         ? QStringLiteral("'%1' is not defined%2").arg(name, didYouMean(name, m_nearer))
                         : QStringLiteral("'%1' is there only in %2").arg(name, elsewhere));
    }

    /// "string.fromat", also by way of a local or _G.
    void checkField(const LuaExpression &index)
    {
        // Where it stands for something else, that is looked at in its own place.
        const auto name =
            &m_script.values().behind(index) == &index ? m_script.values().nameBehind(index) : std::nullopt;
        if (!name)
            return;
        const qsizetype dot = name->lastIndexOf(QLatin1Char('.'));
        if (dot < 0) {
            checkGlobal(*name, index.place);
            return;
        }
        const QString table = name->left(dot);
        const QString field = name->mid(dot + 1);
        if (m_own.contains(*name) || m_own.contains(table) || !m_fields.contains(table))
            return;
        if (m_known.library.refused.contains(*name))
            refuse(index.place, *name);
        else if (!m_fields.value(table).contains(field))
            m_script.add(index.place, QStringLiteral("%1 has no '%2'%3")
                                          .arg(table, field, didYouMean(field, m_fields.value(table))));
    }

    /// ("%d"):fromat(), io.stdin:read()
    void checkMethod(const LuaExpression &call)
    {
        const QString method = QString::fromUtf8(call.text);
        const auto object = m_script.values().nameBehind(*call.parts[0]);
        if (object == QStringLiteral("io.stdin") && m_known.library.refusedMethodsOfInput.contains(method))
            refuse(call.place, QStringLiteral("io.stdin:") + method);
        const platform::Value value = m_script.values().valueOf(*call.parts[0]);
        const QString strings = QStringLiteral("string");
        if (value.metaType() != QMetaType::fromType<QString>() || m_own.contains(strings) ||
            m_own.contains(strings + QLatin1Char('.') + method) || m_fields.value(strings).contains(method))
            return;
        m_script.add(
            call.place,
            QStringLiteral("a text has no '%1'%2").arg(method, didYouMean(method, m_fields.value(strings))));
    }

    LuaScript &m_script;
    const KnownNames &m_known;
    const QSet<QString> &m_own;
    bool m_definesAnything;
    QSet<QString> m_globals;
    QHash<QString, QStringList> m_fields;
    QStringList m_nearer;
};

} // namespace

QString adviceFor(const QString &allowance)
{
    return QString::asprintf(KVKLuaAdvice, qUtf8Printable(allowance));
}

void checkNames(LuaScript &script, const KnownNames &known, const QSet<QString> &own, bool definesAnything)
{
    Checker(script, known, own, definesAnything).check();
}

} // namespace station
