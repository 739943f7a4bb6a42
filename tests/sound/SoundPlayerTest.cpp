#include "station/sound/SoundPlayer.h"

#include "tests/support/Wait.h"

#include <gtest/gtest.h>

using station::Sound;
using station::SoundPlayer;

namespace {

TEST(SoundPlayer, ASoundEndsWhetherThereIsADeviceOrNot)
{
    SoundPlayer player(50);
    int ends = 0;
    QObject::connect(&player, &SoundPlayer::ended, &player, [&] { ++ends; });
    player.play(Sound::Refused);
    EXPECT_TRUE(testsupport::waitUntil([&] { return ends == 1; }));
}

TEST(SoundPlayer, ABurstEndsOnce)
{
    SoundPlayer player(100);
    int ends = 0;
    QObject::connect(&player, &SoundPlayer::ended, &player, [&] { ++ends; });
    for (int i = 0; i < 20; ++i)
        player.play(Sound::Accepted);
    EXPECT_EQ(ends, 0) << "play() returns at once";
    EXPECT_TRUE(testsupport::waitUntil([&] { return ends > 0; }));
    EXPECT_EQ(ends, 1);
}

TEST(SoundPlayer, CanGoInTheMidstOfASound)
{
    for (int i = 0; i < 5; ++i) {
        SoundPlayer player(0);
        player.play(Sound::Error);
    }
}

} // namespace
