#include "station/operator/OperatorHands.h"

#include "platform/ChoiceList.h"
#include "platform/ScrollView.h"
#include "platform/TextField.h"
#include "station/operator/KeyStrokes.h"
#include "station/operator/OperatorFailure.h"
#include "station/operator/ViewTree.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QPointingDevice>
#include <QScrollArea>
#include <QWidget>
#include <QWindow>

namespace station {
namespace {

using platform::ChoiceList;
using platform::Rect;
using platform::ScrollView;
using platform::TextField;
using platform::View;

constexpr int ScrollMargin = 8;

void sendKey(QWindow *window, QEvent::Type type, const KeyStroke &stroke)
{
    QKeyEvent event(type, stroke.key, stroke.modifiers, stroke.text);
    QCoreApplication::sendEvent(window, &event);
}

void sendMouse(QWindow *window, QEvent::Type type, const QPoint &position)
{
    const bool moves = type == QEvent::MouseMove;
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, position, position, window->mapToGlobal(position),
                      moves ? Qt::NoButton : Qt::LeftButton, held, Qt::NoModifier,
                      QPointingDevice::primaryPointingDevice());
    QCoreApplication::sendEvent(window, &event);
}

/// The toolkit gives the focus by a click only when the event comes from the window system; this is its rule.
void giveFocusByClick(QWidget *clicked)
{
    for (QWidget *widget = clicked; widget; widget = widget->parentWidget()) {
        const bool takes = (widget->focusPolicy() & Qt::ClickFocus) == Qt::ClickFocus;
        if (widget->isEnabled() && takes) {
            widget->setFocus(Qt::MouseFocusReason);
            return;
        }
        if (widget->isWindow() || widget->hasFocus())
            return;
    }
}

/// The view's rectangle in the coordinates of a view around it, bottom-left origin.
Rect rectIn(const View *around, const View *view)
{
    const QPoint corner = view->mapTo(around, QPoint(0, 0));
    const double height = view->height();
    return {static_cast<double>(corner.x()), around->height() - corner.y() - height,
            static_cast<double>(view->width()), height};
}

/// Where the low end of a visible range of a length must lie, so that it shows the other range.
double scrolled(double low, double length, double wantedLow, double wantedHigh)
{
    if (wantedHigh > low + length)
        low = wantedHigh - length;
    return qMin(low, wantedLow);
}

void scrollIntoSight(ScrollView *scroll, const View *view)
{
    const View *document = scroll->documentView();
    if (!document || !document->isAncestorOf(view))
        return;
    const Rect visible = scroll->documentVisibleRect();
    const Rect wanted = rectIn(document, view);
    if (visible.contains(wanted))
        return;
    const Rect roomy = wanted.adjusted(-ScrollMargin, -ScrollMargin, ScrollMargin, ScrollMargin);
    const double left = scrolled(visible.x(), visible.width(), roomy.x(), roomy.x() + roomy.width());
    const double low = scrolled(visible.y(), visible.height(), roomy.y(), roomy.y() + roomy.height());
    scroll->scrollToPoint({left, low + visible.height()});
}

/// From the inside out, in the views and in what the station holds them in: each may have too little room for
/// what is in it.
void scrollIntoSight(View *view)
{
    for (QWidget *around = view->parentWidget(); around; around = around->parentWidget()) {
        if (auto *scroll = qobject_cast<ScrollView *>(around))
            scrollIntoSight(scroll, view);
        else if (auto *area = qobject_cast<QScrollArea *>(around))
            area->ensureWidgetVisible(view, ScrollMargin, ScrollMargin);
    }
}

/// The list of choices that the widget is or lies in; null for any other.
ChoiceList *listAround(QWidget *widget)
{
    while (widget && !qobject_cast<ChoiceList *>(widget))
        widget = widget->parentWidget();
    return static_cast<ChoiceList *>(widget);
}

/// A list of choices lies over whatever it has no room beside, and folds when somebody presses elsewhere.
void foldListOver(const QWidget *window, const QPoint &position)
{
    if (ChoiceList *list = listAround(window->childAt(position)))
        list->fold();
}

/// Whether something around the view leaves nothing of it to be seen at the point.
bool isCutOff(const View *view, const QWidget *window, const QPoint &point)
{
    for (const QWidget *around = view->parentWidget(); around && around != window;
         around = around->parentWidget()) {
        if (!around->rect().contains(around->mapFrom(window, point)))
            return true;
    }
    return false;
}

/// Sees whether a key arrives.
class Arrival : public QObject
{
public:
    explicit Arrival(QWidget *receiver) { receiver->installEventFilter(this); }
    [[nodiscard]] bool hasCome() const { return m_hasCome; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_hasCome = m_hasCome || event->type() == QEvent::KeyRelease;
        return false;
    }

private:
    bool m_hasCome = false;
};

} // namespace

