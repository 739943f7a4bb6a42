#include "station/window/ViewArea.h"

#include <QApplication>

namespace station {
namespace {

/// What is left of the views at least where they are scrolled.
constexpr int LeastWidth = 320;

} // namespace

ViewArea::ViewArea(QWidget *views)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(views);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        if (m_isHolding && now && widget()->isAncestorOf(now))
            ensureWidgetVisible(now);
    });
}

void ViewArea::hold(const QSize &size)
{
    m_isHolding = !size.isEmpty();
    widget()->setMinimumSize(m_isHolding ? size : QSize(0, 0));
    updateGeometry();
}

QSize ViewArea::sizeHint() const
{
    return widget()->sizeHint();
}

QSize ViewArea::minimumSizeHint() const
{
    const QSize least = widget()->minimumSizeHint();
    return m_isHolding ? QSize(qMin(least.width(), LeastWidth), least.height()) : least;
}

} // namespace station
