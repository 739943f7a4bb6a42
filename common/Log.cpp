#include "common/Log.h"

#include "platform/View.h"

#include <QStringBuilder>
#include <QStringList>

#include <string_view>

namespace interactive::log {

QString describe(const platform::View *view)
{
    if (!view)
        return QStringLiteral("(null)");
    // The log shows a class by its name alone; in which namespace it lives is of no use to who reads it.
    const std::string_view qualified = view->metaObject()->className();
    const std::string_view name = qualified.substr(qualified.rfind(':') + 1);
    const platform::Identifier identifier = view->identifier();
    const QString text = identifier.isNull() ? QStringLiteral("(null)") : identifier.text();
    // Put together in one go: a press describes all fields that stand.
    return QLatin1Char('<') % QLatin1String(name.data(), static_cast<qsizetype>(name.size())) %
           QLatin1String(": ") % text % QLatin1Char('>');
}

QString describe(const QList<platform::View *> &views)
{
    QStringList texts;
    for (const platform::View *view : views)
        texts.append(describe(view));
    return QStringLiteral("(%1)").arg(texts.join(QStringLiteral(", ")));
}

} // namespace interactive::log
