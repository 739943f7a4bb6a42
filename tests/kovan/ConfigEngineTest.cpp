#include "kovan/KovanUIExtension/KVKConfigEngine.h"

#include <gtest/gtest.h>

using platform::Array;

namespace {

TEST(ConfigEngine, IsOneForTheWholeProcess)
{
    EXPECT_EQ(KVKConfigEngine::sharedConfigEngine(), KVKConfigEngine::sharedConfigEngine());
}

TEST(ConfigEngine, GivesWhatTheHostHasSet)
{
    KVKConfigEngine engine;
    EXPECT_FALSE(engine.statusTableCustomRowColorEnabled());
    EXPECT_TRUE(engine.systemIndexToGroupMapping().isEmpty());
    EXPECT_TRUE(engine.systemIndexToSlotMapping().isEmpty());
    engine.setStatusTableCustomRowColorEnabled(true);
    engine.setSystemIndexToGroupMapping({"G1", "G2"});
    engine.setSystemIndexToSlotMapping({"S1", "S2"});
    EXPECT_TRUE(engine.statusTableCustomRowColorEnabled());
    EXPECT_EQ(engine.systemIndexToGroupMapping(), (Array{"G1", "G2"}));
    EXPECT_EQ(engine.systemIndexToSlotMapping(), (Array{"S1", "S2"}));
}

} // namespace
