#include "station/window/ViewArea.h"

#include "station/look/WindowLook.h"

#include <QApplication>

#include <utility>

namespace station {
namespace {

/// What is left of the views at least where they are scrolled.
constexpr int LeastWidth = 240;

} // namespace

ViewArea::ViewArea(QWidget *views)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    nameScrollBars(*this);
    setWidget(views);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        if (!m_held.isEmpty() && now && widget()->isAncestorOf(now))
            ensureWidgetVisible(now);
    });
}

void ViewArea::hold(const QSize &size)
{
    // What is held may be smaller than the views can be: a minimum that was set goes before the one they
    // need.
    m_held = size.isEmpty() ? QSize(0, 0) : size.expandedTo(widget()->minimumSizeHint());
    if (!m_isFrozen)
        widget()->setMinimumSize(m_held);
    updateGeometry();
}

void ViewArea::freeze()
{
    if (std::exchange(m_isFrozen, true))
        return;
    widget()->setFixedSize(widget()->size());
    QMetaObject::invokeMethod(this, &ViewArea::thaw, Qt::QueuedConnection);
}

void ViewArea::thaw()
{
    m_isFrozen = false;
    widget()->setMinimumSize(m_held);
    widget()->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

QSize ViewArea::sizeHint() const
{
    return widget()->sizeHint();
}

QSize ViewArea::minimumSizeHint() const
{
    const QSize least = widget()->minimumSizeHint();
    return !m_held.isEmpty() ? QSize(qMin(least.width(), LeastWidth), least.height()) : least;
}

} // namespace station
