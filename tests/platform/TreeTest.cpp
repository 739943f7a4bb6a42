#include "platform/Button.h"
#include "tests/platform/ViewFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMouseEvent>

namespace {

using namespace platform;

/// Counts the presses that reach it and uses them up.
class PressedView : public View
{
public:
    using View::View;
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        ++presses;
        event->accept();
    }
};

class TreeTest : public testsupport::ViewFixture
{};

TEST_F(TreeTest, SubviewsStandInTheOrderOfAddingTheLastOnTop)
{
    View *first = add({0, 0, 10, 10});
    View *second = add({0, 0, 10, 10});
    EXPECT_EQ(root->subviews(), (QList<View *>{first, second}));
    EXPECT_EQ(window.childAt(5, 295), second);
}

TEST_F(TreeTest, AddingAViewAgainPutsItOnTop)
{
    View *first = add({0, 0, 10, 10});
    View *second = add({0, 0, 10, 10});
    root->addSubview(first);
    EXPECT_EQ(root->subviews(), (QList<View *>{second, first}));
    EXPECT_EQ(window.childAt(5, 295), first);
}

TEST_F(TreeTest, OtherWidgetsAreNoSubviews)
{
    new QLabel(root);
    View *view = add({0, 0, 10, 10});
    EXPECT_EQ(root->subviews(), QList<View *>{view});
    EXPECT_EQ(root->superview(), nullptr);
}

TEST_F(TreeTest, AViewMovesToTheSuperviewThatAddsIt)
{
    View *first = add({0, 0, 100, 100});
    View *second = add({0, 0, 100, 200});
    View *view = add({10, 10, 20, 20}, first);
    second->addSubview(view);
    EXPECT_TRUE(first->subviews().isEmpty());
    EXPECT_EQ(view->superview(), second);
    EXPECT_EQ(view->geometry(), QRect(10, 170, 20, 20));
    EXPECT_TRUE(view->isVisible());
}

TEST_F(TreeTest, AViewIsShownWhenItIsAdded)
{
    EXPECT_TRUE(add({0, 0, 10, 10})->isVisible());
}

TEST_F(TreeTest, AViewThatWasHiddenBeforeStaysHidden)
{
    auto *view = new View(Rect(0, 0, 10, 10));
    view->setHidden(true);
    root->addSubview(view);
    EXPECT_TRUE(view->isHidden());
    EXPECT_FALSE(view->isVisible());
    view->setHidden(false);
    EXPECT_TRUE(view->isVisible());
}

TEST_F(TreeTest, AHiddenViewMovesWithoutBeingShown)
{
    View *other = add({0, 0, 100, 100});
    View *view = add({0, 0, 10, 10});
    view->setHidden(true);
    other->addSubview(view);
    EXPECT_TRUE(view->isHidden());
}

TEST_F(TreeTest, AViewInsideAHiddenOneIsNotHiddenItself)
{
    View *outer = add({0, 0, 100, 100});
    View *inner = add({0, 0, 10, 10}, outer);
    outer->setHidden(true);
    EXPECT_TRUE(outer->isHidden());
    EXPECT_FALSE(inner->isHidden());
    EXPECT_FALSE(inner->isVisible());
}

TEST_F(TreeTest, AViewOfATreeThatIsNotShownYetIsNotHidden)
{
    View top(Rect(0, 0, 100, 100));
    EXPECT_FALSE(add({0, 0, 10, 10}, &top)->isHidden());
}

TEST_F(TreeTest, ARemovedViewIsOutOfTheTreeAtOnceAndDeletedLater)
{
    const QPointer<View> view = add({0, 0, 10, 10});
    view->removeFromSuperview();
    ASSERT_TRUE(view);
    EXPECT_EQ(view->superview(), nullptr);
    EXPECT_TRUE(root->subviews().isEmpty());
    EXPECT_FALSE(view->isVisible());
    settle();
    EXPECT_FALSE(view);
}

TEST_F(TreeTest, RemovingAViewTwiceIsHarmless)
{
    const QPointer<View> view = add({0, 0, 10, 10});
    view->removeFromSuperview();
    view->removeFromSuperview();
    settle();
    EXPECT_FALSE(view);
}

TEST_F(TreeTest, AViewThatNobodyHoldsIsNotRemoved)
{
    View view(Rect(0, 0, 10, 10));
    view.removeFromSuperview();
    settle();
    EXPECT_EQ(view.frame(), Rect(0, 0, 10, 10));
}

