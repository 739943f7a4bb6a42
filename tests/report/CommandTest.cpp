#include "station/report/ReportTable.h"
#include "tests/report/ExampleResults.h"
#include "tests/report/ReportRun.h"

#include <QDir>
#include <QFile>

using platform::Dictionary;
using testsupport::ExampleResults;
using testsupport::ReportRun;

namespace {

class CommandTest : public ::testing::Test
{
protected:
    CommandTest()
    {
        ExampleResults results(m_path);
        results.run("a", "2026-11-20T08:00:00.000Z", "B7");
        results.system(0);
        results.answers(Dictionary{{"SN", "=1+1"}}, 1500);
        results.ends(KVKLuaOutcome::Passed);
    }
    /// What a call says that cannot be carried out: one line.
    QByteArray refusal(const QStringList &arguments) const
    {
        const ReportRun run(arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors.count('\n'), 1) << run.errors.toStdString();
        return run.errors.trimmed();
    }

    testsupport::StationFiles m_files;
    QString m_path = m_files.path("results.sqlite");
};

TEST_F(CommandTest, TheReportIsPrintedWhereThereIsNoDisplay)
{
    const ReportRun run({m_path});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(run.output.startsWith("Report of " + m_path.toUtf8() + "\n1 runs, 1 sequences, 1 answers;"))
        << run.output.toStdString();
}

TEST_F(CommandTest, AnotherProgramWritesMeanwhileAndGoesOn)
{
    ExampleResults results(m_path);
    for (int run = 1; run <= 3; ++run) {
        results.run(QString::number(run), "2026-11-20T09:00:00.000Z");
        results.system(0);
        results.answers(Dictionary{{"SN", "A1"}}, 1500);
        const QByteArray head =
            QByteArray::number(run + 1) + " runs, " + QByteArray::number(run + 1) + " sequences";
        EXPECT_TRUE(ReportRun({m_path}).output.contains(head)) << run;
    }
    results.close();
    EXPECT_EQ(QDir(m_files.folder()).entryList(QDir::Files), QStringList{"results.sqlite"});
}

TEST_F(CommandTest, ThePageOfTheDocumentsNamesEveryTable)
{
    QFile page(DOCS_PATH "/reports.md");
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    const QByteArray text = page.readAll();
    for (const QString &name : station::report::tableNames())
        EXPECT_TRUE(text.contains("\n| `" + name.toUtf8() + "` | ")) << name.toStdString();
}

TEST_F(CommandTest, OneTableIsPrintedWhole)
{
    EXPECT_EQ(ReportRun({m_path, "--table", "slots", "--csv"}).output,
              "station,group,slot,yield,sequences,passed,failed,erred,stopped,open\r\n"
              "\"Line 3\",\"G1\",\"S1\",1.0000,1,1,0,0,0,0\r\n");
    EXPECT_EQ(ReportRun({m_path, "--table", "refusals"}).output, "Kind  Entries  Runs  Last\n");
}

TEST_F(CommandTest, TablesInOneStreamHaveAnEmptyLineBetweenThem)
{
    const QByteArray output = ReportRun({m_path, "--csv"}).output;
    EXPECT_EQ(output.count("\r\n\r\n"), 5);
    EXPECT_TRUE(output.startsWith("started,ended,station,operator,systems,outcome,yield,"))
        << output.toStdString();
    EXPECT_TRUE(output.endsWith("\r\n\r\nkind,entries,runs,last\r\n")) << output.toStdString();
}

TEST_F(CommandTest, TablesInAFolderAreAFileEach)
{
    const QStringList arguments{m_path, "--csv", "-o", m_files.path("tables")};
    EXPECT_EQ(ReportRun(arguments).status, 0);
    EXPECT_EQ(
        QDir(m_files.path("tables")).entryList(QDir::Files, QDir::Name),
        (QStringList{"groups.csv", "refusals.csv", "runs.csv", "slot-times.csv", "slots.csv", "times.csv"}));
    EXPECT_EQ(m_files.read("tables/times.csv"),
              "station,function,calls,unanswered,repeated,median_ms,ninety_percent_ms,longest_ms\r\n"
              "\"Line 3\",\"showView\",1,0,0,1500,1500,1500\r\n");
    EXPECT_EQ(ReportRun(arguments).status, 0);
    m_files.write("tables/slots.csv", "my own");
    EXPECT_EQ(refusal(arguments), "station: report: " + m_files.path("tables/slots.csv").toUtf8() +
                                      ": is there already, and is no report; nothing was written");
}

TEST_F(CommandTest, AnOutputFileIsReplacedByTheNextReportAlone)
{
    const QString target = m_files.path("report.txt");
    EXPECT_EQ(ReportRun({m_path, "-o", target}).status, 0);
    EXPECT_EQ(m_files.read("report.txt"), ReportRun({m_path}).output);
    EXPECT_EQ(ReportRun({m_path, "--table", "runs", "-o", target}).status, 0);
    EXPECT_TRUE(m_files.read("report.txt").contains("Started"));
    EXPECT_TRUE(refusal({m_path, "--csv", "--table", "runs", "-o", target}).contains("is no report"));
    EXPECT_TRUE(refusal({m_path, "-o", m_path}).contains("is no report"));
    EXPECT_EQ(ReportRun({m_path}).status, 0);
}

TEST_F(CommandTest, ASerialNumberThatWasNotEnteredIsStatusOne)
{
    const ReportRun found({m_path, "--serial", "=1+1", "--csv"});
    EXPECT_EQ(found.status, 0);
    EXPECT_TRUE(found.output.contains(",\"SN\",\"'=1+1\",")) << found.output.toStdString();
    const ReportRun missing({m_path, "--serial", "A2"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.output.count('\n'), 1);
    EXPECT_EQ(ReportRun({m_path, "--serial", "A2", "--html", m_files.path("page")}).status, 1);
    EXPECT_TRUE(m_files.read("page/index.html").contains("It was not entered in any run."));
}

TEST_F(CommandTest, AForeignPageStaysAndAnEarlierOneIsReplaced)
{
    const QStringList arguments{m_path, "--html", m_files.path("page")};
    EXPECT_EQ(ReportRun(arguments).status, 0);
    EXPECT_EQ(ReportRun(arguments).status, 0);
    m_files.write("page/index.html", "<!DOCTYPE html>\n<p>mine</p>");
    EXPECT_TRUE(refusal(arguments).contains("is there already, and is no report"));
    EXPECT_EQ(m_files.read("page/index.html"), "<!DOCTYPE html>\n<p>mine</p>");
}

TEST_F(CommandTest, AWrongUsageIsToldInOneLine)
{
    const QByteArray help = "; see station report --help";
    EXPECT_EQ(refusal({}), "station: report: needs one file of results" + help);
    EXPECT_EQ(refusal({m_path, m_path}), "station: report: needs one file of results" + help);
    EXPECT_EQ(refusal({m_path, "--table", "cakes"}), "station: report: there is no table 'cakes'" + help);
    EXPECT_EQ(refusal({m_path, "--table", "serial"}),
              "station: report: the table 'serial' needs --serial TEXT" + help);
    EXPECT_EQ(refusal({m_path, "--html", "x", "--csv"}),
              "station: report: --html goes with --serial alone" + help);
    EXPECT_EQ(refusal({m_path, "--html", ""}), "station: report: --html is empty" + help);
    EXPECT_TRUE(refusal({m_path, "--cake"}).endsWith(help));
    EXPECT_EQ(refusal({m_files.path("none")}),
              "station: report: " + m_files.path("none").toUtf8() + ": there is no such file");
}

TEST_F(CommandTest, TheHelpNamesTheCommandAndItsTables)
{
    const ReportRun run({"--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.output.startsWith("Usage: station report [options] FILE.sqlite\n"))
        << run.output.toStdString();
    for (const char *word : {"slot-times", "--serial", "Exit status: 0"})
        EXPECT_TRUE(run.output.contains(word)) << word;
}

TEST_F(CommandTest, OutputThatCannotBeWrittenIsNoReport)
{
    const ReportRun run({m_path}, "/dev/full");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, "station: report: it cannot be printed: No space left on device\n");
}

} // namespace
