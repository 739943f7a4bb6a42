#include "common/Log.h"

#include "platform/View.h"

#include <QStringList>

namespace interactive::log {

namespace {

QString className(const platform::View *view)
{
    const QString name = QString::fromLatin1(view->metaObject()->className());
    // The log shows a class by its name alone; in which namespace it lives is of no use to who reads it.
    return name.mid(name.lastIndexOf(QLatin1Char(':')) + 1);
}

} // namespace

QString describe(const platform::View *view)
{
    if (!view)
        return QStringLiteral("(null)");
    const platform::Identifier identifier = view->identifier();
    return QStringLiteral("<%1: %2>")
        .arg(className(view), identifier.isNull() ? QStringLiteral("(null)") : identifier.text());
}

QString describe(const QList<platform::View *> &views)
{
    QStringList texts;
    for (const platform::View *view : views)
        texts.append(describe(view));
    return QStringLiteral("(%1)").arg(texts.join(QStringLiteral(", ")));
}

} // namespace interactive::log
