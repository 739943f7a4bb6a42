#include "presentation/ScrollView.h"

#include "tests/support/Printing.h"
#include "tests/support/Wait.h"

#include <QApplication>
#include <QImage>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

using interactive::ScrollView;
using platform::Rect;
using platform::View;

namespace {

/// Counts the wheel events that reach it, and takes or refuses them.
class WheelWatcher : public View
{
public:
    using View::View;

    int wheels = 0;
    QPoint angle;
    bool takes = true;

protected:
    void wheelEvent(QWheelEvent *event) override
    {
        ++wheels;
        angle = event->angleDelta();
        event->setAccepted(takes);
    }
};

void turnWheel(QWidget *over, int angle)
{
    const QPointF centre = over->rect().center();
    QWheelEvent event(centre, over->mapToGlobal(centre), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    // As if it came from a mouse: only such events travel up the tree.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(over, &event);
}

/// A scroll view of 100 points that shows a document of 400.
std::unique_ptr<ScrollView> innerView()
{
    auto inner = std::make_unique<ScrollView>(Rect(0.0, 0.0, 100.0, 100.0));
    auto *document = new View(Rect(0.0, 0.0, 100.0, 400.0));
    inner->setDocumentView(document);
    inner->setDocumentSize({100.0, 400.0});
    inner->scrollToPoint({0.0, 300.0});
    return inner;
}

TEST(ScrollViewTest, TheWheelScrollsTheEnclosingViewAndNeverTheInnerOne)
{
    platform::ScrollView outer(Rect(0.0, 0.0, 200.0, 200.0));
    outer.setHasVerticalScroller(true);
    auto *document = new View(Rect(0.0, 0.0, 200.0, 1000.0));
    outer.setDocumentView(document);
    outer.setDocumentSize({200.0, 1000.0});
    ScrollView *inner = innerView().release();
    document->addSubview(inner);
    outer.show();
    outer.scrollToPoint({0.0, 600.0});

    const Rect innerSeen = inner->documentVisibleRect();
    const Rect outerSeen = outer.documentVisibleRect();
    ASSERT_EQ(innerSeen.y() + innerSeen.height(), 300.0);
    turnWheel(inner->documentView(), -120);
    EXPECT_EQ(inner->documentVisibleRect(), innerSeen);
    EXPECT_LT(outer.documentVisibleRect().y(), outerSeen.y());
    turnWheel(inner, 240);
    EXPECT_EQ(inner->documentVisibleRect(), innerSeen);
    EXPECT_GT(outer.documentVisibleRect().y(), outerSeen.y());
}

TEST(ScrollViewTest, TheSameEventReachesTheEnclosingViewOnce)
{
    WheelWatcher enclosing(Rect(0.0, 0.0, 200.0, 200.0));
    ScrollView *inner = innerView().release();
    enclosing.addSubview(inner);
    turnWheel(inner, -120);
    EXPECT_EQ(enclosing.wheels, 1);
    EXPECT_EQ(enclosing.angle, QPoint(0, -120));
}

TEST(ScrollViewTest, AnEnclosingViewThatRefusesTheEventIsAskedOnce)
{
    WheelWatcher enclosing(Rect(0.0, 0.0, 200.0, 200.0));
    enclosing.takes = false;
    ScrollView *inner = innerView().release();
    enclosing.addSubview(inner);
    turnWheel(inner, -120);
    EXPECT_EQ(enclosing.wheels, 1);
}

TEST(ScrollViewTest, TheNextResponderIsAskedInPlaceOfTheSuperview)
{
    WheelWatcher enclosing(Rect(0.0, 0.0, 200.0, 200.0));
    WheelWatcher next(Rect(0.0, 0.0, 50.0, 50.0));
    ScrollView *inner = innerView().release();
    enclosing.addSubview(inner);
    inner->setNextResponder(&next);
    turnWheel(inner, 120);
    EXPECT_EQ(next.wheels, 1);
    EXPECT_EQ(enclosing.wheels, 0);
}

TEST(ScrollViewTest, WithoutANextResponderTheEventIsDropped)
{
    const std::unique_ptr<ScrollView> inner = innerView();
    const Rect seen = inner->documentVisibleRect();
    turnWheel(inner.get(), -120);
    turnWheel(inner.get(), 120);
    EXPECT_EQ(inner->documentVisibleRect(), seen);
}

TEST(ScrollViewTest, ItLooksLikeAnyScrollView)
{
    const auto picture = [](platform::ScrollView &shown) {
        auto *document = new View(Rect(0.0, 0.0, 100.0, 100.0));
        document->setLayerBackgroundColor(platform::Color::systemBlue());
        shown.setDocumentView(document);
        QImage image(100, 100, QImage::Format_ARGB32);
        image.fill(Qt::white);
        shown.render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    };
    platform::ScrollView plain(Rect(0.0, 0.0, 100.0, 100.0));
    ScrollView forwarding(Rect(0.0, 0.0, 100.0, 100.0));
    EXPECT_EQ(picture(forwarding), picture(plain));
}

} // namespace
