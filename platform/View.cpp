#include "platform/View.h"

#include "platform/AccessibleViews.h"
#include "platform/Departures.h"
#include "platform/Readable.h"
#include "platform/RoundedFrame.h"

#include <QPainter>
#include <QResizeEvent>

#include <algorithm>
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

/// Rounds to whole pixels. The hair makes an edge that two neighbours reach by different sums round alike.
int rounded(double coordinate)
{
    constexpr double limit = QWIDGETSIZE_MAX;
    constexpr double hair = 1e-6;
    return static_cast<int>(std::floor(std::clamp(coordinate, -limit, limit) + 0.5 + hair));
}

/// QRectF's and QSizeF's own comparisons take nearly equal for equal; frames are kept exactly.
bool isSame(const Size &a, const Size &b)
{
    return a.width() == b.width() && a.height() == b.height();
}

bool isSame(const Rect &a, const Rect &b)
{
    return a.x() == b.x() && a.y() == b.y() && isSame(a.size(), b.size());
}

RoundedFrame frameOfLayer(const QColor &color, double radius)
{
    const auto paint = [color, radius](QPainter &painter, const QRectF &area) {
        painter.setRenderHint(QPainter::Antialiasing, radius > 0.0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRoundedRect(area, radius, radius);
    };
    return {{"layer", 0, color.rgba(), radius}, static_cast<int>(std::ceil(radius)), color, paint};
}

/// A shadow is painted as a few rounded frames that fade outwards, twice as far as its radius. The area is
/// that of the widest one, in whole points.
RoundedFrame frameOfShadow(const Shadow &shadow)
{
    constexpr double InnerRadius = 3.0;
    const double reach = shadow.reach();
    const double margin = std::ceil(reach);
    const Color color = shadow.color;
    const auto paint = [=](QPainter &painter, const QRectF &area) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        const QRectF outline = area.adjusted(margin, margin, -margin, -margin);
        const int frames = static_cast<int>(std::ceil(reach - 0.5));
        for (int frame = 0; frame < frames; ++frame) {
            const double distance = frame + 0.5;
            const double strength = 1.0 - distance / reach;
            painter.setPen(QPen(color.withAlphaComponent(color.alpha * strength * 0.6).toQColor(), 1.0));
            painter.drawRoundedRect(outline.adjusted(-distance, -distance, distance, distance),
                                    InnerRadius + distance, InnerRadius + distance);
        }
    };
    return {{"shadow", color.toQColor().rgba(), 0, reach, color.alpha},
            static_cast<int>(margin + InnerRadius) + 1,
            QColor(),
            paint};
}

} // namespace

View::View(QWidget *parent)
    : QWidget(parent)
{
    accessible::describeViews();
}

View::View(const Rect &frame)
    : View(static_cast<QWidget *>(nullptr))
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
    // Hidden on purpose, not just because a widget without a parent is not shown yet.
    const bool hidden = view->isHidden() && view->testAttribute(Qt::WA_WState_ExplicitShowHide);
    const bool wasHere = view->parentWidget() == this;
    view->setParent(this);
    view->placeWidget();
    // A subview that is added stands above its siblings, also when it was one of them already.
    view->raise();
    if (!hidden)
        view->show();
    // The ground is that of this view, which tells of its changes itself.
    if (!wasHere)
        view->tellGroundChanged();
}

void View::removeFromSuperview()
{
    if (!parentWidget())
        return;
    // Whoever hears of it may take the view away.
    const QPointer<View> self(this);
    hide();
    if (!self)
        return;
    Departures::take(*this);
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
    const Rect old = m_frame;
    m_frame = frame;
    // Also for a frame that stays: the superview's height decides where the widget is.
    placeWidget();
    if (!isSame(old.size(), frame.size()))
        sizeChanged(old.size());
    if (!isSame(old, frame))
        Q_EMIT frameChanged();
}

void View::setFrameOrigin(const Point &origin)
{
    setFrame({origin, m_frame.size()});
}

/// The size of the widget of a root, whose place is the business of whoever holds it.
QSize View::widgetSize() const
{
    return {std::max(0, rounded(m_frame.width())), std::max(0, rounded(m_frame.height()))};
}

/// Rounds edges, not sizes, so that neighbours meet.
void View::placeWidget()
{
    m_placing = true;
    if (const View *around = superview()) {
        const double height = around->m_frame.height();
        const int left = rounded(m_frame.x());
        const int right = rounded(m_frame.x() + m_frame.width());
        const int upper = rounded(height - (m_frame.y() + m_frame.height()));
        const int lower = rounded(height - m_frame.y());
        setGeometry(left, upper, std::max(0, right - left), std::max(0, lower - upper));
        updateShadowArea();
    } else {
        resize(widgetSize());
    }
    m_placing = false;
}

void View::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    // A root is sized by the widget or the window system that holds it, every other view by its frame. A size
    // that is no more than the frame's own, rounded, does not cost a root its fractions.
    if (m_placing || superview() || event->size() == widgetSize())
        return;
    const Size oldSize = m_frame.size();
    m_frame.setSize(event->size());
    sizeChanged(oldSize);
    Q_EMIT frameChanged();
}

void View::sizeChanged(const Size &oldSize)
{
    // Also where they keep their frames: this view's height decides where their widgets are.
    const Size &followed = m_autoresizesSubviews ? oldSize : m_frame.size();
    for (View *view : subviews())
        view->resizeWithSuperview(followed, m_frame.size());
    layout();
    update();
}

