#include "station/operator/ViewTree.h"

#include "platform/Box.h"
#include "platform/Button.h"
#include "platform/TextField.h"
#include "station/operator/Panels.h"

namespace station {
namespace {

using platform::Array;
using platform::Box;
using platform::Button;
using platform::Color;
using platform::Control;
using platform::Dictionary;
using platform::TextField;
using platform::View;

Dictionary colorFields(const Color &color)
{
    return {{QStringLiteral("red"), color.red},
            {QStringLiteral("green"), color.green},
            {QStringLiteral("blue"), color.blue},
            {QStringLiteral("alpha"), color.alpha}};
}

Dictionary frameFields(const platform::Rect &frame)
{
    return {{QStringLiteral("x"), frame.x()},
            {QStringLiteral("y"), frame.y()},
            {QStringLiteral("width"), frame.width()},
            {QStringLiteral("height"), frame.height()}};
}

void addViewFields(Dictionary &fields, const View *view)
{
    fields.insert(QStringLiteral("class"), className(view));
    if (!view->identifier().isNull())
        fields.insert(QStringLiteral("identifier"), view->identifier().text());
    fields.insert(QStringLiteral("frame"), frameFields(view->frame()));
    fields.insert(QStringLiteral("tag"), view->tag());
    fields.insert(QStringLiteral("hidden"), view->isHidden());
    fields.insert(QStringLiteral("enabled"), view->isEnabled());
    fields.insert(QStringLiteral("focused"), view->isFirstResponder());
    if (view->layerBackgroundColor())
        fields.insert(QStringLiteral("background"), colorFields(*view->layerBackgroundColor()));
}

void addControlFields(Dictionary &fields, const Control *control)
{
    fields.insert(QStringLiteral("fontSize"), control->font().size);
    fields.insert(QStringLiteral("bold"), control->font().bold);
}

void addTextFields(Dictionary &fields, const TextField *field)
{
    fields.insert(QStringLiteral("text"), field->stringValue());
    fields.insert(QStringLiteral("editable"), field->isEditable());
    fields.insert(QStringLiteral("textColor"), colorFields(field->textColor()));
    fields.insert(QStringLiteral("alignment"), static_cast<int>(field->alignment()));
    if (field->drawsBackground())
        fields.insert(QStringLiteral("background"), colorFields(field->backgroundColor()));
}

void addButtonFields(Dictionary &fields, const Button *button)
{
    fields.insert(QStringLiteral("text"), button->title());
    if (button->buttonType() == Button::Type::Switch)
        fields.insert(QStringLiteral("state"), static_cast<int>(button->state()));
}

Array childTrees(const View *view)
{
    Array children;
    for (const View *child : view->subviews())
        children.append(viewTree(child));
    return children;
}

} // namespace

Dictionary viewTree(const View *view)
{
    Dictionary fields;
    addViewFields(fields, view);
    if (const auto *control = qobject_cast<const Control *>(view))
        addControlFields(fields, control);
    if (const auto *field = qobject_cast<const TextField *>(view))
        addTextFields(fields, field);
    if (const auto *button = qobject_cast<const Button *>(view))
        addButtonFields(fields, button);
    if (const auto *box = qobject_cast<const Box *>(view))
        fields.insert(QStringLiteral("background"), colorFields(box->fillColor()));
    fields.insert(QStringLiteral("children"), childTrees(view));
    return fields;
}

View *firstWithIdentifier(View *root, const QString &identifier)
{
    for (View *view : treeOrder(root)) {
        if (!view->identifier().isNull() && view->identifier().text() == identifier)
            return view;
    }
    return nullptr;
}

QString className(const QObject *object)
{
    const QString name = QString::fromLatin1(object->metaObject()->className());
    // Without its namespace, as the log names it.
    return name.mid(name.lastIndexOf(QLatin1Char(':')) + 1);
}

QString widgetText(const QWidget &widget)
{
    for (const QWidget *around = &widget; around; around = around->parentWidget()) {
        const auto *view = qobject_cast<const View *>(around);
        if (view && view->identifier().isNull())
            return className(view);
        if (view)
            return QStringLiteral("%1 \"%2\"").arg(className(view), view->identifier().text());
    }
    return className(&widget);
}

} // namespace station
