#include "platform/ScrollView.h"

#include "tests/platform/ViewFixture.h"

#include <QPaintEvent>
#include <QScrollBar>

namespace {

using namespace platform;

/// A scroll view of 100 by 100 points whose document wants more.
class ScrollViewTest : public testsupport::ViewFixture
{
protected:
    ScrollViewTest()
    {
        scroll->setDocumentView(document);
        scroll->setHasVerticalScroller(true);
        scroll->setHasHorizontalScroller(true);
        for (QScrollBar *bar : scroll->findChildren<QScrollBar *>())
            (bar->orientation() == Qt::Vertical ? vertical : horizontal) = bar;
    }

    void wants(double width, double height)
    {
        scroll->setDocumentSize({width, height});
        scroll->scrollToPoint({0, document->frame().height()});
    }
    [[nodiscard]] Rect seen() const { return scroll->documentVisibleRect(); }

    ScrollView *scroll = add<ScrollView>({10, 10, 100, 100});
    View *document = new View(Rect(0, 0, 50, 50));
    QScrollBar *vertical = nullptr;
    QScrollBar *horizontal = nullptr;
};

TEST_F(ScrollViewTest, ADocumentThatFitsHasNoScrollersAndFillsTheView)
{
    wants(100, 100);
    EXPECT_TRUE(vertical->isHidden());
    EXPECT_TRUE(horizontal->isHidden());
    EXPECT_EQ(document->frame(), Rect(0, 0, 100, 100));
}

TEST_F(ScrollViewTest, TheScrollersLieAtTheEdgesAndNotOverEachOther)
{
    wants(300, 400);
    EXPECT_EQ(scroll->contentView()->frame(), Rect(0, 12, 88, 88)) << "between them";
    EXPECT_EQ(vertical->geometry(), QRect(88, 0, 12, 88));
    EXPECT_EQ(horizontal->geometry(), QRect(0, 88, 88, 12));
    EXPECT_FALSE(vertical->isHidden());
    EXPECT_FALSE(horizontal->isHidden());
    EXPECT_EQ(seen(), Rect(0, 312, 88, 88)) << "what lies below them is not seen";
}

TEST_F(ScrollViewTest, TheLastPointsOfTheDocumentCanBeSeen)
{
    wants(300, 400);
    vertical->setValue(vertical->maximum());
    horizontal->setValue(horizontal->maximum());
    EXPECT_EQ(seen(), Rect(212, 0, 88, 88));
    EXPECT_EQ(document->mapTo(scroll, QPoint(299, 399)), QPoint(87, 87)) << "beside the scrollers";
}

TEST_F(ScrollViewTest, WhatAScrollerCoversMayMakeTheOtherOneNeeded)
{
    wants(95, 400);
    EXPECT_FALSE(horizontal->isHidden());
    wants(400, 95);
    EXPECT_FALSE(vertical->isHidden());
    wants(80, 400);
    EXPECT_TRUE(horizontal->isHidden());
}

TEST_F(ScrollViewTest, AScrollerThatIsNotAllowedCoversNothing)
{
    scroll->setHasVerticalScroller(false);
    wants(100, 400);
    EXPECT_TRUE(vertical->isHidden());
    EXPECT_EQ(seen().width(), 100);
    EXPECT_TRUE(horizontal->isHidden());
}

TEST_F(ScrollViewTest, AVerySmallViewScrollsToEverything)
{
    scroll->setFrame({10, 10, 30, 25});
    wants(300, 400);
    vertical->setValue(vertical->maximum());
    horizontal->setValue(horizontal->maximum());
    EXPECT_EQ(seen(), Rect(282, 0, 18, 13));
    scroll->setFrame({10, 10, 5, 5});
    EXPECT_EQ(seen().size(), Size(0, 0));
    scroll->setFrame({10, 10, 100, 100});
    EXPECT_EQ(seen().size(), Size(88, 88));
}

TEST_F(ScrollViewTest, TheDocumentShrinksWhenItAsksForLess)
{
    wants(1000, 2000);
    scroll->scrollToPoint({900, 100});
    scroll->setDocumentSize({60, 300});
    EXPECT_EQ(document->frame().size(), Size(100, 300));
    EXPECT_EQ(seen().x(), 0);
    scroll->setDocumentSize({60, 60});
    EXPECT_EQ(document->frame(), Rect(0, 0, 100, 100));
    EXPECT_TRUE(vertical->isHidden());
}

TEST_F(ScrollViewTest, TheDocumentEndsAboveTheHorizontalScroller)
{
    wants(300, 60);
    EXPECT_EQ(document->frame(), Rect(0, 0, 300, 88));
    EXPECT_EQ(seen(), Rect(0, 0, 88 + 12, 88));
}

TEST_F(ScrollViewTest, WhatCanBeSeenIsNotScrolledTo)
{
    wants(300, 400);
    scroll->scrollToPoint({50, 300});
    const Rect before = seen();
    scroll->scrollToVisible({60, 220, 20, 20});
    EXPECT_EQ(seen(), before);
    scroll->scrollToVisible(before);
    EXPECT_EQ(seen(), before);
}

TEST_F(ScrollViewTest, WhatCannotBeSeenIsScrolledToAsLittleAsNeeded)
{
    wants(300, 400);
    scroll->scrollToVisible({200, 100, 20, 30});
    EXPECT_EQ(seen(), Rect(132, 100, 88, 88)) << "from the upper left corner";
    scroll->scrollToVisible({100, 250, 20, 30});
    EXPECT_EQ(seen(), Rect(100, 192, 88, 88)) << "from below and from the right";
}

TEST_F(ScrollViewTest, OfWhatIsTooLargeTheUpperLeftCornerIsScrolledTo)
{
    wants(300, 400);
    scroll->scrollToVisible({60, 50, 200, 250});
    EXPECT_EQ(seen(), Rect(60, 212, 88, 88));
    scroll->scrollToVisible({20, 10, 30, 250});
    EXPECT_EQ(seen(), Rect(20, 172, 88, 88));
}

TEST_F(ScrollViewTest, ScrollingBeyondTheDocumentEndsAtItsEdge)
{
    wants(300, 400);
    scroll->scrollToVisible({290, -50, 100, 60});
    EXPECT_EQ(seen(), Rect(212, 0, 88, 88));
}

TEST_F(ScrollViewTest, AViewInTheDocumentIsRevealedWhateverHoldsItThere)
{
    wants(300, 400);
    auto *around = new View(Rect(150, 50, 100, 100));
    auto *view = new View(Rect(50, 50, 20, 30));
    around->addSubview(view);
    document->addSubview(around);
    ScrollView::reveal(view);
    EXPECT_EQ(seen(), Rect(132, 100, 88, 88));
}

TEST_F(ScrollViewTest, WhatIsHiddenOrElsewhereIsNotRevealed)
{
    wants(300, 400);
    auto *hidden = new View(Rect(200, 100, 20, 30));
    hidden->setHidden(true);
    document->addSubview(hidden);
    const Rect before = seen();
    ScrollView::reveal(hidden);
    ScrollView::reveal(add<View>({200, 100, 20, 30}));
    ScrollView::reveal(nullptr);
    EXPECT_EQ(seen(), before);
}

/// Notes what of it is painted.
class PaintedView : public View
{
public:
    using View::View;
    QRegion painted;

protected:
    void paintEvent(QPaintEvent *event) override { painted += event->region(); }
};

TEST_F(ScrollViewTest, WhatIsSeenAlreadyIsNotPaintedAgainWhenItIsScrolled)
{
    wants(300, 400);
    auto *painted = new PaintedView(Rect(0, 0, 300, 400));
    document->addSubview(painted);
    settle();
    ASSERT_EQ(seen(), Rect(0, 312, 88, 88));
    painted->painted = QRegion();
    scroll->scrollToPoint({0, 390});
    settle();
    EXPECT_EQ(painted->painted.boundingRect(), QRect(0, 88, 88, 10)) << "what has come into sight";
    painted->painted = QRegion();
    scroll->scrollToPoint({5, 390});
    settle();
    EXPECT_EQ(painted->painted.boundingRect(), QRect(88, 10, 5, 88));
}

TEST_F(ScrollViewTest, TheDocumentIsFilledWithTheColourOfTheWindow)
{
    wants(100, 400);
    EXPECT_EQ(picture(document).pixelColor(50, 50), window.palette().color(QPalette::Window));
}

TEST_F(ScrollViewTest, WithoutADocumentNothingScrolls)
{
    auto *empty = add<ScrollView>({200, 10, 100, 100});
    empty->setHasVerticalScroller(true);
    empty->setDocumentSize({300, 400});
    empty->scrollToVisible({10, 10, 10, 10});
    EXPECT_EQ(empty->contentView()->frame(), Rect(0, 0, 100, 100));
}

/// Counts how often a scroller is lifted above others, which paints it anew.
class Raises : public QObject
{
public:
    int count = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::ZOrderChange ? 1 : 0;
        return false;
    }
};

TEST_F(ScrollViewTest, ScrollersAreLiftedOnlyWhereSomethingLiesAboveThem)
{
    wants(500, 500);
    Raises raises;
    vertical->installEventFilter(&raises);
    scroll->scrollToPoint({0, 300});
    EXPECT_EQ(raises.count, 0);
    auto *above = new View(Rect(0, 0, 100, 100));
    scroll->addSubview(above);
    scroll->scrollToPoint({0, 200});
    EXPECT_EQ(raises.count, 1);
    EXPECT_EQ(scroll->children().last(), horizontal);
}

} // namespace