TEST_F(TreeTest, AViewMayBeRemovedByItsOwnAction)
{
    View *panel = add({0, 0, 100, 100});
    const QPointer<Button> button = add<Button>({10, 10, 80, 30}, panel);
    button->setTarget(&target, "press:", [panel](View *) { panel->removeFromSuperview(); });
    click(button);
    EXPECT_TRUE(root->subviews().isEmpty());
    settle();
    EXPECT_FALSE(button);
}

TEST_F(TreeTest, TenThousandPanelsThatCameAndWentLeaveNoWidget)
{
    settle();
    const qsizetype before = QApplication::allWidgets().size();
    for (int i = 0; i < 10'000; ++i) {
        View *panel = add({0, 0, 100, 100});
        auto field = std::make_unique<TextField>(Rect(0, 0, 100, 20));
        field->setEditable(true);
        panel->addSubview(field.release());
        panel->removeFromSuperview();
        if (i % 100 == 0)
            settle();
    }
    settle();
    EXPECT_EQ(QApplication::allWidgets().size(), before);
    EXPECT_TRUE(root->subviews().isEmpty());
}

TEST_F(TreeTest, ATagIsFoundDepthFirst)
{
    View *branch = add({0, 0, 100, 100});
    View *leaf = add({0, 0, 10, 10}, branch);
    View *later = add({0, 0, 10, 10});
    leaf->setTag(7);
    later->setTag(7);
    EXPECT_EQ(root->viewWithTag(7), leaf);
    EXPECT_EQ(later->viewWithTag(7), later);
    EXPECT_EQ(root->viewWithTag(8), nullptr);
}

TEST_F(TreeTest, TheNextResponderIsTheSuperviewUnlessAnotherIsSet)
{
    View *view = add({0, 0, 10, 10});
    View *other = add({0, 0, 10, 10});
    EXPECT_EQ(view->nextResponder(), root);
    EXPECT_EQ(view->explicitNextResponder(), nullptr);
    view->setNextResponder(other);
    EXPECT_EQ(view->nextResponder(), other);
    delete other;
    EXPECT_EQ(view->nextResponder(), root);
}

TEST_F(TreeTest, APressReachesTheViewOnTop)
{
    auto *below = add<PressedView>({0, 0, 100, 100});
    auto *above = add<PressedView>({0, 0, 100, 100});
    clickAt({50, 250});
    EXPECT_EQ(above->presses, 1);
    EXPECT_EQ(below->presses, 0);
}

TEST_F(TreeTest, APressPassesThroughAViewThatLetsItPass)
{
    auto *below = add<PressedView>({0, 0, 100, 100});
    View *above = add({0, 0, 100, 100});
    clickAt({50, 250});
    EXPECT_EQ(below->presses, 0);
    above->setPassesClicksThrough(true);
    clickAt({50, 250});
    EXPECT_EQ(below->presses, 1);
    above->setPassesClicksThrough(false);
    clickAt({50, 250});
    EXPECT_EQ(below->presses, 1);
}

TEST_F(TreeTest, APressOnALabelGoesToTheViewThatHoldsIt)
{
    auto *panel = add<PressedView>({0, 0, 100, 100});
    auto *label = add<TextField>({10, 10, 50, 20}, panel);
    label->setStringValue("label");
    click(label);
    EXPECT_EQ(panel->presses, 1);
}

/// Counts how often its ground may have changed.
class GroundedView : public View
{
public:
    using View::View;
    int changes = 0;

protected:
    void groundChanged() override { ++changes; }
};

TEST_F(TreeTest, AViewThatIsAddedWhereItStandsKeepsItsGround)
{
    auto *view = add<GroundedView>({0, 0, 10, 10});
    const int before = view->changes;
    EXPECT_GT(before, 0);
    root->addSubview(view);
    EXPECT_EQ(view->changes, before);
    add({0, 0, 100, 100})->addSubview(view);
    EXPECT_GT(view->changes, before);
}

TEST_F(TreeTest, ASwitchIsMadeWithTheOneControlThatItShows)
{
    auto view = std::make_unique<Button>(Rect(0, 0, 20, 20), Button::Type::Switch);
    EXPECT_EQ(view->buttonType(), Button::Type::Switch);
    EXPECT_EQ(view->findChildren<QAbstractButton *>().size(), 1);
    Button *button = view.get();
    root->addSubview(view.release());
    click(button);
    EXPECT_EQ(button->state(), Button::On);
}

} // namespace
