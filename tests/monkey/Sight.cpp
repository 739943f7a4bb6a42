#include "tests/monkey/Sight.h"

#include "station/operator/ViewTree.h"
#include "tests/support/PluginFixture.h"

#include <QWidget>

using platform::Button;
using platform::TextField;
using platform::View;

namespace monkey {
namespace {

QString partBefore(const QString &identifier)
{
    return identifier.section(QLatin1Char('-'), 0, 0);
}

QString partAfter(const QString &identifier)
{
    return identifier.section(QLatin1Char('-'), 1);
}

bool isAnswering(const Button *button)
{
    return button->actionSelector() == "confirmBtnClicked:";
}

void look(SeenPanel &panel)
{
    const QString own = panel.key + QLatin1Char('-');
    for (View *view : testsupport::descendants(panel.view)) {
        const QString identifier = view->identifier().text();
        auto *button = qobject_cast<Button *>(view);
        auto *field = qobject_cast<TextField *>(view);
        if (button && isAnswering(button)) {
            panel.buttons.append(button);
        } else if (button && button->actionSelector() == "switchBtnClicked:") {
            panel.switches.append(
                {button, identifier.section(QLatin1Char('-'), 2), button->state() != Button::Off});
        } else if (field && identifier.startsWith(own) && identifier != own + QLatin1String("StatusLine")) {
            const SeenField seen{field, partAfter(identifier), field->stringValue()};
            if (field->isEditable())
                panel.entry = seen;
            else
                panel.shown.append(seen);
        }
    }
}

} // namespace

bool SeenPanel::isSwitchedOn(const QString &slot) const
{
    for (const SeenSwitch &candidate : switches) {
        if (candidate.slot == slot)
            return candidate.isOn;
    }
    return false;
}

QList<SeenField> SeenPanel::visibleFields() const
{
    QList<SeenField> fields = shown;
    if (entry)
        fields.append(*entry);
    fields.removeIf([](const SeenField &field) { return !field.field->isVisible(); });
    return fields;
}

QMap<QString, QString> SeenPanel::texts() const
{
    QMap<QString, QString> texts;
    for (const SeenField &field : shown)
        texts.insert(field.label, field.text);
    if (shown.isEmpty() && entry)
        texts.insert(entry->label, entry->text);
    return texts;
}

QList<SeenPanel> panelsIn(View *root)
{
    QList<SeenPanel> panels;
    for (View *view : testsupport::descendants(root)) {
        auto *button = qobject_cast<Button *>(view);
        if (!button || !isAnswering(button) || !button->superview())
            continue;
        View *holder = button->superview();
        if (std::any_of(panels.cbegin(), panels.cend(),
                        [&](const SeenPanel &seen) { return seen.view == holder; }))
            continue;
        SeenPanel panel;
        panel.key = partBefore(holder->identifier().text());
        panel.view = holder;
        panel.isVisible = holder->isVisible();
        look(panel);
        panels.append(panel);
    }
    return panels;
}

const SeenPanel *panelWithKey(const QList<SeenPanel> &panels, const QString &key)
{
    for (const SeenPanel &panel : panels) {
        if (panel.key == key)
            return &panel;
    }
    return nullptr;
}

TextField *loopFieldIn(View *root)
{
    for (View *view : root->subviews()) {
        if (view->identifier().text() == QLatin1String("Loop"))
            return qobject_cast<TextField *>(view);
    }
    return nullptr;
}

Button *groupButtonIn(View *root, const QString &group)
{
    for (View *view : testsupport::descendants(root)) {
        auto *button = qobject_cast<Button *>(view);
        if (button && button->actionSelector() == "groupBtnClicked:" && button->identifier().text() == group)
            return button;
    }
    return nullptr;
}

Focus focusIn(View *root)
{
    QWidget *widget = root->window()->focusWidget();
    if (!widget || widget == root->window())
        return {};
    Focus focus;
    focus.widget = station::widgetText(*widget);
    if (const TextField *loop = loopFieldIn(root); loop && loop->isAncestorOf(widget)) {
        focus.place = Focus::Place::Loop;
        return focus;
    }
    focus.place = Focus::Place::Elsewhere;
    for (const SeenPanel &panel : panelsIn(root)) {
        if (!panel.view->isAncestorOf(widget))
            continue;
        focus.place = Focus::Place::Panel;
        focus.panelKey = panel.key;
        focus.isInEntry = panel.entry && panel.entry->field->isAncestorOf(widget);
    }
    return focus;
}

} // namespace monkey
