#include "station/report/FiguresReader.h"
#include "tests/report/ExampleResults.h"
#include "tests/results/Tables.h"

#include <QFile>

#include <atomic>
#include <semaphore>
#include <thread>

using namespace station::report;
using platform::Dictionary;
using testsupport::ExampleResults;

namespace {

/// A station that begins, writes a run and ends, on a thread of its own, each time that it is told to.
class BriefStation
{
public:
    explicit BriefStation(const QString &path)
        : m_thread([this, path] { work(path); })
    {}
    ~BriefStation()
    {
        m_isOver = true;
        m_begin.release();
        m_thread.join();
    }
    BriefStation(const BriefStation &) = delete;
    BriefStation &operator=(const BriefStation &) = delete;

    void begin() { m_begin.release(); }
    void waitForEnd() { m_end.acquire(); }

private:
    void work(const QString &path)
    {
        for (int run = 0;; ++run) {
            m_begin.acquire();
            if (m_isOver)
                return;
            ExampleResults results(path);
            results.run(QStringLiteral("brief %1").arg(run), "2026-11-20T08:00:00.000Z");
            results.system(0);
            results.answers(Dictionary{{"SN", "A1"}, {"Rev", "B"}, {"Lot", "7"}}, 1000);
            results.ends(KVKLuaOutcome::Passed);
            results.close();
            m_end.release();
        }
    }

    std::counting_semaphore<> m_begin{0};
    std::counting_semaphore<> m_end{0};
    std::atomic<bool> m_isOver{false};
    std::thread m_thread;
};

/// So much in a file that reading it takes longer than such a station lives.
void fill(const QString &path)
{
    ExampleResults(path).close();
    const QString numbers = "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < %1) ";
    testsupport::runOnFile(
        path,
        {"BEGIN",
         numbers.arg(9'999) + "INSERT INTO runs (run, station, configuration, started)"
                              " SELECT 'r' || i, 'Line 3', '/', '2026-11-20T08:00:00.000Z' FROM n",
         numbers.arg(9'999) + "INSERT INTO sequences (run, sequence, script, system, group_name, slot,"
                              " started, outcome) SELECT 'r' || i, 0, 'a.lua', 0, 'G1', 'S1', '', 'passed'"
                              " FROM n",
         numbers.arg(9'999) + "INSERT INTO calls (run, sequence, call, function, started, ended,"
                              " milliseconds, result) SELECT 'r' || i, 0, 1, 'showView', '', '', 9, ''"
                              " FROM n",
         numbers.arg(29'999) + "INSERT INTO answers (run, sequence, call, position, value)"
                               " SELECT 'r' || (i / 3), 0, 1, i % 3, 'A1' FROM n",
         "COMMIT"});
}

qint64 callsOf(const Figures &figures)
{
    return figures.functions.isEmpty() ? 0 : figures.functions.first().calls;
}

// The file changes under a reader that has just seen that nobody uses it: begun, filled, and folded together
// by the station's end.
TEST(MeetingTest, AStationThatComesAndGoesIsReadAtOneMoment)
{
    const testsupport::StationFiles files;
    const QString path = files.path("results.sqlite");
    fill(path);
    BriefStation station(path);
    for (int round = 0; round < 15; ++round) {
        station.begin();
        const Figures figures = readFigures(path, {});
        station.waitForEnd();
        const Outcomes sequences = figures.sequences();
        // What one transaction has written is there whole, and every table is of the same moment.
        EXPECT_EQ(figures.answers, 3 * callsOf(figures));
        EXPECT_LE(figures.runs.size() - sequences.total(), 1);
        EXPECT_LE(sequences.total() - callsOf(figures), 1);
        EXPECT_LE(callsOf(figures), sequences.total());
        EXPECT_GE(sequences.passed, 10'000 + round);
    }
}

// A second reader, or a person with SQLite's shell, has the file open in between.
TEST(MeetingTest, AReaderDoesNotKeepAStationFromItsResults)
{
    const testsupport::StationFiles files;
    const QString path = files.path("results.sqlite");
    ExampleResults results(path);
    results.run("a", "2026-11-20T08:00:00.000Z");
    std::atomic<bool> isOver{false};
    std::thread reader([&] {
        while (!isOver)
            static_cast<void>(readFigures(path, {}));
    });
    for (int i = 0; i < 50; ++i) {
        results.system(0);
        results.answers(Dictionary{{"SN", "A1"}}, 1000);
    }
    isOver = true;
    reader.join();
    results.close();
    EXPECT_EQ(readFigures(path, {}).answers, 50);
    EXPECT_FALSE(QFile::exists(path + "-wal"));
}

} // namespace
