#include "station/instruction/PaneMemory.h"

#include "tests/instruction/PictureFiles.h"

using station::PaneMemory;

namespace {

class PaneMemoryTest : public ::testing::Test
{
protected:
    testsupport::PictureFiles files;
    QString file = files.path("config/window.ini");
};

TEST_F(PaneMemoryTest, BeginsWithTheUsualWidthUnfolded)
{
    const PaneMemory memory(file);
    EXPECT_EQ(memory.width(), PaneMemory::UsualWidth);
    EXPECT_FALSE(memory.isFolded());
    EXPECT_FALSE(QFile::exists(file)) << "nothing was chosen";
}

TEST_F(PaneMemoryTest, KnowsTheNextTimeWhatWasChosen)
{
    {
        PaneMemory memory(file);
        memory.setWidth(512);
        memory.setFolded(true);
    }
    const PaneMemory memory(file);
    EXPECT_EQ(memory.width(), 512);
    EXPECT_TRUE(memory.isFolded());
}

TEST_F(PaneMemoryTest, WithoutAFileNothingIsKept)
{
    PaneMemory memory;
    memory.setWidth(512);
    memory.setFolded(true);
    EXPECT_EQ(memory.width(), 512);
    EXPECT_EQ(PaneMemory().width(), PaneMemory::UsualWidth);
}

TEST_F(PaneMemoryTest, TakesNoWidthThatCannotBeUsed)
{
    files.write("config/window.ini", "[instruction]\nwidth=-7\n");
    EXPECT_EQ(PaneMemory(file).width(), PaneMemory::LeastWidth);
    files.write("config/window.ini", "[instruction]\nwidth=99999999\n");
    EXPECT_EQ(PaneMemory(file).width(), 10'000);
    files.write("config/window.ini", "[instruction]\nwidth=wide\n");
    EXPECT_EQ(PaneMemory(file).width(), PaneMemory::UsualWidth);
    files.write("config/window.ini", QByteArray("\x00\xff\x00rubbish", 10));
    EXPECT_EQ(PaneMemory(file).width(), PaneMemory::UsualWidth);
}

TEST_F(PaneMemoryTest, AFileThatCannotBeWrittenChangesNothing)
{
    PaneMemory memory(files.write("plain", "x") + "/window.ini");
    memory.setWidth(512);
    EXPECT_EQ(memory.width(), 512);
}

} // namespace
