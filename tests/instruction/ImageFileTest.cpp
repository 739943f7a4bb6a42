#include "station/instruction/ImageFile.h"

#include "tests/instruction/PictureFiles.h"

using station::findImage;

namespace {

const QString Missing = "there is no such file";
const QString Outside = "it lies outside of the sequence's folder and of station.images";
const QString Address = "it is an address, and only files of this computer are shown";

/// A sequence in line/, pictures of all lines in shared/, and something that is nobody's in secret/.
class ImageFileTest : public ::testing::Test
{
protected:
    ImageFileTest()
    {
        for (const char *name :
             {"line/lamp.png", "line/steps/one.png", "shared/logo.png", "secret/key.png", "line-2/lamp.png"})
            files.write(name, "x");
    }
    [[nodiscard]] QString found(const QString &written) const { return findImage(written, folders).path; }
    [[nodiscard]] QString problem(const QString &written) const
    {
        const station::ImageFile file = findImage(written, folders);
        EXPECT_NE(file.path.isEmpty(), file.problem.isEmpty());
        return file.problem;
    }

    testsupport::PictureFiles files;
    QStringList folders{files.path("line"), files.path("shared")};
};

TEST_F(ImageFileTest, IsBesideTheSequenceOrBelow)
{
    EXPECT_EQ(found("lamp.png"), files.path("line/lamp.png"));
    EXPECT_EQ(found("steps/one.png"), files.path("line/steps/one.png"));
    EXPECT_EQ(found("steps/../lamp.png"), files.path("line/lamp.png"));
}

TEST_F(ImageFileTest, IsInAFolderOfTheStation)
{
    EXPECT_EQ(found("logo.png"), files.path("shared/logo.png"));
    EXPECT_EQ(found("../shared/logo.png"), files.path("shared/logo.png"));
}

TEST_F(ImageFileTest, TheSequencesFolderComesFirst)
{
    files.write("shared/lamp.png", "y");
    EXPECT_EQ(found("lamp.png"), files.path("line/lamp.png"));
}

TEST_F(ImageFileTest, AnAbsolutePathMayLeadThereAsWell)
{
    EXPECT_EQ(found(files.path("shared/logo.png")), files.path("shared/logo.png"));
}

TEST_F(ImageFileTest, WhatLiesOutsideIsNotRead)
{
    EXPECT_EQ(problem("../secret/key.png"), Outside);
    EXPECT_EQ(problem(files.path("secret/key.png")), Outside);
    EXPECT_EQ(problem("steps/../../secret/key.png"), Outside);
    EXPECT_EQ(problem("/etc/passwd"), Outside);
    EXPECT_EQ(problem("../line-2/lamp.png"), Outside);
}

TEST_F(ImageFileTest, WhetherAFileIsThereIsNotToldOutside)
{
    EXPECT_EQ(problem("../secret/none.png"), Outside);
    EXPECT_EQ(problem("/no/such/file.png"), Outside);
}

TEST_F(ImageFileTest, ALinkThatLeadsOutsideIsNotFollowed)
{
    ASSERT_TRUE(QFile::link(files.path("secret/key.png"), files.path("line/link.png")));
    ASSERT_TRUE(QFile::link(files.path("secret"), files.path("line/folder")));
    EXPECT_EQ(problem("link.png"), Outside);
    EXPECT_EQ(problem("folder/key.png"), Outside);
}

TEST_F(ImageFileTest, ALinkThatStaysInsideIsFollowed)
{
    ASSERT_TRUE(QFile::link(files.path("shared/logo.png"), files.path("line/link.png")));
    EXPECT_EQ(found("link.png"), files.path("shared/logo.png"));
}

TEST_F(ImageFileTest, ALinkToNowhereIsMissing)
{
    ASSERT_TRUE(QFile::link(files.path("line/none.png"), files.path("line/link.png")));
    EXPECT_EQ(problem("link.png"), Missing);
}

TEST_F(ImageFileTest, AFolderThatIsALinkItselfCounts)
{
    ASSERT_TRUE(QFile::link(files.path("shared"), files.path("pictures")));
    folders = {files.path("pictures")};
    EXPECT_EQ(found("logo.png"), files.path("shared/logo.png"));
}

TEST_F(ImageFileTest, SaysWhatIsMissing)
{
    EXPECT_EQ(problem("none.png"), Missing);
    EXPECT_EQ(problem("LAMP.png"), Missing);
}

TEST_F(ImageFileTest, AFolderIsNoPicture)
{
    EXPECT_EQ(problem("steps"), "it is no file");
}

TEST_F(ImageFileTest, NoAddressIsAsked)
{
    for (const char *address : {"http://host/lamp.png", "HTTPS://host/lamp.png", "file:///etc/passwd",
                                "file:lamp.png", "data:image/png;base64,AAAA", "ftp://host/x"})
        EXPECT_EQ(problem(address), Address) << address;
}

TEST_F(ImageFileTest, WhatIsNoPathIsToldSo)
{
    EXPECT_EQ(problem(" "), "it is no path");
    EXPECT_EQ(problem(QString("lamp.png") + QChar(0) + "x"), "it is no path");
}

TEST_F(ImageFileTest, ResourcesOfTheProgramAreNoFiles)
{
    EXPECT_EQ(problem(":/qt-project.org/styles/commonstyle/images/file-16.png"), Missing);
}

TEST_F(ImageFileTest, WithoutAFolderNothingIsRead)
{
    folders = {QString(), "/no/such/folder"};
    EXPECT_EQ(problem("lamp.png"), Outside);
    EXPECT_EQ(problem(files.path("line/lamp.png")), Outside);
}

TEST_F(ImageFileTest, TheRootsFolderHoldsEverything)
{
    folders = {"/"};
    EXPECT_EQ(found(files.path("secret/key.png")), files.path("secret/key.png"));
}

} // namespace
