#include "tests/support/AccessibleWalk.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QMetaEnum>
#include <QWidget>

#include <functional>

namespace testsupport {

namespace {

using Visit = std::function<void(QAccessibleInterface &)>;

void walk(QAccessibleInterface *interface, const Visit &visit)
{
    if (!interface || !interface->isValid() || interface->state().invisible)
        return;
    visit(*interface);
    for (int i = 0; i < interface->childCount(); ++i)
        walk(interface->child(i), visit);
}

QString roleOf(QAccessibleInterface &interface)
{
    return qAccessibleRoleString(interface.role());
}

bool bearsText(QAccessibleInterface &interface)
{
    // A widget's own word, so that one whose role hides its text is found.
    if (const auto *label = qobject_cast<QLabel *>(interface.object()))
        return !label->text().isEmpty() || !label->pixmap().isNull();
    if (const auto *button = qobject_cast<QAbstractButton *>(interface.object()))
        return !button->text().isEmpty();
    return interface.textInterface() || !interface.text(QAccessible::Value).isEmpty();
}

bool isTold(QAccessibleInterface &interface)
{
    return interface.role() != QAccessible::Client && interface.role() != QAccessible::NoRole &&
           !interface.text(QAccessible::Name).trimmed().isEmpty();
}

} // namespace

QString spokenName(QObject *object)
{
    QAccessibleInterface *interface = object ? QAccessible::queryAccessibleInterface(object) : nullptr;
    return interface ? interface->text(QAccessible::Name) : QString();
}

QStringList accessibilityFaults(QWidget *top)
{
    QStringList faults;
    walk(QAccessible::queryAccessibleInterface(top), [&faults](QAccessibleInterface &interface) {
        if ((!interface.state().focusable && !bearsText(interface)) || isTold(interface))
            return;
        const QObject *object = interface.object();
        faults.append(QStringLiteral("%1 \"%2\", role %3, name \"%4\", value \"%5\"")
                          .arg(object ? object->metaObject()->className() : "(no object)",
                               object ? object->objectName() : QString(), roleOf(interface),
                               interface.text(QAccessible::Name), interface.text(QAccessible::Value)));
    });
    return faults;
}

QStringList spokenIn(QWidget *top)
{
    QStringList spoken;
    walk(QAccessible::queryAccessibleInterface(top), [&spoken](QAccessibleInterface &interface) {
        if (!interface.text(QAccessible::Name).isEmpty())
            spoken.append(roleOf(interface) + QStringLiteral(": ") + interface.text(QAccessible::Name));
    });
    return spoken;
}

} // namespace testsupport
