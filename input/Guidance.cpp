#include "input/Guidance.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace interactive {

namespace {

KVKExtensionGuidanceRelay *relay()
{
    return KVKExtensionGuidanceRelay::sharedGuidanceRelay();
}

/// Whether the operator may be at another panel after the event, or a panel may be seen or not.
bool mayChangeIt(QEvent::Type type)
{
    switch (type) {
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::ParentChange:
        return true;
    default:
        return false;
    }
}

} // namespace

Guidance::Guidance(const PanelViews &views)
    : m_views(views)
    , m_rest(this)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(Rest);
    connect(&m_rest, &QTimer::timeout, this, &Guidance::mouseRests);
}

Guidance::~Guidance()
{
    for (Panel &panel : m_panels)
        drop(panel);
}

void Guidance::panelOpened(const QString &panelKey, platform::View *view, const KVKGuidancePointer &guidance)
{
    panelGone(panelKey);
    if (!guidance)
        return;
    // Only while there is something to look at: every event of the application comes by.
    if (m_panels.isEmpty())
        qApp->installEventFilter(this);
    m_panels.append({panelKey, view, guidance});
    look();
}

void Guidance::panelGone(const QString &panelKey)
{
    const auto found = std::ranges::find(m_panels, panelKey, &Panel::key);
    if (found == m_panels.end())
        return;
    Panel panel = *found;
    m_panels.erase(found);
    drop(panel);
    look();
}

void Guidance::drop(Panel &panel)
{
    if (m_current == panel.guidance)
        m_current.reset();
    // The next call's panel may stand in the same box, where the mouse has not been since.
    if (m_restedOn == panel.view && !(panel.view && panel.view->underMouse()))
        m_restedOn.clear();
    if (std::exchange(panel.isOffered, false))
        relay()->withdraw(panel.guidance);
}

bool Guidance::eventFilter(QObject *watched, QEvent *event)
{
    if (mayChangeIt(event->type()))
        lookSoon();
    if (event->type() == QEvent::FocusIn && !isMouseOnTheView())
        m_restedOn.clear();
    return QObject::eventFilter(watched, event);
}

/// Not at once: the event has still to be delivered, and one that moves the mouse or the focus from a panel
/// to the next brings its other half.
void Guidance::lookSoon()
{
    if (std::exchange(m_looksSoon, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_looksSoon = false;
            followMouse();
            look();
        },
        Qt::QueuedConnection);
}

void Guidance::followMouse()
{
    platform::View *now = underMouse();
    if (now == m_underMouse)
        return;
    m_underMouse = now;
    m_rest.start();
}

void Guidance::mouseRests()
{
    m_underMouse = underMouse();
    if (!m_underMouse && !isMouseOnTheView())
        return;
    m_restedOn = m_underMouse;
    look();
}

bool Guidance::isMouseOnTheView() const
{
    return m_views.rootView() && m_views.rootView()->underMouse();
}

platform::View *Guidance::underMouse() const
{
    for (const Panel &panel : m_panels) {
        if (panel.canBeSeen() && panel.view->underMouse())
            return panel.view;
    }
    return nullptr;
}

void Guidance::look()
{
    offerWhatIsSeen();
    const KVKGuidancePointer now = current();
    if (now == m_current)
        return;
    const KVKGuidancePointer before = std::exchange(m_current, now);
    if (now)
        relay()->beginCurrent(now);
    else
        relay()->endCurrent(before);
}

void Guidance::offerWhatIsSeen()
{
    for (Panel &panel : m_panels) {
        if (!panel.canBeSeen())
            drop(panel);
        else if (!std::exchange(panel.isOffered, true))
            relay()->offer(panel.guidance);
    }
    // A message goes with the panel that takes its place, and no call says so.
    m_panels.removeIf([](const Panel &panel) { return panel.isGone(); });
    if (m_panels.isEmpty())
        qApp->removeEventFilter(this);
}

KVKGuidancePointer Guidance::current() const
{
    const QWidget *focused = m_views.rootView() ? m_views.rootView()->window()->focusWidget() : nullptr;
    const platform::View *splitView = m_views.splitView();
    const bool isFocusOnAPanel = focused && splitView && splitView->isAncestorOf(focused);
    KVKGuidancePointer withFocus;
    KVKGuidancePointer longest;
    for (const Panel &panel : m_panels) {
        if (!panel.canBeSeen())
            continue;
        if (panel.view == m_restedOn)
            return panel.guidance;
        if (isFocusOnAPanel && panel.view->isAncestorOf(focused))
            withFocus = panel.guidance;
        if (!longest)
            longest = panel.guidance;
    }
    return isFocusOnAPanel ? withFocus : longest;
}

} // namespace interactive
