#include "platform/KeyRouting.h"

#include "platform/KeyClock.h"
#include "platform/TextField.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPointer>
#include <QSet>
#include <QWidget>

namespace platform::keys {

namespace {

constexpr char16_t Blank = u' ';

/// When a key came.
struct Moment
{
    qint64 received;
    quint64 sent;

    static Moment of(const QKeyEvent &event)
    {
        return {KeyClock::current().received(), KeyClock::current().sent(event)};
    }
    /// At most the scanner's gap lies between this moment and a later one.
    [[nodiscard]] bool isJustBefore(const Moment &later) const
    {
        if (later.received - received <= ScannerGapMilliseconds)
            return true;
        return sent > 0 && later.sent >= sent && later.sent - sent <= quint64{ScannerGapMilliseconds};
    }
};

bool hasControlModifier(const QKeyEvent &event)
{
    // Control and Alt together are the third level of many keyboards, which writes characters.
    return event.modifiers().testFlag(Qt::ControlModifier) && !event.modifiers().testFlag(Qt::AltModifier);
}

/// The control character that the key would write, if any; not GS, nor what works as a key.
std::optional<char16_t> controlOf(const QKeyEvent &event)
{
    const QString text = event.text();
    if (text.isEmpty() || text.front().category() != QChar::Other_Control || text.front() == GroupSeparator)
        return std::nullopt;
    return keys::worksAsKey(event) ? std::nullopt : std::optional(text.front().unicode());
}

/// A key that writes a control character and means a command when a person types it.
bool isCommand(const QKeyEvent &event)
{
    return controlOf(event) && (event.key() == Qt::Key_Escape || hasControlModifier(event));
}

/// Notes when the last character came, and to which window, and what else belongs to the same entry.
class Watch : public QObject
{
public:
    using QObject::QObject;

    [[nodiscard]] bool followsCharacter(const QWidget &receiver, const QKeyEvent &event) const
    {
        return isOf(receiver) && m_character && m_character->isJustBefore(Moment::of(event));
    }
    [[nodiscard]] bool isWithinEntry(const QWidget &receiver, const QKeyEvent &event) const
    {
        return m_isWithinEntry && followsCharacter(receiver, event);
    }
    [[nodiscard]] std::optional<char16_t> commandBefore(const QWidget &receiver, const QKeyEvent &event) const
    {
        if (!isOf(receiver) || !m_command || !m_command->isJustBefore(Moment::of(event)))
            return std::nullopt;
        return m_commandCharacter;
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
    [[nodiscard]] bool isOf(const QWidget &receiver) const
    {
        return m_window && m_window == receiver.window();
    }

    void note(const QWidget &receiver, const QKeyEvent &event)
    {
        if (!isOf(receiver)) {
            m_window = receiver.window();
            m_character.reset();
            m_command.reset();
        }
        if (isReturn(event)) {
            m_isWithinEntry = false;
            m_command.reset();
        } else if (isCommand(event) && !event.matches(QKeySequence::SelectAll)) {
            // To select all and type on replaces a text; that is nothing that an entry could hold.
            m_command = Moment::of(event);
            m_commandCharacter = *controlOf(event);
        } else if (isCharacter(event) &&
                   (event.text() != QChar(Blank) || followsCharacter(receiver, event))) {
            m_character = Moment::of(event);
            m_isWithinEntry = true;
        }
    }

    QPointer<QWidget> m_window;
    std::optional<Moment> m_character;
    std::optional<Moment> m_command;
    char16_t m_commandCharacter = 0;
    bool m_isWithinEntry = false;
};

QPointer<Watch> &currentWatch()
{
    static QPointer<Watch> watch;
    return watch;
}

/// The editable field that took the focus, or null.
TextField *focusedField(const View &view)
{
    // Responders are set one by one, and may have been set in a circle.
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

bool worksAsKey(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        return true;
    default:
        return false;
    }
}

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
    if (hasControlModifier(event))
        return false;
    // By whole characters: half of one that takes two units is not printable by itself.
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

std::optional<char16_t> scannedControl(const QWidget &receiver, const QKeyEvent &event)
{
    const QPointer<Watch> &watch = currentWatch();
    if (isCharacter(event))
        return watch ? watch->commandBefore(receiver, event) : std::nullopt;
    if (isCommand(event) && !(watch && watch->isWithinEntry(receiver, event)))
        return std::nullopt;
    return controlOf(event);
}

bool isText(const QKeyEvent &event)
{
    return isCharacter(event) || (controlOf(event) && !isCommand(event));
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
