#include "platform/ScrollView.h"

#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr int ScrollerWidth = 12;
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
    return {m_offset.x(), m_documentView->frame().height() - m_offset.y() - clip.height(), clip.width(), clip.height()};
}

/// The document's size is the larger of what it asks for and the clip; its upper left corner keeps the offset.
void ScrollView::placeDocument()
{
    if (!m_documentView)
        return;
    const Size clip = m_contentView->frame().size();
    const Size size = m_wantedSize.expandedTo(clip);
    m_offset = {std::clamp(m_offset.x(), 0.0, size.width() - clip.width()),
                std::clamp(m_offset.y(), 0.0, size.height() - clip.height())};
    const Rect frame(-m_offset.x(), clip.height() - size.height() + m_offset.y(), size.width(), size.height());
    m_documentView->setFrame(frame);
}

void ScrollView::updateScrollers()
{
    const Size clip = m_contentView->frame().size();
    const auto range = [](double wanted, double visible) { return static_cast<int>(std::ceil(wanted - visible)); };
    const int vertical = std::max(0, range(m_wantedSize.height(), clip.height()));
    const int horizontal = std::max(0, range(m_wantedSize.width(), clip.width()));
    const QSignalBlocker blockVertical(m_vertical);
    const QSignalBlocker blockHorizontal(m_horizontal);
    m_vertical->setRange(0, vertical);
    m_vertical->setPageStep(static_cast<int>(clip.height()));
    m_vertical->setSingleStep(static_cast<int>(PointsPerWheelStep / 3.0));
    m_vertical->setValue(static_cast<int>(std::lround(m_offset.y())));
    m_horizontal->setRange(0, horizontal);
    m_horizontal->setPageStep(static_cast<int>(clip.width()));
    m_horizontal->setValue(static_cast<int>(std::lround(m_offset.x())));
    m_vertical->setVisible(m_hasVerticalScroller && vertical > 0);
    m_horizontal->setVisible(m_hasHorizontalScroller && horizontal > 0);
    m_vertical->setGeometry(width() - ScrollerWidth, 0, ScrollerWidth, height());
    m_horizontal->setGeometry(0, height() - ScrollerWidth, width(), ScrollerWidth);
    m_vertical->raise();
    m_horizontal->raise();
}

void ScrollView::layout()
{
    if (m_contentView->frame() != bounds())
        m_contentView->setFrame(bounds());
    placeDocument();
    updateScrollers();
}

void ScrollView::wheelEvent(QWheelEvent *event)
{
    const QPointF step = event->pixelDelta().isNull()
                             ? QPointF(event->angleDelta()) * PointsPerWheelStep / AngleUnitsPerWheelStep
                             : QPointF(event->pixelDelta());
    const Point before = m_offset;
    m_offset -= step;
    placeDocument();
    updateScrollers();
    event->setAccepted(m_documentView && m_offset != before);
}

} // namespace platform
