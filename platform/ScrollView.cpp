#include "platform/ScrollView.h"

#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr int ScrollerWidth = 12;
constexpr int PointsPerClick = 20;
constexpr double PointsPerWheelStep = 60.0;
constexpr double AngleUnitsPerWheelStep = 120.0;

/// Where a range that is seen must begin, as near as possible to where it begins now, so that another one
/// lies in it; where it must begin for one that is longer.
double nearest(double seenBegin, double seenLength, double begin, double length, double beginOfLonger)
{
    if (length > seenLength)
        return beginOfLonger;
    return std::clamp(seenBegin, begin + length - seenLength, begin);
}

} // namespace

ScrollView::ScrollView(QWidget *parent)
    : View(parent)
    , m_contentView(new View(static_cast<QWidget *>(this)))
    , m_vertical(new QScrollBar(Qt::Vertical, this))
    , m_horizontal(new QScrollBar(Qt::Horizontal, this))
{
    m_contentView->setAutoresizingMask(WidthSizable | HeightSizable);
    m_vertical->hide();
    m_horizontal->hide();
    connect(m_vertical, &QScrollBar::valueChanged, this, [this](int value) {
        m_offset.setY(value);
        placeDocument();
    });
    connect(m_horizontal, &QScrollBar::valueChanged, this, [this](int value) {
        m_offset.setX(value);
        placeDocument();
    });
}

ScrollView::ScrollView(const Rect &frame)
    : ScrollView(static_cast<QWidget *>(nullptr))
{
    setFrame(frame);
}

void ScrollView::setDocumentView(View *document)
{
    if (m_documentView && m_documentView != document)
        m_documentView->removeFromSuperview();
    m_documentView = document;
    m_contentView->addSubview(document);
    arrange();
}

void ScrollView::setDocumentSize(const Size &size)
{
    m_wantedSize = size;
    arrange();
}

void ScrollView::setHasVerticalScroller(bool has)
{
    m_hasVerticalScroller = has;
    arrange();
}

void ScrollView::setHasHorizontalScroller(bool has)
{
    m_hasHorizontalScroller = has;
    arrange();
}

void ScrollView::resetScrollers()
{
    const QSignalBlocker vertical(m_vertical);
    const QSignalBlocker horizontal(m_horizontal);
    m_vertical->setValue(0);
    m_horizontal->setValue(0);
}

void ScrollView::scrollToPoint(const Point &point)
{
    if (!m_documentView)
        return;
    m_offset = {point.x(), m_documentView->frame().height() - point.y()};
    placeDocument();
    updateScrollers();
}

void ScrollView::scrollToVisible(const Rect &rect)
{
    const Rect seen = documentVisibleRect();
    const double left = nearest(seen.x(), seen.width(), rect.x(), rect.width(), rect.x());
    const double low =
        nearest(seen.y(), seen.height(), rect.y(), rect.height(), rect.y() + rect.height() - seen.height());
    scrollToPoint({left, low + seen.height()});
}

Rect ScrollView::documentVisibleRect() const
{
    if (!m_documentView)
        return {};
    const Size clip = m_contentView->frame().size();
    return {m_offset.x(), m_documentView->frame().height() - m_offset.y() - clip.height(), clip.width(),
            clip.height()};
}

/// The document's size is the larger of what it asks for and the clip; its upper left corner keeps the
/// offset.
void ScrollView::placeDocument()
{
    if (!m_documentView)
        return;
    const Size clip = m_contentView->frame().size();
    const Size size = m_wantedSize.expandedTo(clip);
    m_offset = {std::clamp(m_offset.x(), 0.0, size.width() - clip.width()),
                std::clamp(m_offset.y(), 0.0, size.height() - clip.height())};
    const Rect frame(-m_offset.x(), clip.height() - size.height() + m_offset.y(), size.width(),
                     size.height());
    m_documentView->setFrame(frame);
}

void ScrollView::arrange()
{
    const Size whole = bounds().size();
    bool vertical = m_documentView && m_hasVerticalScroller && m_wantedSize.height() > whole.height();
    const double width = whole.width() - (vertical ? ScrollerWidth : 0);
    const bool horizontal = m_documentView && m_hasHorizontalScroller && m_wantedSize.width() > width;
    const double height = whole.height() - (horizontal ? ScrollerWidth : 0);
    // The room that the horizontal scroller takes may be what makes the vertical one needed.
    vertical = m_documentView && m_hasVerticalScroller && m_wantedSize.height() > height;
    const double left = std::max(0.0, whole.width() - (vertical ? ScrollerWidth : 0));
    m_contentView->setFrame({0.0, whole.height() - std::max(0.0, height), left, std::max(0.0, height)});
    placeDocument();
    updateScrollers();
    m_vertical->setVisible(vertical);
    m_horizontal->setVisible(horizontal);
}

void ScrollView::updateScrollers()
{
    const Rect clip = m_contentView->frame();
    updateScroller(m_vertical, m_wantedSize.height() - clip.height(), m_offset.y(), clip.height());
    updateScroller(m_horizontal, m_wantedSize.width() - clip.width(), m_offset.x(), clip.width());
    const QRect seen = m_contentView->geometry();
    m_vertical->setGeometry(seen.x() + seen.width(), 0, ScrollerWidth, seen.height());
    m_horizontal->setGeometry(0, seen.y() + seen.height(), seen.width(), ScrollerWidth);
    m_vertical->raise();
    m_horizontal->raise();
}

void ScrollView::updateScroller(QScrollBar *scroller, double range, double offset, double page)
{
    const QSignalBlocker blocker(scroller);
    scroller->setRange(0, m_documentView ? std::max(0, static_cast<int>(std::ceil(range))) : 0);
    scroller->setPageStep(static_cast<int>(page));
    scroller->setSingleStep(PointsPerClick);
    scroller->setValue(static_cast<int>(std::lround(offset)));
}

void ScrollView::layout()
{
    arrange();
}

void ScrollView::wheelEvent(QWheelEvent *event)
{
    event->ignore();
    if (!m_documentView)
        return;
    // Pixels are exact only where a gesture's phases are told with them.
    const bool isGesture = event->phase() != Qt::NoScrollPhase && !event->pixelDelta().isNull();
    const Point before = m_offset;
    m_offset -= isGesture ? QPointF(event->pixelDelta())
                          : QPointF(event->angleDelta()) * PointsPerWheelStep / AngleUnitsPerWheelStep;
    placeDocument();
    updateScrollers();
    event->setAccepted(m_offset != before);
}

} // namespace platform
