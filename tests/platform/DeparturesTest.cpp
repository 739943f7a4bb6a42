#include "platform/Departures.h"

#include "platform/MainQueue.h"
#include "tests/platform/ViewFixture.h"

#include <QApplication>
#include <QEventLoop>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

namespace {

using namespace platform;

/// Views that are taken out of a window, alone and together.
class DeparturesTest : public testsupport::ViewFixture
{
protected:
    DeparturesTest()
    {
        for (int i = 0; i < Panels; ++i) {
            View *panel = add({0, 0, 100, 50});
            add<TextField>({0, 0, 50, 20}, panel);
            panels.emplace_back(panel);
        }
    }

    /// Whether anybody who looks through the window's widgets meets one of the panels.
    [[nodiscard]] bool isAnyInWindow() const
    {
        const QList<View *> all = window.findChildren<View *>();
        return std::ranges::any_of(panels, [&](const QPointer<View> &panel) { return all.contains(panel); });
    }

    /// Submits a job that does so, with enough others for a round of many.
    static void leaveAmongMany(const QPointer<View> &panel)
    {
        MainQueue::async([panel] { panel->removeFromSuperview(); });
        for (std::size_t i = 1; i < Departures::ManyJobs; ++i)
            MainQueue::async([] {});
    }
    /// Whether the panel still lives after so many rounds, in each of which a job is left for the next.
    static bool outlives(const QPointer<View> &panel, int rounds)
    {
        bool lived = false;
        QEventLoop loop;
        const std::function<void()> next = [&] {
            if (--rounds > 0) {
                MainQueue::async(next);
                return;
            }
            lived = !panel.isNull();
            loop.quit();
        };
        MainQueue::async(next);
        loop.exec();
        return lived;
    }

