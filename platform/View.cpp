#include "platform/View.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QResizeEvent>

#include <cmath>

namespace platform {

namespace {

/// One axis of a view: where it begins and how long it is.
struct Extent
{
    double begin;
    double length;
};

/// Shares a change of the superview's length among the parts that may change, equally.
Extent distributed(Extent extent, double difference, bool minMargin, bool length, bool maxMargin)
{
    const int flexible = int(minMargin) + int(length) + int(maxMargin);
    if (flexible == 0)
        return extent;
    const double share = difference / flexible;
    return {extent.begin + (minMargin ? share : 0.0), extent.length + (length ? share : 0.0)};
}

int rounded(double coordinate)
{
    return static_cast<int>(std::lround(std::clamp(coordinate, -double(QWIDGETSIZE_MAX), double(QWIDGETSIZE_MAX))));
}

} // namespace

View::View(QWidget *parent)
    : QWidget(parent)
{
}

View::View(const Rect &frame)
    : QWidget(nullptr)
{
    setFrame(frame);
}

View::~View() = default;

View *View::superview() const
{
    return qobject_cast<View *>(parentWidget());
}

QList<View *> View::subviews() const
{
    QList<View *> views;
    for (QObject *child : children()) {
        if (auto *view = qobject_cast<View *>(child))
            views.append(view);
    }
    return views;
}

void View::addSubview(View *view)
{
    const bool hidden = view->isHidden() && view->testAttribute(Qt::WA_WState_ExplicitShowHide);
    view->setParent(this);
    view->placeWidget();
    view->raise();
    if (!hidden)
        view->show();
}

void View::removeFromSuperview()
{
    giveUpFocus();
    hide();
    setParent(nullptr);
    deleteLater();
}

View *View::viewWithTag(int tag)
{
    if (m_tag == tag)
        return this;
    for (View *view : subviews()) {
        if (View *found = view->viewWithTag(tag))
            return found;
    }
    return nullptr;
}

void View::setFrame(const Rect &frame)
{
    const Size oldSize = m_frame.size();
    m_frame = frame;
    placeWidget();
    if (oldSize != frame.size()) {
        resizeSubviews(oldSize);
        layout();
        update();
    }
    Q_EMIT frameChanged();
}

void View::setFrameOrigin(const Point &origin)
{
    setFrame({origin, m_frame.size()});
}

/// Rounds edges, not sizes, so that neighbours meet.
void View::placeWidget()
{
    const View *parent = superview();
    const int left = rounded(m_frame.x());
    const int right = rounded(m_frame.x() + m_frame.width());
    int top = 0;
    int bottom = rounded(m_frame.height());
    if (parent) {
        top = rounded(parent->m_frame.height() - m_frame.y() - m_frame.height());
        bottom = rounded(parent->m_frame.height() - m_frame.y());
    }
    m_placing = true;
    setGeometry(left, top, std::max(0, right - left), std::max(0, bottom - top));
    m_placing = false;
}

void View::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    // A root is sized by the widget that holds it; every other view by its frame.
    if (m_placing || superview() || !parentWidget())
        return;
    const Size oldSize = m_frame.size();
    m_frame.setSize(event->size());
    resizeSubviews(oldSize);
    layout();
    Q_EMIT frameChanged();
}

void View::resizeSubviews(const Size &oldSize)
{
    for (View *view : subviews())
        view->resizeWithSuperview(oldSize, m_frame.size());
}

void View::resizeWithSuperview(const Size &oldSuperSize, const Size &newSuperSize)
{
    const unsigned mask = m_autoresizingMask;
    const Extent x = distributed({m_frame.x(), m_frame.width()}, newSuperSize.width() - oldSuperSize.width(),
                                 mask & MinXMargin, mask & WidthSizable, mask & MaxXMargin);
    const Extent y = distributed({m_frame.y(), m_frame.height()}, newSuperSize.height() - oldSuperSize.height(),
                                 mask & MinYMargin, mask & HeightSizable, mask & MaxYMargin);
    // The frame may stay as it is, but the distance to the superview's upper edge has changed with its height.
    setFrame({x.begin, y.begin, x.length, y.length});
}

void View::giveUpFocus()
{
    QWidget *focused = QApplication::focusWidget();
    if (focused && (focused == this || isAncestorOf(focused)))
        focused->clearFocus();
}

void View::setHidden(bool hidden)
{
    if (hidden)
        giveUpFocus();
    QWidget::setHidden(hidden);
}

void View::setEnabled(bool enabled)
{
    if (!enabled)
        giveUpFocus();
    QWidget::setEnabled(enabled);
    update();
}

void View::setPassesClicksThrough(bool passes)
{
    setAttribute(Qt::WA_TransparentForMouseEvents, passes);
}

void View::setLayerBackgroundColor(const std::optional<Color> &color)
{
    m_layerBackgroundColor = color;
    update();
}

void View::setCornerRadius(double radius)
{
    m_cornerRadius = radius;
    update();
}

void View::setShadow(const std::optional<Shadow> &shadow)
{
    m_shadow = shadow;
    if (View *parent = superview())
        parent->update();
}

bool View::becomeFirstResponder()
{
    return false;
}

bool View::isFirstResponder() const
{
    return false;
}

View *View::nextResponder() const
{
    return m_nextResponder ? m_nextResponder.data() : superview();
}

void View::setNextKeyView(View *next)
{
    m_nextKeyView = next;
    if (next)
        QWidget::setTabOrder(focusTarget(), next->focusTarget());
}

QWidget *View::focusTarget()
{
    return this;
}

void View::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, m_cornerRadius > 0.0);
    if (m_layerBackgroundColor && m_layerBackgroundColor->alpha > 0.0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_layerBackgroundColor->toQColor());
        painter.drawRoundedRect(QRectF(rect()), m_cornerRadius, m_cornerRadius);
    }
    paintShadows(painter);
}

/// A shadow is painted as a few rounded frames that fade outwards, twice as far as its radius.
void View::paintShadows(QPainter &painter)
{
    for (const View *view : subviews()) {
        const std::optional<Shadow> shadow = view->shadow();
        if (!shadow || view->isHidden() || view->masksToBounds())
            continue;
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        const double reach = 2.0 * shadow->radius;
        const QRectF outline = QRectF(view->geometry()).translated(shadow->offset.width(), -shadow->offset.height());
        for (double distance = 0.5; distance < reach; distance += 1.0) {
            const double strength = 1.0 - distance / reach;
            painter.setPen(QPen(shadow->color.withAlphaComponent(shadow->color.alpha * strength * 0.6).toQColor(), 1.0));
            painter.drawRoundedRect(outline.adjusted(-distance, -distance, distance, distance), 3.0 + distance,
                                    3.0 + distance);
        }
    }
}

} // namespace platform
