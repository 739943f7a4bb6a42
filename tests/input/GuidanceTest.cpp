#include "input/Guidance.h"

#include "platform/Button.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <QTest>
#include <QTimer>
#include <QWindow>

using platform::Array;
using platform::Dictionary;
using testsupport::SequencerCall;
using testsupport::waitUntil;

namespace {

/// What the host is told while panels open and go, and the mouse and the focus move.
class GuidanceTest : public testsupport::PluginFixture
{
protected:
    GuidanceTest()
    {
        KVKExtensionGuidanceRelay *relay = KVKExtensionGuidanceRelay::sharedGuidanceRelay();
        relay->setOfferHandler([this](const KVKGuidancePointer &what, bool begins) {
            if (begins)
                offered.append(what->caption);
            else
                EXPECT_TRUE(offered.removeOne(what->caption)) << what->caption.toStdString();
        });
        relay->setCurrentHandler(
            [this](const KVKGuidancePointer &what, bool begins) { current = begins ? what : nullptr; });
    }
    void TearDown() override
    {
        PluginFixture::TearDown();
        EXPECT_EQ(offered, QStringList()) << "offered for ever";
        KVKExtensionGuidanceRelay *relay = KVKExtensionGuidanceRelay::sharedGuidanceRelay();
        relay->setOfferHandler({});
        relay->setCurrentHandler({});
        relay->setFolderHandler({});
    }

    static Dictionary looking(Dictionary config)
    {
        config.insert("image", "lamp.png");
        config.insert("button", Array{"Cancel", "OK"});
        return config;
    }
    void openEntry(int system)
    {
        showView(system, looking({{"input", Array{"SN"}}}));
        ASSERT_TRUE(waitForPanel(QString::number(system)));
    }
    void openQuestion(int system)
    {
        showView(system, looking({}));
        ASSERT_TRUE(waitForPanel(QString::number(system)));
    }
    /// In two steps, since a mouse that is there already does not move.
    void moveTo(const QPoint &position)
    {
        QTest::mouseMove(window().windowHandle(), position - QPoint(1, 1));
        QTest::mouseMove(window().windowHandle(), position);
    }
    void moveAside() { moveTo(window().rect().bottomRight() - QPoint(5, 5)); }
    void moveOnto(const QString &panelKey)
    {
        const QWidget *view = panel(panelKey);
        ASSERT_NE(view, nullptr);
        moveTo(view->mapTo(&window(), view->rect().center()));
    }
    [[nodiscard]] QString caption() const { return current ? current->caption : QString(); }
    [[nodiscard]] bool becomes(const QString &wanted)
    {
        return waitUntil([&] { return caption() == wanted; });
    }

