#include "station/report/ReportFiles.h"

#include "tests/station/StationFiles.h"

#include <QDir>
#include <QFile>

#include <thread>
#include <vector>

using station::report::ReportFile;
using station::report::writeFiles;
using testsupport::refusalOf;

namespace {

class ReportFilesTest : public ::testing::Test
{
protected:
    ReportFile page(const QByteArray &content = "new") const
    {
        return {m_files.path("site/index.html"), "<!-- ours -->" + content, "<!-- ours -->"};
    }
    void write(const QByteArray &content = "new") const { writeFiles(m_files.path("site"), {page(content)}); }
    QString refusal() const
    {
        return refusalOf([this] { write(); });
    }
    QByteArray written() const { return m_files.read("site/index.html"); }
    QString path() const { return m_files.path("site/index.html"); }

    testsupport::StationFiles m_files;
};

TEST_F(ReportFilesTest, TheFolderIsMadeAndAnEarlierReportReplaced)
{
    write("old");
    write();
    EXPECT_EQ(written(), "<!-- ours -->new");
    EXPECT_EQ(QDir(m_files.path("site")).entryList(QDir::Files | QDir::Hidden), QStringList{"index.html"});
}

TEST_F(ReportFilesTest, AForeignFileStaysAsItIs)
{
    m_files.write("site/index.html", "<!doctype html>somebody's");
    EXPECT_EQ(refusal(), path() + ": is there already, and is no report; nothing was written");
    EXPECT_EQ(written(), "<!doctype html>somebody's");
    m_files.write("site/index.html", "<!-- our");
    EXPECT_EQ(refusal(), path() + ": is there already, and is no report; nothing was written");
}

TEST_F(ReportFilesTest, OtherFilesOfTheFolderStay)
{
    m_files.write("site/style.css", "a {}");
    write();
    EXPECT_EQ(m_files.read("site/style.css"), "a {}");
}

TEST_F(ReportFilesTest, AnEmptyFileIsNoLoss)
{
    m_files.write("site/index.html", {});
    write();
    EXPECT_EQ(written(), "<!-- ours -->new");
}

TEST_F(ReportFilesTest, NeitherALinkNorAFolderIsWrittenThrough)
{
    m_files.write("elsewhere.html", {});
    ASSERT_TRUE(QDir().mkpath(m_files.path("site")));
    ASSERT_TRUE(QFile::link(m_files.path("elsewhere.html"), path()));
    EXPECT_EQ(refusal(), path() + ": is there already, and is no file");
    EXPECT_EQ(m_files.read("elsewhere.html"), "");
    ASSERT_TRUE(QFile::remove(path()));
    ASSERT_TRUE(QFile::link(m_files.path("nowhere"), path()));
    EXPECT_EQ(refusal(), path() + ": is there already, and is no file");
    ASSERT_TRUE(QFile::remove(path()));
    ASSERT_TRUE(QDir().mkpath(path()));
    EXPECT_EQ(refusal(), path() + ": is there already, and is no file");
}

TEST_F(ReportFilesTest, AFolderThatIsAFileIsRefused)
{
    m_files.write("site", "a file");
    EXPECT_EQ(refusal(), m_files.path("site") + ": the folder cannot be made");
    EXPECT_EQ(m_files.read("site"), "a file");
}

TEST_F(ReportFilesTest, OfSeveralFilesNoneIsWrittenWhenOneIsForeign)
{
    m_files.write("site/b.csv", "somebody's");
    const QString refused = refusalOf([this] {
        writeFiles(m_files.path("site"), {{m_files.path("site/a.csv"), "a\r\n", "a\r\n"},
                                          {m_files.path("site/b.csv"), "b\r\n", "b\r\n"}});
    });
    EXPECT_EQ(refused,
              m_files.path("site/b.csv") + ": is there already, and is no report; nothing was written");
    EXPECT_FALSE(QFile::exists(m_files.path("site/a.csv")));
}

// Two timers that make the same page at the same minute.
TEST_F(ReportFilesTest, ReportsThatAreMadeAtOnceAreEachWhole)
{
    const QByteArray content(200'000, 'x');
    write(content);
    std::vector<std::thread> writers;
    for (int i = 0; i < 4; ++i)
        writers.emplace_back([this, &content] {
            for (int round = 0; round < 20; ++round)
                write(content);
        });
    for (int round = 0; round < 50; ++round)
        EXPECT_EQ(written().size(), content.size() + 13);
    for (std::thread &writer : writers)
        writer.join();
    EXPECT_EQ(written().size(), content.size() + 13);
    EXPECT_EQ(QDir(m_files.path("site")).entryList(QDir::Files | QDir::Hidden), QStringList{"index.html"});
}

} // namespace