OperatorHands::OperatorHands(QWidget *window)
    : m_window(window)
{
    if (!m_window)
        throw OperatorFailure(QStringLiteral("the station window is gone"));
    if (!m_window->isVisible() || !m_window->windowHandle())
        throw OperatorFailure(QStringLiteral("the station window is not shown"));
}

bool OperatorHands::takeWindow()
{
    if (m_window->isActiveWindow())
        return true;
    m_window->raise();
    m_window->activateWindow();
    return false;
}

void OperatorHands::press(const QList<KeyStroke> &strokes)
{
    // To the window, as the window system does it: what is in the way of a key is then in its way here, too.
    // Watched, since a key may close it.
    const QPointer<QWindow> window = m_window->windowHandle();
    for (const KeyStroke &stroke : strokes) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            if (!window)
                throw OperatorFailure(QStringLiteral("the station window went while keys were typed"));
            sendKey(window, type, stroke);
        }
    }
}

void OperatorHands::click(View *view)
{
    if (!view->isVisible())
        throw OperatorFailure(QStringLiteral("it is hidden"));
    if (!view->isEnabled())
        throw OperatorFailure(QStringLiteral("it is disabled"));
    scrollIntoSight(view);
    foldListOver(m_window, view->mapTo(m_window, view->rect().center()));
    // A person cannot press what something else lies upon: a script that could would hide the fault.
    requireOperable(view);
    pressAndRelease(view->mapTo(m_window, view->rect().center()));
}

/// A plug-in may hold keys and clicks back while it carries out a press. What is typed then goes to whoever
/// has the focus afterwards, and that may be another one.
bool OperatorHands::keysArrive() const
{
    QWidget *receiver = m_window->focusWidget() ? m_window->focusWidget() : m_window;
    const Arrival arrival(receiver);
    sendKey(m_window->windowHandle(), QEvent::KeyRelease, {Qt::Key_unknown, Qt::NoModifier, {}});
    return arrival.hasCome();
}

bool OperatorHands::enter(TextField *field, const Entry &entry)
{
    if (!keysArrive())
        return false;
    // Also where the field has the focus already: what is typed now begins anew.
    click(field);
    if (!field->isFirstResponder())
        return false;
    const QString text = entry.text.value_or(QString());
    QString keys = entry.isInOnePiece ? QString() : text;
    if (entry.text && field->currentEditor()) {
        field->currentEditor()->selectAll();
        // Gives up what is refused so far, too.
        if (text.isEmpty() || field->stringValue().isEmpty())
            keys.prepend(QLatin1Char('\b'));
    }
    type(entry.ends ? keys + QLatin1Char('\n') : keys);
    if (entry.isInOnePiece)
        writeInOnePiece(field, text);
    return true;
}

/// By the way of an input method, which no clipboard of somebody else's takes part in.
void OperatorHands::writeInOnePiece(TextField *field, const QString &text)
{
    QLineEdit *editor = field->currentEditor();
    if (!editor)
        return;
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(editor, &event);
}

void OperatorHands::requireOperable(const View *view) const
{
    const QPoint centre = view->mapTo(m_window, view->rect().center());
    if (!m_window->rect().contains(centre))
        throw OperatorFailure(QStringLiteral("it lies outside the window"));
    if (isCutOff(view, m_window, centre))
        throw OperatorFailure(QStringLiteral("it lies out of sight, and nothing scrolls to it"));
    const QWidget *hit = m_window->childAt(centre);
    if (hit != view && !view->isAncestorOf(hit))
        throw OperatorFailure(QStringLiteral("it is covered by %1").arg(widgetText(hit ? *hit : *m_window)));
}

void OperatorHands::pressAndRelease(const QPoint &position)
{
    const QPointer<QWindow> window = m_window->windowHandle();
    sendMouse(window, QEvent::MouseMove, position);
    giveFocusByClick(m_window->childAt(position));
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        if (!window)
            throw OperatorFailure(QStringLiteral("the station window went during the click"));
        sendMouse(window, type, position);
    }
}

} // namespace station