    QStringList offered;
    KVKGuidancePointer current;
};

TEST_F(GuidanceTest, APanelHandsOverWhatItsCallSays)
{
    KVKExtensionGuidanceRelay::sharedGuidanceRelay()->setFolderHandler([] { return QString("/srv/line"); });
    showView(1, {{"image", "lamp.png"}, {"instruction", "# Look"}});
    ASSERT_TRUE(waitForPanel("1"));
    ASSERT_TRUE(becomes("G1 S2"));
    EXPECT_EQ(current->image, "lamp.png");
    EXPECT_EQ(current->instruction, "# Look");
    EXPECT_EQ(current->folder, "/srv/line");
    EXPECT_EQ(offered, QStringList{"G1 S2"});
}

TEST_F(GuidanceTest, APanelWithNeitherKeyHasNone)
{
    showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_EQ(offered, QStringList());
    EXPECT_EQ(current, nullptr);
}

TEST_F(GuidanceTest, GoesWithItsPanel)
{
    SequencerCall &call = showView(0, looking({}));
    ASSERT_TRUE(waitForPanel("0"));
    ASSERT_TRUE(becomes("G1 S1"));
    press("0", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_EQ(offered, QStringList());
    EXPECT_EQ(current, nullptr);
}

TEST_F(GuidanceTest, GoesWhenTheHostEndsTheCall)
{
    SequencerCall &call = showGroup(0, looking({}));
    ASSERT_TRUE(waitForPanel("G1"));
    ASSERT_TRUE(becomes("G1"));
    plugin().interruptWaitingCalls();
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_EQ(offered, QStringList());
    EXPECT_EQ(current, nullptr);
}

TEST_F(GuidanceTest, FollowsTheFocusFromPanelToPanel)
{
    openEntry(0);
    openEntry(1);
    ASSERT_TRUE(field("0-SN")->becomeFirstResponder());
    EXPECT_TRUE(becomes("G1 S1"));
    ASSERT_TRUE(field("1-SN")->becomeFirstResponder());
    EXPECT_TRUE(becomes("G1 S2"));
}

TEST_F(GuidanceTest, ThereIsNoneWhereThePanelThatHasTheFocusHasNone)
{
    openEntry(0);
    showView(1, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("1"));
    ASSERT_TRUE(field("1-SN")->becomeFirstResponder());
    EXPECT_TRUE(becomes(""));
    EXPECT_EQ(offered, QStringList{"G1 S1"});
}

TEST_F(GuidanceTest, TheMouseOnAPanelWinsUntilItRestsElsewhere)
{
    openEntry(0);
    openEntry(1);
    ASSERT_TRUE(field("0-SN")->becomeFirstResponder());
    ASSERT_TRUE(becomes("G1 S1"));
    moveOnto("1");
    EXPECT_TRUE(becomes("G1 S2"));
    moveAside();
    EXPECT_TRUE(becomes("G1 S1"));
}

TEST_F(GuidanceTest, AMouseThatCrossesAPanelChangesNothing)
{
    openEntry(0);
    openEntry(1);
    openEntry(2);
    ASSERT_TRUE(field("0-SN")->becomeFirstResponder());
    ASSERT_TRUE(becomes("G1 S1"));
    auto *rest = rooms().guidance.findChild<QTimer *>();
    ASSERT_NE(rest, nullptr);
    EXPECT_EQ(rest->interval(), 200);
    rest->setInterval(3'600'000);
    moveOnto("1");
    ASSERT_TRUE(waitUntil([&] { return rest->isActive(); }));
    EXPECT_EQ(caption(), "G1 S1");
    rest->setInterval(0);
    moveOnto("2");
    EXPECT_TRUE(becomes("G1 S3"));
}

TEST_F(GuidanceTest, AMouseThatHasLeftThePanelsCountsUntilTheFocusMoves)
{
    openEntry(0);
    openEntry(1);
    ASSERT_TRUE(field("0-SN")->becomeFirstResponder());
    moveOnto("1");
    ASSERT_TRUE(becomes("G1 S2"));
    auto *rest = rooms().guidance.findChild<QTimer *>();
    QEvent leave(QEvent::Leave);
    for (QWidget *left = panel("1"); left != &window(); left = left->parentWidget())
        QApplication::sendEvent(left, &leave);
    ASSERT_TRUE(waitUntil([&] { return rest->isActive(); }));
    ASSERT_TRUE(waitUntil([&] { return !rest->isActive(); }));
    EXPECT_EQ(caption(), "G1 S2");
    ASSERT_TRUE(field("1-SN")->becomeFirstResponder());
    ASSERT_TRUE(field("0-SN")->becomeFirstResponder());
    EXPECT_TRUE(becomes("G1 S1"));
}

TEST_F(GuidanceTest, WhereNothingTakesEntriesItIsThePanelThatHasStoodLongest)
{
    openQuestion(2);
    openQuestion(1);
    EXPECT_TRUE(becomes("G1 S3"));
    press("2", "OK");
    EXPECT_TRUE(becomes("G1 S2"));
}

TEST_F(GuidanceTest, AMessageOffersItWhileItStands)
{
    SequencerCall &message = showGroup(0, {{"message", "Warming up"}, {"instruction", "Wait"}});
    ASSERT_TRUE(message.waitUntilFinished());
    EXPECT_TRUE(becomes("G1"));
    showGroup(0, {{"button", Array{"Go on"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(offered, QStringList());
    EXPECT_TRUE(becomes(""));
}

TEST_F(GuidanceTest, AMessageIsFollowedByThePanelOfASlot)
{
    SequencerCall &message = showGroup(0, {{"message", "Warming up"}, {"instruction", "Wait"}});
    ASSERT_TRUE(message.waitUntilFinished());
    ASSERT_TRUE(becomes("G1"));
    openQuestion(0);
    EXPECT_TRUE(becomes("G1 S1"));
    EXPECT_EQ(offered, QStringList{"G1 S1"});
}

TEST_F(GuidanceTest, AGroupThatIsSwitchedOffHasNothingToLookAt)
{
    showGroup(0, looking({}));
    ASSERT_TRUE(waitForPanel("G1"));
    ASSERT_TRUE(becomes("G1"));
    click(groupButton("G1"));
    ASSERT_TRUE(becomes(""));
    EXPECT_EQ(offered, QStringList());
    click(groupButton("G1"));
    EXPECT_TRUE(becomes("G1"));
    EXPECT_EQ(offered, QStringList{"G1"});
}

TEST_F(GuidanceTest, ARefusedCallOffersNothing)
{
    expectError("must be a text");
    showView(0, {{"image", 7}, {"instruction", "# Look"}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(offered, QStringList());
}

} // namespace
