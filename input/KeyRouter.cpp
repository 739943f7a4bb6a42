#include "input/KeyRouter.h"

#include "input/Entries.h"
#include "input/TabOrder.h"
#include "platform/KeyRouting.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <utility>

#include "common/Messages.h"

namespace interactive {

using platform::TextField;
namespace keys = platform::keys;

namespace {

/// A scanner leaves a few milliseconds between two characters; a person who types without looking leaves less
/// than this too, and means one text by it as well.
constexpr int LongestPauseInAText = 300;

bool isKey(const QEvent &event)
{
    return event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
}

bool isClick(const QEvent &event)
{
    return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonRelease ||
           event.type() == QEvent::MouseButtonDblClick;
}

/// Whether a widget of the host enters text by itself.
bool entersText(const QWidget *widget)
{
    if (const auto *edit = qobject_cast<const QTextEdit *>(widget))
        return !edit->isReadOnly();
    if (const auto *edit = qobject_cast<const QPlainTextEdit *>(widget))
        return !edit->isReadOnly();
    if (const auto *box = qobject_cast<const QComboBox *>(widget))
        return box->isEditable();
    return qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QAbstractSpinBox *>(widget);
}

} // namespace

KeyRouter::KeyRouter(PanelViews &views, Focus &focus)
    : m_views(views)
    , m_focus(focus)
{
    m_strayEnds.setSingleShot(true);
    m_strayEnds.setInterval(LongestPauseInAText);
    connect(&m_strayEnds, &QTimer::timeout, this, &KeyRouter::refuseStray);
    m_sinceCharacter.start();
}

KeyRouter::~KeyRouter() = default;

void KeyRouter::start()
{
    // On the application: keys have to be seen before the widget that has the focus takes them, whosever it
    // is.
    QApplication::instance()->installEventFilter(this);
}

void KeyRouter::release()
{
    if (m_holds == 0 || --m_holds > 0)
        return;
    while (m_holds == 0 && !m_held.empty()) {
        // Taken out before it is delivered: it may be a press, which holds the rest back again.
        const Held held = std::move(m_held.front());
        m_held.pop_front();
        const platform::View *root = m_views.rootView();
        QWidget *receiver = held.clicked;
        if (root && isKey(*held.event)) {
            QWidget *window = root->window();
            receiver = window->focusWidget() ? window->focusWidget() : window;
        }
        if (receiver)
            QCoreApplication::sendEvent(receiver, held.event.get());
    }
}

bool KeyRouter::isOurs(const QObject *watched) const
{
    const auto *widget = qobject_cast<const QWidget *>(watched);
    const platform::View *root = m_views.rootView();
    // While the host shows something else in the panels' place, its keys are its own business.
    return widget && root && root->isVisible() && widget->window() == root->window();
}

bool KeyRouter::eventFilter(QObject *watched, QEvent *event)
{
    if ((!isKey(*event) && !isClick(*event)) || !isOurs(watched))
        return false;
    auto *receiver = static_cast<QWidget *>(watched);
    if (m_holds > 0) {
        // A clone, since the event ends with its delivery.
        m_held.push_back({isKey(*event) ? nullptr : receiver, std::unique_ptr<QEvent>(event->clone())});
        return true;
    }
    // Whoever clicks begins something new.
    if (event->type() == QEvent::MouseButtonPress)
        m_burst.clear();
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &key = *static_cast<QKeyEvent *>(event);
    if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab)
        taborder::renew(m_views);
    return route(receiver, key) || scroll(receiver, key);
}

