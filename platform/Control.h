#pragma once

#include "platform/Font.h"
#include "platform/View.h"

#include <functional>

namespace platform {

/// A view that a person operates: it tells its target when it was used.
///
/// Thread: the main thread.
class Control : public View
{
    Q_OBJECT
public:
    /// Receives the sender; called on the main thread.
    using Action = std::function<void(View *sender)>;

    using View::View;

    /// Sets whom the control tells. The selector is the action's platform name ("checkInput:"), by which
    /// tools and tests recognise it. The action is not called once the target is gone. Requires: target is
    /// not null.
    void setTarget(QObject *target, const char *selector, Action action);
    /// The action's platform name; empty when the control has none.
    [[nodiscard]] QByteArray actionSelector() const { return m_selector; }
    [[nodiscard]] QObject *target() const { return m_target; }
    /// Tells the target, as an operation by a person would; nothing without one.
    void sendAction();

    [[nodiscard]] Font font() const { return m_font; }
    void setFont(const Font &font);

protected:
    virtual void fontChanged() {}
    /// Whether the event tells that Tab, forwards or back, has come to where it is received.
    [[nodiscard]] static bool isTabbedTo(const QEvent &event);

private:
    QPointer<QObject> m_target;
    QByteArray m_selector;
    Action m_action;
    Font m_font;
};

} // namespace platform
