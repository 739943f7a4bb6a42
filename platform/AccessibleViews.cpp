#include "platform/AccessibleViews.h"

#include "platform/TextField.h"

#include <QAccessibleWidget>

namespace platform::accessible {

namespace {

class AccessibleView : public QAccessibleWidget
{
public:
    explicit AccessibleView(View *view)
        : QAccessibleWidget(view)
    {}

    [[nodiscard]] QAccessible::Role role() const override
    {
        const auto &view = *static_cast<const View *>(widget());
        if (view.spokenRole() != QAccessible::NoRole)
            return view.spokenRole();
        // One without a name only arranges others.
        return view.accessibleName().isEmpty() ? QAccessible::Pane : QAccessible::Grouping;
    }
};

class AccessibleField : public QAccessibleWidget
{
public:
    explicit AccessibleField(TextField *field)
        : QAccessibleWidget(field)
    {}

    [[nodiscard]] QAccessible::Role role() const override
    {
        if (field().spokenRole() != QAccessible::NoRole)
            return field().spokenRole();
        if (!field().isEditable())
            return QAccessible::StaticText;
        // Around the editor, which is told as what takes the text.
        return field().choices().isEmpty() ? QAccessible::Grouping : QAccessible::ComboBox;
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value)
            return field().stringValue();
        if (kind == QAccessible::Name && !field().isEditable())
            return nameWithText();
        return QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (role() == QAccessible::ComboBox) {
            state.editable = true;
            state.expandable = true;
            state.expanded = field().isListOpen();
            state.collapsed = !state.expanded;
        }
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (role() == QAccessible::ComboBox)
            names.prepend(showMenuAction());
        return names;
    }
    void doAction(const QString &name) override
    {
        if (name != showMenuAction()) {
            QAccessibleWidget::doAction(name);
        } else if (field().becomeFirstResponder()) {
            field().toggleList();
        }
    }

private:
    /// A text that cannot be changed is read as a part of the name.
    [[nodiscard]] QString nameWithText() const
    {
        const QString name = field().accessibleName();
        const QString text = field().stringValue();
        if (name.isEmpty() || text.isEmpty())
            return name + text;
        return QStringLiteral("%1: %2").arg(name, text);
    }
    [[nodiscard]] TextField &field() const { return *static_cast<TextField *>(widget()); }
};

/// Asked for each class of an object, from its own upwards.
QAccessibleInterface *made(const QString &className, QObject *object)
{
    // The registry of interfaces owns what is made.
    if (className == QLatin1String(TextField::staticMetaObject.className()))
        return new AccessibleField(static_cast<TextField *>(object));
    if (className == QLatin1String(View::staticMetaObject.className()))
        return new AccessibleView(static_cast<View *>(object));
    return nullptr;
}

} // namespace

void describeViews()
{
    static const bool once = [] {
        QAccessible::installFactory(made);
        return true;
    }();
    static_cast<void>(once);
}

} // namespace platform::accessible
