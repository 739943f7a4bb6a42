#pragma once

#include "platform/View.h"

class QScrollBar;

namespace platform {

/// Shows a part of a document view that may be larger than itself.
///
/// The content view is the window onto the document; the document is a subview of it. The document is never
/// lower than the content view, nor narrower than the scroll view: it grows with them, and keeps the size it
/// asks for when that is larger. Scrollers appear where they are allowed and needed, beside the content view.
/// The wheel scrolls with or without them, and goes on to whoever holds the view when there is nothing left
/// to scroll. When the view is resized the document's upper left visible corner stays where it is.
/// The document is filled with the window's colour. Without a document nothing scrolls: the content view
/// fills the bounds, and its subviews keep to their masks. Thread: the main thread. Ownership: owns content
/// view and document view.
class ScrollView : public View
{
    Q_OBJECT
    Q_PROPERTY(bool hasVerticalScroller READ hasVerticalScroller WRITE setHasVerticalScroller)
    Q_PROPERTY(bool hasHorizontalScroller READ hasHorizontalScroller WRITE setHasHorizontalScroller)
public:
    explicit ScrollView(QWidget *parent = nullptr);
    explicit ScrollView(const Rect &frame);

    [[nodiscard]] View *contentView() const { return m_contentView; }
    [[nodiscard]] View *documentView() const { return m_documentView; }
    /// Puts the document into the content view; a former document is removed. Requires: not null.
    void setDocumentView(View *document);
    /// The size that the document asks for, also a smaller one than before; the content view's size where
    /// that is larger is used instead.
    void setDocumentSize(const Size &size);
    [[nodiscard]] Size documentSize() const { return m_wantedSize; }

    [[nodiscard]] bool hasVerticalScroller() const { return m_hasVerticalScroller; }
    void setHasVerticalScroller(bool has);
    [[nodiscard]] bool hasHorizontalScroller() const { return m_hasHorizontalScroller; }
    void setHasHorizontalScroller(bool has);
    /// Puts the knobs of the scrollers to their beginning (top and left); the document stays where it is, and
    /// the knobs follow it again when it is next scrolled or resized.
    void resetScrollers();

    /// Scrolls so that the point of the document (bottom-left origin) is at the content view's upper left
    /// corner, as far as the document reaches.
    void scrollToPoint(const Point &point);
    /// Scrolls as little as needed so that the rectangle of the document (bottom-left origin) can be seen; of
    /// one that is larger than what can be seen, its upper left corner.
    void scrollToVisible(const Rect &rect);
    /// Scrolls down by so many heights of what can be seen, up where negative; false when nothing moved.
    bool scrollByPages(double pages);
    /// Scrolls the views that scroll and hold this one in their documents, so that it can be seen; nothing
    /// for a view that is hidden or null.
    static void reveal(const View *view);
    /// The part of the document that can be seen, in the document's coordinates; not what lies below
    /// scrollers.
    [[nodiscard]] Rect documentVisibleRect() const;

protected:
    void wheelEvent(QWheelEvent *event) override;
    void layout() override;

private:
    void arrange();
    [[nodiscard]] Size uncovered() const;
    void placeContent();
    void placeDocument();
    void updateScrollers();
    void raiseScrollers();
    void updateScroller(QScrollBar *scroller, double range, double offset, double page);

    View *m_contentView = nullptr;
    QPointer<View> m_documentView;
    QScrollBar *m_vertical = nullptr;
    QScrollBar *m_horizontal = nullptr;
    Size m_wantedSize;
    Point m_offset; ///< Distance of the visible part from the document's upper left corner.
    bool m_hasVerticalScroller = false;
    bool m_hasHorizontalScroller = false;
    bool m_showsVertical = false;
    bool m_showsHorizontal = false;
};

} // namespace platform
