#pragma once

#include "platform/TextField.h"
#include "platform/Value.h"

namespace interactive {

/// Posted on the default notification centre when an input field is clicked, with the field as its object.
inline const QString TextFieldMouseDownNotification = QStringLiteral("TextFieldMouseDownNotification");

/// The input field of a slot. It remembers which system and panel it belongs to, and turns every press of the
/// mouse into a notification: the press neither places the cursor nor takes the focus, the observer decides
/// what it does; F2 in a read-only field does the same. When the field gets the focus it is scrolled into
/// sight.
///
/// Thread: the main thread.
class MouseTrackedTextField : public platform::TextField
{
    Q_OBJECT
public:
    using platform::TextField::TextField;

    /// The system whose input the field takes; nothing until it is set.
    [[nodiscard]] platform::Value systemIndex() const { return m_systemIndex; }
    void setSystemIndex(const platform::Value &index) { m_systemIndex = index; }
    /// The identifier of the panel that holds the field; null until it is set.
    [[nodiscard]] platform::Identifier parentIdentifier() const { return m_parentIdentifier; }
    void setParentIdentifier(const platform::Identifier &identifier) { m_parentIdentifier = identifier; }

    bool becomeFirstResponder() override;
    /// Scrolls a field into sight, and with it the box that says whose it is, as far as both fit. Null is
    /// left alone.
    static void bringIntoSight(const platform::View *field);

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void comeIntoSight() override;
    [[nodiscard]] bool editorTakesMouse() const override { return false; }

private:
    platform::Value m_systemIndex;
    platform::Identifier m_parentIdentifier;
};

} // namespace interactive
