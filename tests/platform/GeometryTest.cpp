#include "tests/platform/ViewFixture.h"

#include <QSignalSpy>

#include <vector>

namespace {

using namespace platform;

/// Frames are compared bit by bit; QRectF's own comparison takes nearly equal for equal.
bool isExactly(const Rect &a, const Rect &b)
{
    return a.x() == b.x() && a.y() == b.y() && a.width() == b.width() && a.height() == b.height();
}

class GeometryTest : public testsupport::ViewFixture
{};

TEST_F(GeometryTest, AFrameIsKeptExactly)
{
    const Rect frame(10.1, 20.7, 30.000000000001, 12.5);
    EXPECT_TRUE(isExactly(add(frame)->frame(), frame));
}

TEST_F(GeometryTest, BoundsBeginAtTheOriginAndHaveTheFramesSize)
{
    EXPECT_EQ(add({10.5, 20, 30.25, 40})->bounds(), Rect(0, 0, 30.25, 40));
}

TEST_F(GeometryTest, AFrameCountsFromTheLowerLeftCorner)
{
    EXPECT_EQ(add({10, 20, 30, 40})->geometry(), QRect(10, 240, 30, 40));
}

TEST_F(GeometryTest, AViewMovesWithItsOrigin)
{
    View *view = add({10, 20, 30, 40});
    view->setFrameOrigin({50, 60});
    EXPECT_EQ(view->frame(), Rect(50, 60, 30, 40));
    EXPECT_EQ(view->geometry(), QRect(50, 200, 30, 40));
}

TEST_F(GeometryTest, AFrameSetBeforeTheViewIsAddedPlacesItWhenItIs)
{
    View view(Rect(0, 0, 100, 50));
    auto *child = new View(Rect(5, 5, 10, 10));
    view.addSubview(child);
    EXPECT_EQ(child->geometry(), QRect(5, 35, 10, 10));
}

TEST_F(GeometryTest, NeighboursWithFractionsMeetWithoutGapOrOverlap)
{
    constexpr double side = 10.3;
    std::vector<View *> column;
    std::vector<View *> row;
    for (int i = 0; i < 20; ++i) {
        column.push_back(add({0, side * i, side, side}));
        row.push_back(add({side * i, 0, side, side}));
    }
    for (std::size_t i = 1; i < column.size(); ++i) {
        EXPECT_EQ(column[i]->geometry().bottom() + 1, column[i - 1]->geometry().top()) << i;
        EXPECT_EQ(row[i - 1]->geometry().right() + 1, row[i]->geometry().left()) << i;
    }
}

TEST_F(GeometryTest, ANegativeSizeIsKeptAndShownAsNothing)
{
    View *view = add({10, 10, -5, -7});
    EXPECT_EQ(view->frame(), Rect(10, 10, -5, -7));
    EXPECT_EQ(view->size(), QSize(0, 0));
}

TEST_F(GeometryTest, AViewKeepsToTheLowerEdgeWhenItsSuperviewGrows)
{
    View *superview = add({0, 0, 100, 100});
    View *view = add({10, 20, 30, 40}, superview);
    superview->setFrame({0, 0, 100, 150});
    EXPECT_EQ(view->frame(), Rect(10, 20, 30, 40));
    EXPECT_EQ(view->geometry(), QRect(10, 90, 30, 40));
}

TEST_F(GeometryTest, AShrunkenViewGrowsBackToWhatItWas)
{
    View *superview = add({0, 0, 100, 100});
    View *view = add({10, 10, 80, 80}, superview);
    view->setAutoresizingMask(WidthSizable | HeightSizable);
    superview->setFrame({0, 0, 5, 5});
    EXPECT_EQ(view->frame(), Rect(10, 10, -15, -15));
    superview->setFrame({0, 0, 100, 100});
    EXPECT_EQ(view->frame(), Rect(10, 10, 80, 80));
    EXPECT_EQ(view->geometry(), QRect(10, 10, 80, 80));
}

TEST_F(GeometryTest, EachLevelOfTheTreeFollows)
{
    View *outer = add({0, 0, 100, 100});
    View *middle = add({10, 10, 50, 50}, outer);
    View *inner = add({5, 5, 20, 20}, middle);
    middle->setAutoresizingMask(WidthSizable);
    inner->setAutoresizingMask(MinXMargin);
    outer->setFrame({0, 0, 140, 100});
    EXPECT_EQ(middle->frame(), Rect(10, 10, 90, 50));
    EXPECT_EQ(inner->frame(), Rect(45, 5, 20, 20));
}

TEST_F(GeometryTest, ARootFollowsTheWidgetThatHoldsIt)
{
    View *view = add({390, 290, 10, 10});
    view->setAutoresizingMask(MinXMargin | MinYMargin);
    root->resize(500, 330);
    EXPECT_EQ(root->frame().size(), Size(500, 330));
    EXPECT_EQ(view->frame(), Rect(490, 320, 10, 10));
    EXPECT_EQ(view->geometry(), QRect(490, 0, 10, 10));
}

TEST_F(GeometryTest, ARootThatIsAWindowFollowsTheWindow)
{
    View top(Rect(0, 0, 200, 100));
    View *view = add({0, 0, 50, 50}, &top);
    view->setAutoresizingMask(WidthSizable);
    top.show();
    top.resize(260, 100);
    settle();
    EXPECT_EQ(top.frame().size(), Size(260, 100));
    EXPECT_EQ(view->frame(), Rect(0, 0, 110, 50));
}

TEST_F(GeometryTest, ARootKeepsItsFractionsWhenItIsShown)
{
    View top(Rect(0, 0, 200.4, 100.25));
    top.show();
    settle();
    EXPECT_TRUE(isExactly(top.frame(), {0, 0, 200.4, 100.25}));
}

TEST_F(GeometryTest, AViewMadeByAnInterfaceFileTakesItsFrameAndMaskFromProperties)
{
    View top;
    top.setProperty("frame", QVariant(QRectF(0, 0, 200, 100)));
    auto *view = new View(static_cast<QWidget *>(&top));
    view->setProperty("frame", QVariant(QRectF(10, 20, 30.5, 40)));
    view->setProperty("autoresizingMask", QVariant(18u));
    EXPECT_EQ(view->frame(), Rect(10, 20, 30.5, 40));
    EXPECT_EQ(view->geometry(), QRect(10, 40, 31, 40));
    EXPECT_EQ(view->autoresizingMask(), unsigned(WidthSizable | HeightSizable));
    EXPECT_EQ(view->superview(), &top);
}

TEST_F(GeometryTest, AChangedFrameIsToldOnceAfterTheSubviewsFollowed)
{
    View *superview = add({0, 0, 100, 100});
    View *view = add({0, 0, 10, 10}, superview);
    view->setAutoresizingMask(WidthSizable);
    double widthWhenTold = 0;
    QObject::connect(superview, &View::frameChanged, &target, [&] { widthWhenTold = view->frame().width(); });
    const QSignalSpy told(superview, &View::frameChanged);
    superview->setFrame({0, 0, 130, 100});
    EXPECT_EQ(told.count(), 1);
    EXPECT_EQ(widthWhenTold, 40);
}

TEST_F(GeometryTest, AFrameThatStaysIsNotTold)
{
    View *superview = add({0, 0, 100, 100});
    View *view = add({0, 0, 10, 10}, superview);
    const QSignalSpy told(view, &View::frameChanged);
    view->setFrame({0, 0, 10, 10});
    superview->setFrame({0, 0, 100, 130});
    EXPECT_EQ(told.count(), 0);
}

/// One axis of a view that lies at 20 and is 30 long in a superview that grows from 100 to 160 or shrinks
/// to 70.
struct Axis
{
    double beginGrown;
    double lengthGrown;
    double beginShrunk;
    double lengthShrunk;
};

/// By the bits of an axis: 1 the margin before, 2 the length, 4 the margin behind.
constexpr Axis expected[8] = {
    {20, 30, 20, 30},  // none: keeps to the lower or left edge
    {80, 30, -10, 30}, // margin before
    {20, 90, 20, 0},   // length
    {50, 60, 5, 15},   // margin before and length
    {20, 30, 20, 30},  // margin behind
    {50, 30, 5, 30},   // both margins
    {20, 60, 20, 15},  // length and margin behind
    {40, 50, 10, 20},  // all three
};

class AutoresizingTest : public testsupport::ViewFixture, public ::testing::WithParamInterface<unsigned>
{
protected:
    View *superview = add({0, 0, 100, 100});
    View *view = add({20, 20, 30, 30}, superview);
    const Axis &x = expected[GetParam() & 7u];
    const Axis &y = expected[GetParam() >> 3u];
};

TEST_P(AutoresizingTest, TheDifferenceIsSharedEquallyByWhatMayChange)
{
    view->setAutoresizingMask(GetParam());
    superview->setFrame({0, 0, 160, 70});
    const Rect wider(x.beginGrown, y.beginShrunk, x.lengthGrown, y.lengthShrunk);
    EXPECT_EQ(view->frame(), wider);
    EXPECT_EQ(view->geometry(),
              QRectF(wider.x(), 70 - wider.y() - wider.height(), wider.width(), wider.height()).toRect());
}

TEST_P(AutoresizingTest, BothAxesAreIndependent)
{
    view->setAutoresizingMask(GetParam());
    superview->setFrame({0, 0, 70, 160});
    EXPECT_EQ(view->frame(), Rect(x.beginShrunk, y.beginGrown, x.lengthShrunk, y.lengthGrown));
}

INSTANTIATE_TEST_SUITE_P(EveryMask, AutoresizingTest, ::testing::Range(0u, 64u));

} // namespace
