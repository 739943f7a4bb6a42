#include "common/Log.h"

#include "platform/View.h"

#include <QStringList>

namespace interactive::log {

QString describe(const platform::View *view)
{
    if (!view)
        return QStringLiteral("(null)");
    const QString qualified = QString::fromLatin1(view->metaObject()->className());
    // The log shows a class by its name alone; in which namespace it lives is of no use to who reads it.
    const QString name = qualified.mid(qualified.lastIndexOf(QLatin1Char(':')) + 1);
    const platform::Identifier identifier = view->identifier();
    return QStringLiteral("<%1: %2>")
        .arg(name, identifier.isNull() ? QStringLiteral("(null)") : identifier.text());
}

QString describe(const QList<platform::View *> &views)
{
    QStringList texts;
    for (const platform::View *view : views)
        texts.append(describe(view));
    return QStringLiteral("(%1)").arg(texts.join(QStringLiteral(", ")));
}

} // namespace interactive::log
