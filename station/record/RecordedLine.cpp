#include "station/record/RecordedLine.h"

#include "station/record/LuaText.h"

#include <cmath>

namespace station::recorded {
namespace {

constexpr int UsualLimit = 60;

QString call(const char *function, const QString &arguments)
{
    return QStringLiteral("operator.%1(%2)").arg(QString::fromLatin1(function), arguments);
}

QString listed(const QString &first, const QString &second)
{
    return first + QLatin1String(", ") + second;
}

QString written(const ClickTarget &target)
{
    const auto inPanel = [&target](const char *name) {
        return QStringLiteral("{ panel = %1, %2 = %3 }")
            .arg(luaText(target.panel), QString::fromLatin1(name), luaText(target.name));
    };
    switch (target.kind) {
    case ClickTarget::Kind::Title:
        return inPanel("title");
    case ClickTarget::Kind::Slot:
        return inPanel("slot");
    case ClickTarget::Kind::Switch:
        return inPanel("switch");
    case ClickTarget::Kind::Identifier:
        break;
    }
    return luaText(target.name);
}

} // namespace

QString limit(double secondsSinceTheLastLine)
{
    if (secondsSinceTheLastLine <= UsualLimit / 2.0)
        return QStringLiteral("limit");
    const double minutes = std::ceil(2.0 * secondsSinceTheLastLine / 60.0);
    return QStringLiteral("%1 * 60").arg(minutes, 0, 'f', 0);
}

QString beginning(const QString &station, const QString &date)
{
    return comment(QStringLiteral("What was done at the station %1 on %2; --operator does it again.")
                       .arg(luaText(station), date)) +
           QStringLiteral("\nlocal limit = %1 -- seconds that a wait may take").arg(UsualLimit);
}

QString comment(const QString &text)
{
    return QLatin1String("-- ") + text.simplified();
}

QString wait(const PanelWait &panel, const QString &limit)
{
    const char *function = panel.until == PanelWait::Until::Shown ? "waitForPanel" : "waitForPanelGone";
    return call(function, listed(luaText(panel.key), limit));
}

QString waitForText(const QString &identifier, const QString &text, const QString &limit)
{
    return call("waitForText", listed(listed(luaText(identifier), luaText(text)), limit));
}

QString waitForRunEnd(const QString &limit)
{
    return call("waitForRunEnd", limit);
}

QString enter(const ClickTarget &field, const QString &text)
{
    return call("enter", listed(written(field), luaText(text)));
}

QString confirm(const ClickTarget &field)
{
    return call("enter", written(field));
}

QString fill(const ClickTarget &field, const QString &text)
{
    return call("fill", listed(written(field), luaText(text)));
}

QString paste(const ClickTarget &field, const QString &text)
{
    return call("paste", listed(written(field), luaText(text)));
}

QString logIn(qsizetype number)
{
    return call("logIn", QString::number(number));
}

QString click(const ClickTarget &target)
{
    return call("click", written(target));
}

QString run()
{
    return call("run", {});
}

QString stop()
{
    return call("stop", {});
}

} // namespace station::recorded