/// Looks at a key where it arrives first, and once more where nobody below has taken it; true when it goes no
/// further.
bool KeyRouter::route(QWidget *receiver, const QKeyEvent &event)
{
    const QWidget *window = receiver->window();
    const QWidget *focused = window->focusWidget();
    // A key that is not taken comes by again for each widget around.
    const bool isFirst = receiver == (focused ? focused : window);
    const bool nobodyTookIt = receiver == window || receiver == m_views.rootView();
    if (!m_stray.isEmpty() || (isFirst && keys::isCharacter(event) && continuesElsewhere(receiver)))
        return takeAsStray(event);
    const bool isInside = m_views.rootView()->isAncestorOf(receiver);
    // A blank by itself presses the check box or button that has the focus; within a text it is a character.
    const bool space = event.key() == Qt::Key_Space && m_burst.isEmpty();
    if (isFirst && !isInside && !nobodyTookIt && !entersText(receiver) && keys::isCharacter(event) && !space)
        return giveToWaitingField(event) || takeAsStray(event);
    if (nobodyTookIt && keys::isCharacter(event))
        return giveToWaitingField(event) || takeAsStray(event);
    // A control that enters no text hands the character on, and who gets it is asked again.
    if (isFirst && entersText(receiver))
        noteBurst(receiver, event);
    return false;
}

/// More may be open than the window holds, also where nothing takes the focus.
bool KeyRouter::scroll(const QWidget *receiver, const QKeyEvent &event)
{
    const bool nobodyTookIt = receiver == receiver->window() || receiver == m_views.rootView();
    const bool isDown = event.key() == Qt::Key_PageDown;
    if (!nobodyTookIt || (!isDown && event.key() != Qt::Key_PageUp) || !m_views.scrollView())
        return false;
    constexpr double MostOfAPage = 0.9;
    return m_views.scrollView()->scrollByPages(isDown ? MostOfAPage : -MostOfAPage);
}

/// Whether the characters before this one went to somebody else, without an end and without a click in
/// between.
bool KeyRouter::continuesElsewhere(const QWidget *receiver) const
{
    return !m_burst.isEmpty() && m_sinceCharacter.elapsed() < LongestPauseInAText &&
           m_burstReceiver != receiver;
}

void KeyRouter::noteBurst(QWidget *receiver, const QKeyEvent &event)
{
    if (!keys::isCharacter(event)) {
        // A modifier belongs to the character that follows it.
        if (!event.text().isEmpty() || event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab)
            m_burst.clear();
        return;
    }
    if (m_sinceCharacter.elapsed() >= LongestPauseInAText)
        m_burst.clear();
    m_burst += event.text();
    m_burstReceiver = receiver;
    m_sinceCharacter.restart();
}

bool KeyRouter::giveToWaitingField(const QKeyEvent &event)
{
    // A character that the field itself does not take comes up to the window again.
    if (m_giving || !m_stray.isEmpty())
        return false;
    TextField *field = m_focus.waitingField();
    if (!field || !field->becomeFirstResponder())
        return false;
    m_giving = true;
    // A copy, since the event itself is still on its way to the one that it came for.
    QKeyEvent copy(event.type(), event.key(), event.modifiers(), event.text(), event.isAutoRepeat());
    QCoreApplication::sendEvent(field->focusTarget(), &copy);
    m_giving = false;
    return true;
}

/// Collects a text that belongs to no field until it ends.
bool KeyRouter::takeAsStray(const QKeyEvent &event)
{
    if (keys::isReturn(event)) {
        refuseStray();
        return true;
    }
    // A key that writes a control character belongs to the text and is kept back with it; keys that write
    // nothing go their way.
    if (!keys::isCharacter(event))
        return !event.text().isEmpty();
    // What a field had of the text before it went away is told with the rest, as one text.
    if (m_stray.isEmpty())
        m_stray = std::exchange(m_burst, QString());
    m_stray += event.text();
    m_strayEnds.start();
    return true;
}

void KeyRouter::refuseStray()
{
    m_strayEnds.stop();
    m_burst.clear();
    if (!m_stray.isEmpty())
        Entries::refuse(
            {{}, std::exchange(m_stray, QString()), news::Nowhere, QLatin1String(messages::NoFieldWaits)});
}

} // namespace interactive