void View::resizeWithSuperview(const Size &oldSuperSize, const Size &newSuperSize)
{
    const unsigned mask = m_autoresizingMask;
    const Extent x = distributed({m_frame.x(), m_frame.width()}, newSuperSize.width() - oldSuperSize.width(),
                                 mask & MinXMargin, mask & WidthSizable, mask & MaxXMargin);
    const Extent y =
        distributed({m_frame.y(), m_frame.height()}, newSuperSize.height() - oldSuperSize.height(),
                    mask & MinYMargin, mask & HeightSizable, mask & MaxYMargin);
    setFrame({x.begin, y.begin, x.length, y.length});
}

void View::setVisible(bool visible)
{
    if (!visible)
        giveUpFocus();
    QWidget::setVisible(visible);
    updateShadowArea();
    if (!visible)
        tellTakenAway();
}

void View::setEnabled(bool enabled)
{
    if (!enabled)
        giveUpFocus();
    QWidget::setEnabled(enabled);
    update();
    if (!enabled)
        tellTakenAway();
}

/// Whoever hears of it may take views away.
void View::tellTakenAway()
{
    // Collected before anybody is told, and watched: who is told may delete those that come after.
    QList<QPointer<View>> views;
    for (View *view : findChildren<View *>())
        views.append(view);
    wasTakenAway();
    for (const QPointer<View> &view : views) {
        if (view)
            view->wasTakenAway();
    }
}

void View::setPassesClicksThrough(bool passes)
{
    setAttribute(Qt::WA_TransparentForMouseEvents, passes);
}

void View::setLayerBackgroundColor(const std::optional<Color> &color)
{
    m_layerBackgroundColor = color;
    update();
    tellGroundChanged();
}

QColor View::filling() const
{
    return m_layerBackgroundColor ? m_layerBackgroundColor->toQColor() : QColor();
}

QColor View::ground() const
{
    const QColor own = filling();
    // Each text asks as it is painted; most stand in a box that hides what is behind it.
    if (own.isValid() && own.alpha() == 255)
        return readable::over(own, own);
    const View *around = superview();
    const QColor behind = around ? around->ground() : palette().color(QPalette::Window);
    return own.isValid() ? readable::over(own, behind) : behind;
}

void View::tellGroundChanged()
{
    groundChanged();
    for (View *view : subviews())
        view->tellGroundChanged();
}

void View::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    // Each view in this one has an event of its own.
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange)
        groundChanged();
}

void View::setCornerRadius(double radius)
{
    m_cornerRadius = radius;
    update();
}

void View::setShadow(const std::optional<Shadow> &shadow)
{
    m_shadow = shadow;
    update();
    if (View *around = superview())
        around->update();
}

/// The superview paints the shadow, so it must do so again where the view came, went or moved.
void View::updateShadowArea()
{
    View *around = superview();
    if (m_shadow && around)
        around->update();
}

QRectF View::shadowOutline() const
{
    return rect().toRectF();
}

bool View::becomeFirstResponder()
{
    return false;
}

bool View::isFirstResponder() const
{
    return false;
}

/// A view that was not added to a window's tree yet, or was removed from it, has no window but itself.
bool View::isInWindow() const
{
    const QWidget *top = window();
    return top->isVisible() || !qobject_cast<const View *>(top);
}

bool View::takeFocus(QWidget *target)
{
    if (!isEnabled() || !isInWindow() || !isVisibleTo(window()))
        return false;
    target->setFocus(Qt::OtherFocusReason);
    return window()->focusWidget() == target;
}

void View::giveUpFocus()
{
    QWidget *top = window();
    QWidget *focused = top->focusWidget();
    if (top == this || !focused || (focused != this && !isAncestorOf(focused)))
        return;
    focused->clearFocus();
    // Qt looks for another field to give the focus to when a window without any becomes active.
    top->setFocus(Qt::OtherFocusReason);
}

View *View::nextResponder() const
{
    return m_nextResponder ? m_nextResponder.data() : superview();
}

void View::setNextKeyView(View *next)
{
    m_nextKeyView = next;
    if (next && next->window() == window())
        QWidget::setTabOrder(focusTarget(), next->focusTarget());
}

QWidget *View::focusTarget()
{
    return this;
}

void View::paintEvent(QPaintEvent *)
{
    const bool hasLayer = m_layerBackgroundColor && m_layerBackgroundColor->alpha > 0.0;
    const auto castsShadow = [](const View *view) {
        return view->shadow() && !view->isHidden() && !view->masksToBounds();
    };
    QList<View *> shaded = subviews();
    shaded.removeIf([&](const View *view) { return !castsShadow(view); });
    // Most views only place others, and even to begin to paint costs something.
    if (!hasLayer && shaded.isEmpty())
        return;
    QPainter painter(this);
    if (hasLayer)
        paintFrame(painter, QRectF(rect()), frameOfLayer(m_layerBackgroundColor->toQColor(), m_cornerRadius));
    for (const View *view : shaded)
        paintShadow(painter, *view);
}

/// Of a subview.
void View::paintShadow(QPainter &painter, const View &view)
{
    const Shadow &shadow = *view.m_shadow;
    const double margin = std::ceil(shadow.reach());
    const QRectF outline =
        view.shadowOutline().translated(view.x() + shadow.offset.width(), view.y() - shadow.offset.height());
    paintFrame(painter, outline.adjusted(-margin, -margin, margin, margin), frameOfShadow(shadow));
}

} // namespace platform
