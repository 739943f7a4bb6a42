#include "station/sound/SoundDesk.h"

#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"

#include <QStringList>

#include <gtest/gtest.h>

using station::Sound;
using How = KVKFinishedPanel::How;

namespace {

/// Writes down what would be heard.
class RecordingSink : public station::SoundSink
{
public:
    void play(Sound sound) override { played.append(station::nameOf(sound)); }

    QStringList played;
};

class SoundDeskTest : public ::testing::Test
{
protected:
    static void accept() { relay()->accepted({{}, "A"}); }
    static void refuse() { relay()->refused({{}, "A", "length", "too short"}); }
    static void finish(How how = How::Pressed) { relay()->finished({{}, how, {}}); }
    static KVKExtensionEntryRelay *relay() { return KVKExtensionEntryRelay::sharedEntryRelay(); }
    void end() { Q_EMIT sink.ended(); }

    RecordingSink sink;
    station::SoundDesk desk{sink};
};

TEST_F(SoundDeskTest, EachHasItsSound)
{
    accept();
    end();
    refuse();
    end();
    finish();
    end();
    relay()->errorShown({{}, "no"});
    EXPECT_EQ(sink.played, (QStringList{"accepted", "refused", "finished", "error"}));
}

TEST_F(SoundDeskTest, ThePanelThatNobodyAnsweredInTimeSoundsLikeAnError)
{
    finish(How::TimedOut);
    end();
    finish(How::Cancelled);
    end();
    finish(How::Stopped);
    EXPECT_EQ(sink.played, (QStringList{"error", "finished"}));
}

TEST_F(SoundDeskTest, TheNewestReplacesTheOneBefore)
{
    for (int i = 0; i < 20; ++i)
        accept();
    end();
    EXPECT_EQ(sink.played.size(), 20) << "each at once, and none left over for later";
}

TEST_F(SoundDeskTest, AnAcceptedEntryIsHeardBehindARefusal)
{
    refuse();
    accept();
    EXPECT_EQ(sink.played, QStringList{"refused"});
    end();
    EXPECT_EQ(sink.played, (QStringList{"refused", "accepted"}));
}

TEST_F(SoundDeskTest, OfManyBehindARefusalTheNewestIsHeard)
{
    refuse();
    for (int i = 0; i < 20; ++i)
        accept();
    finish();
    end();
    end();
    EXPECT_EQ(sink.played, (QStringList{"refused", "finished"}));
}

TEST_F(SoundDeskTest, ARefusalIsHeardAtOnce)
{
    accept();
    refuse();
    accept();
    refuse();
    EXPECT_EQ(sink.played, (QStringList{"accepted", "refused", "refused"}));
    end();
    EXPECT_EQ(sink.played.size(), 3) << "what was to come behind the first refusal is older than the second";
}

TEST_F(SoundDeskTest, NothingIsHeardWhenItHasGone)
{
    RecordingSink other;
    {
        const station::SoundDesk gone(other);
        accept();
    }
    accept();
    EXPECT_EQ(other.played, QStringList{"accepted"});
}

} // namespace
