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
    placeDocument();
    updateScrollers();
}

void ScrollView::setDocumentSize(const Size &size)
{
    m_wantedSize = size;
    placeDocument();
    updateScrollers();
}

void ScrollView::setHasVerticalScroller(bool has)
{
    m_hasVerticalScroller = has;
    updateScrollers();
}

void ScrollView::setHasHorizontalScroller(bool has)
{
    m_hasHorizontalScroller = has;
    updateScrollers();
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

void ScrollView::updateScrollers()
{
    const Size clip = m_contentView->frame().size();
    updateScroller(m_vertical, m_wantedSize.height() - clip.height(), m_offset.y(), clip.height());
    updateScroller(m_horizontal, m_wantedSize.width() - clip.width(), m_offset.x(), clip.width());
    const bool vertical = m_hasVerticalScroller && m_vertical->maximum() > 0;
    const bool horizontal = m_hasHorizontalScroller && m_horizontal->maximum() > 0;
    // Where both are shown they leave the corner between them free.
    m_vertical->setGeometry(width() - ScrollerWidth, 0, ScrollerWidth,
                            height() - (horizontal ? ScrollerWidth : 0));
    m_horizontal->setGeometry(0, height() - ScrollerWidth, width() - (vertical ? ScrollerWidth : 0),
                              ScrollerWidth);
    m_vertical->setVisible(vertical);
    m_horizontal->setVisible(horizontal);
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
    m_contentView->setFrame(bounds());
    placeDocument();
    updateScrollers();
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
