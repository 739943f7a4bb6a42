#include "station/operator/ClickTarget.h"

#include "platform/Button.h"
#include "platform/TextField.h"
#include "station/operator/OperatorFailure.h"
#include "station/operator/Panels.h"

#include <QRegularExpression>

#include <algorithm>

namespace station {
namespace {

using platform::Button;
using platform::Control;
using platform::TextField;
using platform::View;

/// The first that can be seen, otherwise the first; null when there is none.
View *best(const QList<View *> &views)
{
    const auto visible =
        std::find_if(views.begin(), views.end(), [](View *view) { return view->isVisible(); });
    if (visible != views.end())
        return *visible;
    return views.isEmpty() ? nullptr : views.first();
}

View *withIdentifier(View *root, const QString &identifier)
{
    QList<View *> controls;
    QList<View *> others;
    for (View *view : treeOrder(root)) {
        if (view->identifier().isNull() || view->identifier().text() != identifier)
            continue;
        (qobject_cast<Control *>(view) ? controls : others).append(view);
    }
    View *control = best(controls);
    View *other = best(others);
    return control && (control->isVisible() || !other || !other->isVisible()) ? control : other;
}

View *withTitle(View *panel, const QString &title)
{
    QList<View *> buttons;
    for (View *view : treeOrder(panel)) {
        const auto *button = qobject_cast<Button *>(view);
        if (button && button->title() == title)
            buttons.append(view);
    }
    return best(buttons);
}

View *fieldOf(View *panel, const QString &key, const QString &slot)
{
    QList<View *> fields;
    for (View *view : treeOrder(panel)) {
        if (qobject_cast<TextField *>(view) && view->identifier().text() == key + QLatin1Char('-') + slot)
            fields.append(view);
    }
    return best(fields);
}

View *switchOf(View *panel, const QString &key, const QString &slot)
{
    const QRegularExpression identifier(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(key) + QLatin1String("-[0-9]+-") + QRegularExpression::escape(slot)));
    QList<View *> switches;
    for (View *view : treeOrder(panel)) {
        const auto *button = qobject_cast<Button *>(view);
        if (button && button->buttonType() == Button::Type::Switch &&
            identifier.match(view->identifier().text()).hasMatch())
            switches.append(view);
    }
    return best(switches);
}

View *inPanel(View *panel, const ClickTarget &target)
{
    switch (target.kind) {
    case ClickTarget::Kind::Title:
        return withTitle(panel, target.name);
    case ClickTarget::Kind::Switch:
        return switchOf(panel, target.panel, target.name);
    case ClickTarget::Kind::Slot:
        if (View *field = fieldOf(panel, target.panel, target.name))
            return field;
        return switchOf(panel, target.panel, target.name);
    case ClickTarget::Kind::Identifier:
        break;
    }
    return nullptr;
}

/// The slot of a switch's or field's identifier ("G1-101-S2", "G1-S2"); empty when it is no such.
QString slotIn(const QString &identifier, const QString &key, bool withNumber)
{
    const QRegularExpression form(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(key) + QLatin1String(withNumber ? "-[0-9]+-(.+)" : "-(.+)")));
    return form.match(identifier).captured(1);
}

/// The forms in which a script could name the view, the most telling first.
QList<ClickTarget> namesOf(View *view)
{
    using Kind = ClickTarget::Kind;
    const View *panel = panelAround(view->superview());
    const QString key = panel ? panel->identifier().text() : QString();
    const QString identifier = view->identifier().text();
    const ClickTarget byIdentifier{Kind::Identifier, {}, identifier};
    if (!panel)
        return {byIdentifier};
    QList<ClickTarget> names;
    const auto *button = qobject_cast<Button *>(view);
    if (button && button->buttonType() == Button::Type::Switch)
        names.append({Kind::Switch, key, slotIn(identifier, key, true)});
    else if (button)
        names.append({Kind::Title, key, button->title()});
    // One that says nothing of its panel ("Pass") means another view as soon as another panel is open.
    if (identifier.startsWith(key + QLatin1Char('-')))
        names.append(byIdentifier);
    if (!button)
        names.append({Kind::Slot, key, slotIn(identifier, key, false)});
    return names;
}

bool leadsTo(View *root, const ClickTarget &target, const View *view)
{
    try {
        return !target.name.isEmpty() && findTarget(root, target) == view;
    } catch (const OperatorFailure &) {
        return false;
    }
}

QList<View *> panelsOf(View *root, const ClickTarget &target)
{
    if (View *visible = visiblePanel(root, target.panel))
        return {visible};
    return panelsWithKey(root, target.panel);
}

} // namespace

QString ClickTarget::description() const
{
    const QString quoted = QLatin1Char('"') + name + QLatin1Char('"');
    const QString of = QStringLiteral(" of panel \"%1\"").arg(panel);
    switch (kind) {
    case Kind::Title:
        return QLatin1String("button ") + quoted + of;
    case Kind::Slot:
        return QLatin1String("field or switch of slot ") + quoted + of;
    case Kind::Switch:
        return QLatin1String("switch of slot ") + quoted + of;
    case Kind::Identifier:
        break;
    }
    return QLatin1String("view ") + quoted;
}

View *findTarget(View *root, const ClickTarget &target)
{
    if (target.kind == ClickTarget::Kind::Identifier) {
        if (View *view = withIdentifier(root, target.name))
            return view;
        throw OperatorFailure(QStringLiteral("there is no %1").arg(target.description()));
    }
    const QList<View *> panels = panelsOf(root, target);
    if (panels.isEmpty())
        throw OperatorFailure(QStringLiteral("there is no panel \"%1\" for the %2; visible panels: %3")
                                  .arg(target.panel, target.description(), visiblePanelsText(root)));
    if (View *view = inPanel(panels.first(), target))
        return view;
    throw OperatorFailure(QStringLiteral("there is no %1").arg(target.description()));
}

std::optional<ClickTarget> targetOf(View *root, View *view)
{
    for (const ClickTarget &name : namesOf(view)) {
        if (leadsTo(root, name, view))
            return name;
    }
    return std::nullopt;
}

} // namespace station
