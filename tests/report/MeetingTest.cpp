#include "station/report/FiguresReader.h"
#include "tests/report/ExampleResults.h"
#include "tests/results/Tables.h"

#include <QFile>

#include <atomic>
#include <thread>

using namespace station::report;
using platform::Dictionary;
using testsupport::ExampleResults;

namespace {

/// A station that begins, writes a run and ends, again and again, on a thread of its own; so many times at
/// most.
class BusyStation
{
public:
    explicit BusyStation(const QString &path)
        : m_thread([this, path] { work(path); })
    {}
    ~BusyStation()
    {
        m_isOver = true;
        m_thread.join();
    }
    BusyStation(const BusyStation &) = delete;
    BusyStation &operator=(const BusyStation &) = delete;

private:
    void work(const QString &path)
    {
        for (int run = 0; !m_isOver; ++run) {
            ExampleResults results(path);
            results.run(QStringLiteral("busy %1").arg(run), "2026-11-20T08:00:00.000Z");
            results.system(0);
            results.answers(Dictionary{{"SN", "A1"}, {"Rev", "B"}, {"Lot", "7"}}, 1000);
            results.ends(KVKLuaOutcome::Passed);
        }
    }

    std::atomic<bool> m_isOver{false};
    std::thread m_thread;
};

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
    ExampleResults(path).close();
    const BusyStation station(path);
    qint64 before = 0;
    for (int round = 0; round < 100; ++round) {
        const Figures figures = readFigures(path, "A1");
        const Outcomes sequences = figures.sequences();
        // What one transaction has written is there whole, and every table is of the same moment.
        EXPECT_EQ(figures.answers, 3 * callsOf(figures));
        EXPECT_EQ(figures.serialAnswers.size(), figures.answers);
        EXPECT_LE(sequences.open, 1);
        EXPECT_LE(figures.runs.size() - sequences.total(), 1);
        EXPECT_LE(sequences.passed, callsOf(figures));
        EXPECT_LE(callsOf(figures), sequences.total());
        EXPECT_GE(figures.answers, before);
        before = figures.answers;
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
