#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <thread>

namespace {

KVKGuidancePointer guidance(const QString &caption)
{
    return std::make_shared<const KVKGuidance>(KVKGuidance{caption, "lamp.png", "# Look", "/srv/line"});
}

/// A relay whose host writes down what it is told: "+G1" for an offer, ">G1" for what is current.
class GuidanceRelay : public ::testing::Test
{
protected:
    GuidanceRelay()
    {
        relay.setOfferHandler([this](const KVKGuidancePointer &what, bool begins) {
            told.append((begins ? "+" : "-") + what->caption);
        });
        relay.setCurrentHandler([this](const KVKGuidancePointer &what, bool begins) {
            told.append((begins ? ">" : "<") + what->caption);
        });
    }

    KVKExtensionGuidanceRelay relay;
    QStringList told;
    KVKGuidancePointer one = guidance("G1 S1");
    KVKGuidancePointer two = guidance("G1 S2");
};

TEST_F(GuidanceRelay, PassesOnWhatIsThereAndWhatIsCurrent)
{
    relay.offer(one);
    relay.beginCurrent(one);
    relay.endCurrent(one);
    relay.withdraw(one);
    EXPECT_EQ(told, (QStringList{"+G1 S1", ">G1 S1", "<G1 S1", "-G1 S1"}));
}

TEST_F(GuidanceRelay, HandsOverTheVeryGuidanceWithAllThatItHolds)
{
    KVKGuidancePointer got;
    relay.setCurrentHandler([&](const KVKGuidancePointer &what, bool) { got = what; });
    relay.beginCurrent(one);
    ASSERT_EQ(got, one);
    EXPECT_EQ(got->image, "lamp.png");
    EXPECT_EQ(got->instruction, "# Look");
    EXPECT_EQ(got->folder, "/srv/line");
}

TEST_F(GuidanceRelay, TheNextOneEndsTheOneBefore)
{
    relay.beginCurrent(one);
    relay.beginCurrent(two);
    EXPECT_EQ(told, (QStringList{">G1 S1", "<G1 S1", ">G1 S2"}));
}

TEST_F(GuidanceRelay, TheEndOfOneThatWasFollowedLeavesTheOtherOne)
{
    relay.beginCurrent(one);
    relay.beginCurrent(two);
    told.clear();
    relay.endCurrent(one);
    EXPECT_EQ(told, QStringList());
    relay.endCurrent(two);
    EXPECT_EQ(told, QStringList{"<G1 S2"});
}

TEST_F(GuidanceRelay, IsToldOnceOfTheSame)
{
    relay.beginCurrent(one);
    relay.beginCurrent(one);
    EXPECT_EQ(told, QStringList{">G1 S1"});
}

TEST_F(GuidanceRelay, WhatIsWithdrawnIsNotCurrentAnyMore)
{
    relay.offer(one);
    relay.beginCurrent(one);
    told.clear();
    relay.withdraw(one);
    EXPECT_EQ(told, (QStringList{"<G1 S1", "-G1 S1"}));
}

TEST_F(GuidanceRelay, DropsWhatNobodyFollows)
{
    relay.setOfferHandler({});
    relay.setCurrentHandler({});
    EXPECT_NO_THROW(relay.offer(one));
    EXPECT_NO_THROW(relay.beginCurrent(one));
    EXPECT_NO_THROW(relay.withdraw(one));
    EXPECT_EQ(told, QStringList());
}

TEST_F(GuidanceRelay, AsksForTheFolderOnTheCallsOwnThread)
{
    EXPECT_EQ(relay.folderOfCall(), "");
    std::thread::id asked;
    relay.setFolderHandler([&] {
        asked = std::this_thread::get_id();
        return QString("/srv/line");
    });
    QString folder;
    std::thread::id caller;
    std::thread call([&] {
        caller = std::this_thread::get_id();
        folder = relay.folderOfCall();
    });
    call.join();
    EXPECT_EQ(folder, "/srv/line");
    EXPECT_EQ(asked, caller);
}

} // namespace
