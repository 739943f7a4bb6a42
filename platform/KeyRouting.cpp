#include "platform/KeyRouting.h"

#include "platform/KeyClock.h"
#include "platform/TextField.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QSet>
#include <QWidget>

namespace platform::keys {

namespace {

constexpr char16_t Blank = u' ';

/// Notes when the last character came, and to which window.
class Watch : public QObject
{
public:
    using QObject::QObject;

    [[nodiscard]] bool followsCharacter(const QWidget &receiver, const QKeyEvent &event) const
    {
        if (!m_window || m_window != receiver.window())
            return false;
        const KeyClock &clock = KeyClock::current();
        if (clock.received() - m_received <= ScannerGapMilliseconds)
            return true;
        const quint64 sent = clock.sent(event);
        return m_sent > 0 && sent >= m_sent && sent - m_sent <= quint64{ScannerGapMilliseconds};
    }

protected:
    /// A key passes here for each view it reaches, up to the window; to note it again changes nothing.
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress && watched->isWidgetType())
            note(*static_cast<QWidget *>(watched), *static_cast<QKeyEvent *>(event));
        return QObject::eventFilter(watched, event);
    }

private:
    void note(const QWidget &receiver, const QKeyEvent &event)
    {
        if (!isCharacter(event) || (event.text() == QChar(Blank) && !followsCharacter(receiver, event)))
            return;
        m_window = receiver.window();
        m_received = KeyClock::current().received();
        m_sent = KeyClock::current().sent(event);
    }

    QPointer<QWidget> m_window;
    qint64 m_received = 0;
    quint64 m_sent = 0;
};

QPointer<Watch> &currentWatch()
{
    static QPointer<Watch> watch;
    return watch;
}

/// The editable field that took the focus, or null.
TextField *focusedField(const View &view)
{
    QSet<const View *> asked{&view};
    for (View *next = view.nextResponder(); next && !asked.contains(next); next = next->nextResponder()) {
        asked.insert(next);
        auto *field = qobject_cast<TextField *>(next);
        if (field && field->isEditable() && field->becomeFirstResponder())
            return field;
    }
    return nullptr;
}

} // namespace

bool isReturn(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool isTab(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Tab &&
           !(event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier));
}

bool isCharacter(const QKeyEvent &event)
{
    const QString text = event.text();
    if (text == QChar(GroupSeparator))
        return true;
    if (event.modifiers().testFlag(Qt::ControlModifier) && !event.modifiers().testFlag(Qt::AltModifier))
        return false;
    const QList<uint> characters = text.toUcs4();
    return !characters.isEmpty() && QChar::isPrint(characters.front());
}

void watch()
{
    QPointer<Watch> &watch = currentWatch();
    if (watch)
        return;
    // Goes with the application.
    watch = new Watch(QCoreApplication::instance());
    QCoreApplication::instance()->installEventFilter(watch);
}

bool isScanners(const QWidget &receiver, const QKeyEvent &event)
{
    const QPointer<Watch> &watch = currentWatch();
    return watch && watch->followsCharacter(receiver, event);
}

bool handOn(const View &view, QKeyEvent &event)
{
    TextField *field = focusedField(view);
    if (!field) {
        event.ignore();
        return false;
    }
    QCoreApplication::sendEvent(field->focusTarget(), &event);
    event.accept();
    return true;
}

} // namespace platform::keys
