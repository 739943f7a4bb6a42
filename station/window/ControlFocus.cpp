#include "station/window/ControlFocus.h"

#include "platform/KeyRouting.h"
#include "station/look/WindowLook.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>

#include <algorithm>

namespace station {
namespace {

constexpr int RingWidth = 3;

/// Painted over the window; mouse and keys go through it.
class Ring : public QWidget
{
public:
    explicit Ring(QWidget *window)
        : QWidget(window)
    {
        setObjectName(QStringLiteral("focusRing"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        hide();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(focusColor(palette()), RingWidth));
        const double half = RingWidth / 2.0;
        painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), 4.0, 4.0);
    }
};

bool concernsFocus(QEvent::Type type)
{
    return type == QEvent::KeyPress || type == QEvent::FocusIn || type == QEvent::FocusOut ||
           type == QEvent::Resize || type == QEvent::Move;
}

bool isByTab(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

} // namespace

ControlFocus::ControlFocus(QWidget *window)
    : QObject(window)
    , m_window(window)
    , m_ring(new Ring(window))
{
    platform::keys::watch();
    // On the application: the Tab goes to whoever has the focus before it moves on.
    QApplication::instance()->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { placeRing(now); });
}

void ControlFocus::add(QWidget *control, Stands where)
{
    m_controls.append({control, where, false});
}

void ControlFocus::addTool(const QWidget &tool)
{
    for (QWidget *widget : tool.findChildren<QWidget *>()) {
        if (widget->focusPolicy() & Qt::TabFocus)
            m_controls.append({widget, Stands::ToolBar, qobject_cast<QLineEdit *>(widget) != nullptr});
    }
}

const ControlFocus::Control *ControlFocus::controlOf(const QObject *widget) const
{
    const auto found = std::find_if(m_controls.cbegin(), m_controls.cend(),
                                    [widget](const Control &each) { return each.widget == widget; });
    return found == m_controls.cend() ? nullptr : &*found;
}

/// All that Tab reaches. The toolkit's own order is that in which widgets were made: a panel that opens late
/// would come last.
QWidgetList ControlFocus::stops() const
{
    QWidgetList all;
    const auto addStop = [&](QWidget *widget) {
        if (widget && (widget->focusPolicy() & Qt::TabFocus) && widget->isVisible() && widget->isEnabled() &&
            !widget->focusProxy())
            all.append(widget);
    };
    const auto addAll = [&](Stands where) {
        for (const Control &control : m_controls) {
            if (control.stands == where)
                addStop(control.widget);
        }
    };
    addAll(Stands::ToolBar);
    addAll(Stands::BeforeViews);
    for (QWidget *widget = m_window->nextInFocusChain(); widget != m_window;
         widget = widget->nextInFocusChain()) {
        if (!controlOf(widget) && widget->window() == m_window)
            addStop(widget);
    }
    addAll(Stands::AfterViews);
    return all;
}

void ControlFocus::goOn(bool forward)
{
    const QWidgetList all = m_isTab ? stops() : QWidgetList();
    if (all.isEmpty()) {
        // The one that had the focus goes or was disabled: a scan must not find the next one in its place.
        leave();
        return;
    }
    const auto count = all.size();
    const auto at = all.indexOf(m_window->focusWidget());
    const auto before = at < 0 ? (forward ? count - 1 : 0) : at;
    all[(before + (forward ? 1 : count - 1)) % count]->setFocus(forward ? Qt::TabFocusReason
                                                                        : Qt::BacktabFocusReason);
}

void ControlFocus::followTab(const QObject *watched, const QEvent *event)
{
    const auto *widget = qobject_cast<const QWidget *>(watched);
    if (event->type() != QEvent::KeyPress || !widget || widget->window() != m_window)
        return;
    const int key = static_cast<const QKeyEvent *>(event)->key();
    if (key != Qt::Key_Tab && key != Qt::Key_Backtab)
        return;
    m_isTab = true;
    QMetaObject::invokeMethod(
        this, [this] { m_isTab = false; }, Qt::QueuedConnection);
}

bool ControlFocus::eventFilter(QObject *watched, QEvent *event)
{
    // Asked of every event of the program, most of which are paintings.
    if (!concernsFocus(event->type()))
        return false;
    followTab(watched, event);
    followMoves(watched, *event);
    const Control *control = watched->isWidgetType() ? controlOf(watched) : nullptr;
    return control && takesEvent(*control, event);
}

/// A tool bar's parts move with what holds them.
void ControlFocus::followMoves(const QObject *watched, const QEvent &event)
{
    if ((event.type() != QEvent::Resize && event.type() != QEvent::Move) || !m_ring->isVisible())
        return;
    const QWidget *focused = QApplication::focusWidget();
    for (const QWidget *each = focused; each && each != m_window; each = each->parentWidget()) {
        if (each == watched)
            placeRing(focused);
    }
}

bool ControlFocus::takesEvent(const Control &control, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        if (isWanted(control, static_cast<QFocusEvent *>(event)->reason())) {
            m_chosen = control.widget;
            return false;
        }
        leave();
        return true;
    case QEvent::FocusOut:
        if (static_cast<QFocusEvent *>(event)->reason() != Qt::ActiveWindowFocusReason)
            m_chosen = nullptr;
        return false;
    case QEvent::KeyPress:
        return keyPressed(control, *static_cast<QKeyEvent *>(event));
    default:
        return false;
    }
}

bool ControlFocus::isWanted(const Control &control, Qt::FocusReason reason) const
{
    if (reason == Qt::ActiveWindowFocusReason)
        return control.takesKeys || m_chosen == control.widget;
    return !isByTab(reason) || m_isTab;
}

bool ControlFocus::keyPressed(const Control &control, const QKeyEvent &event)
{
    const int key = event.key();
    if (control.takesKeys)
        return false;
    if (key == Qt::Key_Escape) {
        leave();
        return true;
    }
    auto *button = qobject_cast<QAbstractButton *>(control.widget);
    auto *box = qobject_cast<QComboBox *>(control.widget);
    // What a scanner sends presses nothing, whether or not a plug-in's field has taken the text.
    const bool isReturn = platform::keys::isReturn(event);
    if ((button || box) && (isReturn || key == Qt::Key_Space) &&
        platform::keys::isScanners(*control.widget, event))
        return true;
    if (!isReturn)
        return false;
    if (button) {
        button->click();
        return true;
    }
    if (box) {
        box->showPopup();
        return true;
    }
    // What was typed stands; whoever scans next does not want it here.
    leave();
    return true;
}

void ControlFocus::leave()
{
    m_window->setFocus(Qt::OtherFocusReason);
}

void ControlFocus::placeRing(const QWidget *focused)
{
    const bool isOurs = focused && controlOf(focused);
    m_ring->setVisible(isOurs);
    if (!isOurs)
        return;
    const QRect place(focused->mapTo(m_window, QPoint(0, 0)), focused->size());
    m_ring->setGeometry(place.adjusted(-RingWidth, -RingWidth, RingWidth, RingWidth) & m_window->rect());
    m_ring->raise();
}

} // namespace station
