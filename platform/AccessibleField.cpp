#include "platform/AccessibleField.h"

#include "platform/TextField.h"

#include <QAccessibleWidget>

namespace platform::accessible {

namespace {

class AccessibleField : public QAccessibleWidget
{
public:
    explicit AccessibleField(TextField *field)
        : QAccessibleWidget(field)
    {}

    [[nodiscard]] QAccessible::Role role() const override
    {
        if (!field().isEditable())
            return QAccessible::StaticText;
        // Around the editor, which is told as what takes the text.
        return field().choices().isEmpty() ? QAccessible::Client : QAccessible::ComboBox;
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        const bool isLabel = !field().isEditable() && field().accessibleName().isEmpty();
        if (kind == QAccessible::Value || (kind == QAccessible::Name && isLabel))
            return field().stringValue();
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
    [[nodiscard]] TextField &field() const { return *static_cast<TextField *>(widget()); }
};

/// Asked for each class of an object, from its own upwards.
QAccessibleInterface *made(const QString &className, QObject *object)
{
    if (className != QLatin1String(TextField::staticMetaObject.className()))
        return nullptr;
    return new AccessibleField(static_cast<TextField *>(object)); // the registry of interfaces owns it
}

} // namespace

void describeFields()
{
    static const bool once = [] {
        QAccessible::installFactory(made);
        return true;
    }();
    static_cast<void>(once);
}

} // namespace platform::accessible