    static constexpr int Panels = 5;
    std::vector<QPointer<View>> panels;
    int walksBefore = Departures::walks();
};

TEST_F(DeparturesTest, WhatLeavesByItselfLeavesAtOnce)
{
    panels[0]->removeFromSuperview();
    EXPECT_EQ(Departures::walks(), walksBefore + 1);
    EXPECT_EQ(panels[0]->parentWidget(), nullptr);
    EXPECT_EQ(panels[0]->window(), panels[0]);
}

TEST_F(DeparturesTest, AllThatLeaveInOneRoundOfJobsLeaveTheWindowByOneWalk)
{
    for (const QPointer<View> &panel : panels)
        MainQueue::async([panel] { panel->removeFromSuperview(); });
    bool isAnySeen = true;
    // Behind the round, before anything else is served.
    MainQueue::async([&] { QTimer::singleShot(0, [&] { isAnySeen = isAnyInWindow(); }); });
    QApplication::processEvents();
    EXPECT_EQ(Departures::walks(), walksBefore + 1);
    EXPECT_TRUE(root->subviews().isEmpty());
    EXPECT_FALSE(isAnyInWindow());
    settle();
    EXPECT_FALSE(isAnySeen);
    for (const QPointer<View> &panel : panels)
        EXPECT_TRUE(panel.isNull());
    // What they were gathered in has gone with them.
    EXPECT_EQ(window.children(), QObjectList{root});
}

TEST_F(DeparturesTest, InTheRoundAViewThatLeftHasNoSuperviewAndTakesNoFocus)
{
    auto *field = qobject_cast<TextField *>(panels[0]->subviews().first());
    ASSERT_TRUE(field->becomeFirstResponder());
    bool isLooked = false;
    MainQueue::async([&] {
        panels[0]->removeFromSuperview();
        EXPECT_EQ(panels[0]->superview(), nullptr);
        EXPECT_FALSE(root->subviews().contains(panels[0]));
        EXPECT_FALSE(panels[0]->isVisible());
        EXPECT_FALSE(field->isFirstResponder());
        EXPECT_FALSE(field->becomeFirstResponder());
        isLooked = true;
    });
    QApplication::processEvents();
    EXPECT_TRUE(isLooked);
}

TEST_F(DeparturesTest, AnEventLoopInsideOfAJobMeetsNothingThatLeft)
{
    bool isAnySeen = true;
    MainQueue::async([&] {
        for (const QPointer<View> &panel : panels)
            panel->removeFromSuperview();
        QApplication::processEvents();
        isAnySeen = isAnyInWindow();
    });
    QApplication::processEvents();
    EXPECT_FALSE(isAnySeen);
}

TEST_F(DeparturesTest, WhatLeftOutlivesAnEventLoopInsideOfTheJob)
{
    bool wasAlive = false;
    QEventLoop outer;
    const auto removeAndServe = [&] {
        panels[0]->removeFromSuperview();
        QEventLoop inner;
        QTimer::singleShot(0, &inner, [&] { QTimer::singleShot(0, &inner, &QEventLoop::quit); });
        inner.exec();
        // An action of the view may be what runs this.
        wasAlive = !panels[0].isNull();
    };
    MainQueue::async(removeAndServe);
    MainQueue::async([&] { QTimer::singleShot(0, &outer, &QEventLoop::quit); });
    outer.exec();
    EXPECT_TRUE(wasAlive);
    settle();
    EXPECT_TRUE(panels[0].isNull());
}

TEST_F(DeparturesTest, JobsThatWaitGoBeforeTheDeletionOfWhatLeftInARoundOfMany)
{
    // The machine may stand still for longer than jobs are waited for; not for each of the panels.
    const auto outlived = std::ranges::find_if(panels, [&](const QPointer<View> &panel) {
        leaveAmongMany(panel);
        return outlives(panel, 3);
    });
    ASSERT_NE(outlived, panels.end());
    // Nobody else waits.
    settle();
    EXPECT_TRUE(outlived->isNull());
}

TEST_F(DeparturesTest, WhatLeftInARoundOfFewerJobsIsDeletedWhateverWaits)
{
    MainQueue::async([&] { panels[0]->removeFromSuperview(); });
    EXPECT_FALSE(outlives(panels[0], 3));
}

TEST_F(DeparturesTest, WhatLeftInARoundOfManyIsDeletedAlsoWhileJobsNeverEnd)
{
    leaveAmongMany(panels[0]);
    QEventLoop loop;
    const std::function<void()> next = [&] {
        if (panels[0])
            MainQueue::async(next);
        else
            loop.quit();
    };
    MainQueue::async(next);
    loop.exec();
    EXPECT_TRUE(panels[0].isNull());
}

TEST_F(DeparturesTest, WhatLeftOutlivesAnEventLoopInsideOfTheJobAlsoWhenItHasGivenWay)
{
    bool wasAlive = false;
    QEventLoop outer;
    MainQueue::async([&] {
        panels[0]->removeFromSuperview();
        QEventLoop inner;
        // Jobs wait in some of its rounds and in others do not.
        MainQueue::async(
            [&] { MainQueue::async([&] { QTimer::singleShot(0, &inner, &QEventLoop::quit); }); });
        inner.exec();
        wasAlive = !panels[0].isNull();
        outer.quit();
    });
    for (std::size_t i = 1; i < Departures::ManyJobs; ++i)
        MainQueue::async([] {});
    outer.exec();
    EXPECT_TRUE(wasAlive);
    settle();
    EXPECT_TRUE(panels[0].isNull());
}

TEST_F(DeparturesTest, AConditionThatIsDrainedForMeetsNothingThatLeft)
{
    MainQueue::async([&] {
        MainQueue::async([&] {
            for (const QPointer<View> &panel : panels)
                panel->removeFromSuperview();
        });
        MainQueue::drainUntil([&] { return !isAnyInWindow(); });
    });
    QApplication::processEvents();
    EXPECT_FALSE(isAnyInWindow());
}

TEST_F(DeparturesTest, AWindowMayGoBeforeWhatLeftIt)
{
    auto other = std::make_unique<QWidget>();
    QPointer<View> view = new View(Rect(0, 0, 10, 10));
    auto *around = new View(other.get());
    around->addSubview(view);
    MainQueue::async([&] {
        view->removeFromSuperview();
        other.reset();
    });
    QApplication::processEvents();
    EXPECT_TRUE(view.isNull());
}

TEST_F(DeparturesTest, AViewThatIsToLeaveMayBeDeletedByItself)
{
    MainQueue::async([&] {
        panels[0]->removeFromSuperview();
        delete panels[0];
        panels[1]->removeFromSuperview();
    });
    settle();
    EXPECT_EQ(root->subviews().size(), Panels - 2);
    EXPECT_TRUE(panels[1].isNull());
    EXPECT_EQ(window.children(), QObjectList{root});
}

} // namespace
