#include "platform/Button.h"
#include "tests/support/PanelFixture.h"
#include "tests/support/Wait.h"

#include <QApplication>

using platform::Array;
using platform::Button;
using platform::Dictionary;
using platform::View;

namespace {

const Dictionary entry{{"input", Array{"SN"}}, {"button", Array{"Cancel", "OK"}}};
const Dictionary groupEntry{{"input", Array{"S1", "S2"}}};

/// What a second and every later panel of the same group finds and leaves.
class RepeatedPanelTest : public testsupport::PanelFixture
{
protected:
    qsizetype viewsBelowTheRoot()
    {
        letRemovedViewsGo();
        return testsupport::descendants(rootView()).size();
    }
};

TEST_F(RepeatedPanelTest, ASecondGroupPanelReplacesTheFirst)
{
    drawGroup(0, groupEntry);
    QPointer<View> first = pane("G1");
    QPointer<View> firstOverview = overviewOf("G1");
    drawGroup(0, {{"input", Array{"S3"}}});
    letRemovedViewsGo();
    EXPECT_TRUE(first.isNull());
    EXPECT_TRUE(firstOverview.isNull());
    EXPECT_EQ(panes(), QStringList{"G1"});
    ASSERT_NE(overviewScroll("G1"), nullptr);
    EXPECT_EQ(overviewScroll("G1")->superview(), pane("G1"));
    EXPECT_FALSE(box("G1", 2)->isHidden());
    EXPECT_TRUE(box("G1", 0)->isHidden());
}

TEST_F(RepeatedPanelTest, AGroupPanelReplacesTheSlotPanelsOfItsGroupAlone)
{
    drawSlot(0, entry);
    drawSlot(1, entry);
    drawSlot(4, entry);
    drawGroup(0, groupEntry);
    EXPECT_EQ(panes(), (QStringList{"G2-group", "G1"}));
    EXPECT_EQ(field("0-SN"), nullptr);
    EXPECT_EQ(field("1-SN"), nullptr);
    EXPECT_NE(field("4-SN"), nullptr);
}

TEST_F(RepeatedPanelTest, PanelsOfDifferentGroupsStandTogether)
{
    drawGroup(1, groupEntry);
    drawGroup(0, groupEntry);
    EXPECT_EQ(panes(), (QStringList{"G2", "G1"}));
    for (const char *group : {"G1", "G2"}) {
        for (const char *name : {"S1", "S2", "S3", "S4", "SharedInput"})
            EXPECT_TRUE(fieldsInLog().contains(QString(": %1-%2>").arg(group, name))) << group << name;
    }
}

TEST_F(RepeatedPanelTest, TheContainerOfALaterSlotPanelIsEmpty)
{
    drawSlot(0, entry);
    View *first = pane("G1-group");
    drawSlot(1, entry);
    ASSERT_EQ(panes(), (QStringList{"G1-group", "G1-group"}));
    EXPECT_EQ(splitView()->subviews().first(), first);
    EXPECT_TRUE(splitView()->subviews().last()->subviews().isEmpty());
    EXPECT_EQ(overviewScroll("G1")->superview(), first);
}

TEST_F(RepeatedPanelTest, AnEmptyContainerIsDroppedByTheNextPanelOfItsGroup)
{
    for (const int system : {0, 1, 2, 0, 1})
        drawSlot(system, entry);
    EXPECT_EQ(panes(), (QStringList{"G1-group", "G1-group"}));
    drawSlot(4, entry);
    drawSlot(5, entry);
    EXPECT_EQ(panes(), (QStringList{"G1-group", "G1-group", "G2-group", "G2-group"}));
}

TEST_F(RepeatedPanelTest, AnEmptyContainerLetsClicksThrough)
{
    drawSlot(0, entry);
    drawSlot(1, entry);
    ASSERT_EQ(panes().size(), 2);
    for (const char *key : {"0", "1"}) {
        Button *target = button(key, "Cancel");
        ASSERT_NE(target, nullptr) << key;
        const QPoint centre = target->mapTo(&window(), target->rect().center());
        QWidget *hit = window().childAt(centre);
        EXPECT_TRUE(hit && (hit == target || target->isAncestorOf(hit))) << key;
    }
    ASSERT_NE(field("0-SN"), nullptr);
    click(field("0-SN"));
    EXPECT_TRUE(field("0-SN")->isFirstResponder());
}

TEST_F(RepeatedPanelTest, TenThousandSlotPanelsLeaveNoViewsBehind)
{
    drawSlot(1, entry);
    const platform::Identifier key = panel("1")->identifier();
    const auto showAndReset = [this, key] {
        rooms().views.resetUI(key);
        drawSlot(1, entry);
        rooms().views.resetUI(key);
    };
    for (int i = 0; i < 3; ++i)
        showAndReset();
    const qsizetype views = viewsBelowTheRoot();
    const qsizetype widgets = QApplication::allWidgets().size();
    for (int i = 3; i < 10'000; ++i) {
        showAndReset();
        letRemovedViewsGo();
    }
    EXPECT_EQ(viewsBelowTheRoot(), views);
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
}

TEST_F(RepeatedPanelTest, AnsweredCallsLeaveNoViewsBehind)
{
    qsizetype views = 0;
    for (int i = 0; i < 20; ++i) {
        auto &call = showView(1, {{"button", Array{"No", "Yes"}}});
        ASSERT_TRUE(waitForPanel("1"));
        press("1", "Yes");
        ASSERT_TRUE(call.waitUntilFinished());
        if (i == 2)
            views = viewsBelowTheRoot();
    }
    EXPECT_EQ(viewsBelowTheRoot(), views);
}

TEST_F(RepeatedPanelTest, APanelDrawnOnAnotherThreadIsThereWhenTheCallReturns)
{
    auto &call = onSequencer([this](platform::Error *) {
        drawSlot(5, entry);
        return platform::Value(rooms().views.hasResponders("5"));
    });
    EXPECT_EQ(call.result(), platform::Value(true));
    EXPECT_NE(overviewOf("G2"), nullptr);
    EXPECT_NE(field("5-SN"), nullptr);
}

TEST_F(RepeatedPanelTest, AViewThatWasTakenAwayIsForgotten)
{
    auto &call = showGroup(0, groupEntry);
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Cancel");
    ASSERT_TRUE(call.waitUntilFinished());
    letRemovedViewsGo();
    EXPECT_EQ(fieldsInLog(), "{G1 = ((null), (null), (null), (null), (null))}");
    EXPECT_EQ(overviewOf("G1"), nullptr);
    // Whoever still knows the panel finds nobody there.
    click(groupButton("G1"));
    click(groupButton("G1"));
    EXPECT_EQ(panes(), QStringList{});
}

} // namespace
