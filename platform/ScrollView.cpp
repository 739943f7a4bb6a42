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
    m_vertical->hide();
    m_horizontal->hide();
    m_vertical->setAccessibleName(QStringLiteral("Scroll up and down"));
    m_horizontal->setAccessibleName(QStringLiteral("Scroll left and right"));
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
    // Filled with the window's colour: the toolkit then moves what is painted instead of painting it anew.
    document->setAutoFillBackground(true);
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
    // Only the knobs go back: heard, it would scroll the document, too.
    const QSignalBlocker vertical(m_vertical);
    const QSignalBlocker horizontal(m_horizontal);
    m_vertical->setValue(0);
    m_horizontal->setValue(0);
}

void ScrollView::scrollToPoint(const Point &point)
{
    if (!m_documentView)
        return;
    // The offset counts from the upper left corner, the point from the lower one.
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

bool ScrollView::scrollByPages(double pages)
{
    const Rect seen = documentVisibleRect();
    const Point before = m_offset;
    scrollToPoint({seen.x(), seen.y() + seen.height() * (1.0 - pages)});
    return m_offset != before;
}

void ScrollView::reveal(const View *view)
{
    if (!view)
        return;
    Rect rect = view->bounds();
    for (const View *each = view; each; each = each->superview()) {
        const View *clip = each->superview();
        auto *around = clip ? qobject_cast<ScrollView *>(clip->superview()) : nullptr;
        if (around && around->documentView() == each && view->isVisibleTo(around))
            around->scrollToVisible(rect);
        rect.translate(each->frame().x(), each->frame().y());
    }
}

Rect ScrollView::documentVisibleRect() const
{
    if (!m_documentView)
        return {};
    const Size seen = uncovered();
    return {m_offset.x(), m_documentView->frame().height() - m_offset.y() - seen.height(), seen.width(),
            seen.height()};
}

/// The part of the bounds that no scroller lies over.
Size ScrollView::uncovered() const
{
    const Size clip = bounds().size();
    return {std::max(0.0, clip.width() - (m_showsVertical ? ScrollerWidth : 0)),
            std::max(0.0, clip.height() - (m_showsHorizontal ? ScrollerWidth : 0))};
}

/// The document's size is the larger of what it asks for and the clip; its upper left corner keeps the
/// offset.
void ScrollView::placeDocument()
{
    if (!m_documentView)
        return;
    const Size seen = uncovered();
    // As wide as without a vertical scroller, which comes and goes: panels would be laid out anew.
    const Size size = m_wantedSize.expandedTo({bounds().width(), seen.height()});
    const Size hidden = (m_wantedSize - seen).expandedTo({0.0, 0.0});
    m_offset = {std::clamp(m_offset.x(), 0.0, hidden.width()),
                std::clamp(m_offset.y(), 0.0, hidden.height())};
    const Rect frame(-m_offset.x(), seen.height() - size.height() + m_offset.y(), size.width(),
                     size.height());
    m_documentView->setFrame(frame);
}

/// Shows the scrollers that are needed, and places the document.
void ScrollView::arrange()
{
    const Size clip = bounds().size();
    const bool mayShowVertical = m_documentView && m_hasVerticalScroller;
    const bool mayShowHorizontal = m_documentView && m_hasHorizontalScroller;
    m_showsHorizontal = mayShowHorizontal && m_wantedSize.width() > clip.width();
    m_showsVertical = mayShowVertical && m_wantedSize.height() > uncovered().height();
    // What the one covers may be what makes the other one needed.
    m_showsHorizontal = mayShowHorizontal && m_wantedSize.width() > uncovered().width();
    m_showsVertical = mayShowVertical && m_wantedSize.height() > uncovered().height();
    placeContent();
    placeDocument();
    updateScrollers();
}

/// Between the scrollers: what something lies over is painted anew when it is scrolled.
void ScrollView::placeContent()
{
    m_contentView->setFrame({Point(0.0, bounds().height() - uncovered().height()), uncovered()});
}

void ScrollView::updateScrollers()
{
    const Size seen = uncovered();
    updateScroller(m_vertical, m_wantedSize.height() - seen.height(), m_offset.y(), seen.height());
    updateScroller(m_horizontal, m_wantedSize.width() - seen.width(), m_offset.x(), seen.width());
    // Where both are shown they leave the corner between them free.
    m_vertical->setGeometry(width() - ScrollerWidth, 0, ScrollerWidth,
                            std::max(0, height() - (m_showsHorizontal ? ScrollerWidth : 0)));
    m_horizontal->setGeometry(0, height() - ScrollerWidth,
                              std::max(0, width() - (m_showsVertical ? ScrollerWidth : 0)), ScrollerWidth);
    m_vertical->setVisible(m_showsVertical);
    m_horizontal->setVisible(m_showsHorizontal);
    raiseScrollers();
}

/// To raise what lies above all others already would paint it anew.
void ScrollView::raiseScrollers()
{
    const QObjectList &all = children();
    const qsizetype count = all.size();
    if (all.at(count - 1) == m_horizontal && all.at(count - 2) == m_vertical)
        return;
    m_vertical->raise();
    m_horizontal->raise();
}

void ScrollView::updateScroller(QScrollBar *scroller, double range, double offset, double page)
{
    // The scroller shows what is so already; heard, a value that it cuts off would move the document.
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
    // Not ours until something has moved.
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
    // At an end the wheel goes on to whatever is around.
    event->setAccepted(m_offset != before);
}

} // namespace platform
