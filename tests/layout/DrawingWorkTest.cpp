#include "platform/Box.h"
#include "platform/ScrollView.h"
#include "plugin/Rooms.h"
#include "tests/support/PanelFixture.h"

#include <QApplication>

using platform::Array;
using platform::Dictionary;
using platform::View;

namespace {

/// Counts how often it is told that it was taken away.
class ToldView : public View
{
public:
    using View::View;
    int times = 0;

protected:
    void wasTakenAway() override { ++times; }
};

/// Counts how often what stands in a box is to be laid out anew.
class LayoutRequests : public QObject
{
public:
    int ofContents = 0;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *view = qobject_cast<View *>(watched);
        if (view && event->type() == QEvent::LayoutRequest &&
            qobject_cast<platform::Box *>(view->superview()))
            ++ofContents;
        return false;
    }
};

/// What is done when a panel is drawn beside others, and what is not.
class DrawingWorkTest : public testsupport::PanelFixture
{
protected:
    Dictionary entry{{"input", Array{"SN"}}};
};

TEST_F(DrawingWorkTest, WhatStandsInAnUnusedContainerIsNotToldAgainWhenAnotherPanelComes)
{
    station.groups = {"G1", "G2"};
    drawSlot(0, entry);
    View *container = rooms().views.panels().first();
    auto *told = new ToldView(platform::Rect(0, 0, 10, 10));
    qobject_cast<platform::ScrollView *>(container->subviews().first())->contentView()->addSubview(told);
    rooms().views.resetUI(rooms().waits.panelKey("0"));
    rooms().document.fit();
    ASSERT_TRUE(container->isHidden());
    const int before = told->times;
    EXPECT_EQ(before, 1);
    drawSlot(4, entry);
    rooms().document.fit();
    EXPECT_EQ(told->times, before);
}

TEST_F(DrawingWorkTest, ABoxIsShownWithAllThatStandsInIt)
{
    drawSlot(0, entry);
    QApplication::processEvents();
    LayoutRequests requests;
    qApp->installEventFilter(&requests);
    drawSlot(1, entry);
    EXPECT_TRUE(box("G1", 1)->isVisible());
    EXPECT_TRUE(inputs(content("G1", 1)).first()->isVisible());
    QApplication::processEvents();
    EXPECT_EQ(requests.ofContents, 0);
}

TEST_F(DrawingWorkTest, APanelThatIsDrawnInTheSameBoxAgainIsTakenAwayFromThere)
{
    for (int time = 0; time < 2; ++time) {
        drawSlot(1, entry);
        EXPECT_EQ(inputs(content("G1", 1)).size(), 1);
        rooms().views.resetUI(rooms().waits.panelKey("1"));
        EXPECT_TRUE(content("G1", 1)->subviews().isEmpty());
        EXPECT_TRUE(box("G1", 1)->isHidden());
    }
}

TEST_F(DrawingWorkTest, APanelInAnOverviewThatHasGoneIsNotTakenForOneThatStands)
{
    drawSlot(1, entry);
    // A group's panel takes the place of all containers of its group.
    drawGroup(0, {{"input", Array{"S1"}}});
    rooms().views.resetUI(rooms().waits.panelKey("1"));
    EXPECT_FALSE(content("G1", 0)->subviews().isEmpty());
    rooms().views.resetUI(rooms().waits.panelKey("G1"));
    drawSlot(1, entry);
    rooms().views.resetUI(rooms().waits.panelKey("1"));
    EXPECT_TRUE(box("G1", 1)->isHidden());
}

} // namespace
