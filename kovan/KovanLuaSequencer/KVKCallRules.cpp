#include "kovan/KovanLuaSequencer/KVKCallRules.h"

QString KVKProblemOfCount(const KVKBoundFunction &function, int given)
{
    const auto wanted = static_cast<int>(function.arguments().size());
    if (given <= wanted)
        return {};
    return QStringLiteral("%1: takes %2 arguments, got %3")
        .arg(function.name(), QString::number(wanted), QString::number(given));
}

QString KVKProblemOfType(const KVKBoundFunction &function, int position, const QString &luaType)
{
    const bool wantsNumber =
        function.arguments()[static_cast<std::size_t>(position - 1)] == KVKArgType::NSNumber;
    if (luaType == (wantsNumber ? QLatin1String("number") : QLatin1String("table")))
        return {};
    return QStringLiteral("%1 must be %2, not %3")
        .arg(KVKNameOfArgument(function, position),
             wantsNumber ? QStringLiteral("a number") : QStringLiteral("a table"), luaType);
}

QString KVKNameOfArgument(const KVKBoundFunction &function, int position)
{
    return QStringLiteral("%1: argument %2").arg(function.name(), QString::number(position));
}

QString KVKProblemOfValue(const QString &path, const QString &luaType)
{
    return QStringLiteral("%1 is a %2, which cannot be passed on").arg(path, luaType);
}
