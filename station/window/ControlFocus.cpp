#include "station/window/ControlFocus.h"

#include "station/window/WindowLook.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
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
    // On the application: the Tab goes to whoever has the focus before it moves on.
    QApplication::instance()->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { placeRing(now); });
}

void ControlFocus::add(QWidget *control, Stands where)
{
    m_controls.append(control);
    if (where == Stands::AfterViews)
        m_after.append(control);
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
    for (const auto &control : m_controls) {
        if (!m_after.contains(control))
            addStop(control);
    }
    for (QWidget *widget = m_window->nextInFocusChain(); widget != m_window;
         widget = widget->nextInFocusChain()) {
        if (!m_controls.contains(widget) && widget->window() == m_window)
            addStop(widget);
    }
    for (const auto &control : m_after)
        addStop(control);
    return all;
}

bool ControlFocus::goOn(bool forward)
{
    if (!m_isTab)
        return false;
    const QWidgetList all = stops();
    if (all.isEmpty())
        return false;
    const auto count = all.size();
    const auto at = all.indexOf(m_window->focusWidget());
    const auto before = at < 0 ? (forward ? count - 1 : 0) : at;
    all[(before + (forward ? 1 : count - 1)) % count]->setFocus(forward ? Qt::TabFocusReason
                                                                        : Qt::BacktabFocusReason);
    return true;
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
    followTab(watched, event);
    auto *control = qobject_cast<QWidget *>(watched);
    if (!control || !m_controls.contains(control))
        return false;
    switch (event->type()) {
    case QEvent::FocusIn:
        if (isWanted(control, static_cast<QFocusEvent *>(event)->reason())) {
            m_chosen = control;
            return false;
        }
        m_window->setFocus(Qt::OtherFocusReason);
        return true;
    case QEvent::FocusOut:
        if (static_cast<QFocusEvent *>(event)->reason() != Qt::ActiveWindowFocusReason)
            m_chosen = nullptr;
        return false;
    case QEvent::KeyPress:
        return keyPressed(control, static_cast<QKeyEvent *>(event)->key());
    case QEvent::Resize:
    case QEvent::Move:
        if (control->hasFocus())
            placeRing(control);
        return false;
    default:
        return false;
    }
}

bool ControlFocus::isWanted(const QWidget *control, Qt::FocusReason reason) const
{
    if (reason == Qt::ActiveWindowFocusReason)
        return m_chosen == control;
    return !isByTab(reason) || m_isTab;
}

bool ControlFocus::keyPressed(QWidget *control, int key)
{
    if (key == Qt::Key_Escape) {
        leave();
        return true;
    }
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    if (auto *button = qobject_cast<QAbstractButton *>(control)) {
        button->click();
        return true;
    }
    if (auto *box = qobject_cast<QComboBox *>(control)) {
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
    const bool isOurs = focused && std::any_of(m_controls.cbegin(), m_controls.cend(),
                                               [&](const auto &control) { return control == focused; });
    m_ring->setVisible(isOurs);
    if (!isOurs)
        return;
    const QRect place(focused->mapTo(m_window, QPoint(0, 0)), focused->size());
    m_ring->setGeometry(place.adjusted(-RingWidth, -RingWidth, RingWidth, RingWidth) & m_window->rect());
    m_ring->raise();
}

} // namespace station
