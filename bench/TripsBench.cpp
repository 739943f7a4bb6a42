#include "kovan/KovanLogging/KVKLogging.h"
#include "platform/MainQueue.h"
#include "station/LogFile.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>

#include "bench/Clock.h"
#include "bench/Hands.h"
#include "bench/PaintWatch.h"
#include "bench/Pairs.h"
#include "bench/Serve.h"
#include "bench/Trips.h"
#include "bench/baseline/BareAsking.h"
#include "bench/baseline/BareDialog.h"
#include "bench/baseline/BareWindow.h"
#include "soak/Arguments.h"

// Whole round trips: of one sequence, in stations of so many slots, and of many at once.

namespace {

constexpr int TripsOfOne = 60;
constexpr int TripsOfDialog = 60;
const QString Entry = QStringLiteral("A0000\n");

int tripsOfEach(int asking)
{
    return std::max(2, 64 / asking);
}

constexpr double Second = 1e9;
constexpr double MillisecondsOfSecond = 1e3;

void report(benchmark::State &state, const bench::TripFigures &figures)
{
    state.SetIterationTime(figures.seconds);
    state.counters["per_second"] = figures.trips / figures.seconds;
    state.counters["main_share"] = figures.mainSeconds / figures.seconds;
    state.counters["processor_ms"] = MillisecondsOfSecond * figures.allSeconds / figures.trips;
    if (figures.slowest > 0.0)
        state.counters["slowest"] = figures.slowest;
}

/// Times what is done from its making on.
class TripClock
{
public:
    [[nodiscard]] bench::TripFigures after(int trips) const
    {
        return {.seconds = static_cast<double>(bench::now() - m_begin) / Second,
                .mainSeconds = static_cast<double>(bench::threadTime() - m_beginOfMain) / Second,
                .allSeconds = static_cast<double>(bench::processTime() - m_beginOfAll) / Second,
                .trips = trips};
    }

private:
    bench::Nanoseconds m_begin = bench::now();
    bench::Nanoseconds m_beginOfMain = bench::threadTime();
    bench::Nanoseconds m_beginOfAll = bench::processTime();
};

void trips(benchmark::State &state, const bench::TripPlan &plan)
{
    for ([[maybe_unused]] const auto _ : state)
        report(state, bench::makeTrips(plan));
}

void bareTrips(benchmark::State &state, int asking, int tripsOfEach)
{
    baseline::BareWindow window;
    bench::PaintWatch watch;
    for ([[maybe_unused]] const auto _ : state) {
        baseline::BareAsking calls(window, asking, tripsOfEach);
        bench::serveUntil([&] { return calls.isAsked(); });
        const TripClock clock;
        for (int trip = 0; trip < asking * tripsOfEach; ++trip) {
            bench::serveUntil([&] { return calls.isAsked() && calls.answered() == trip; });
            watch.awaitPaint(calls.panel().field);
            bench::hands::type(window.window(), Entry);
            bench::hands::click(calls.panel().ok);
        }
        bench::serveUntil([&] { return calls.answered() == asking * tripsOfEach; });
        report(state, clock.after(asking * tripsOfEach));
    }
}

void bareDialog(benchmark::State &state)
{
    baseline::BareWindow window;
    bench::PaintWatch watch;
    for ([[maybe_unused]] const auto _ : state) {
        const TripClock clock;
        for (int trip = 0; trip < TripsOfDialog; ++trip) {
            const QString text =
                baseline::askByDialog(window.window(), [&](QLineEdit *field, QPushButton *ok) {
                    watch.awaitPaint(field);
                    bench::hands::type(field->window(), Entry);
                    bench::hands::click(ok);
                });
            if (text + QLatin1Char('\n') != Entry)
                state.SkipWithError("the dialog has another answer");
        }
        report(state, clock.after(TripsOfDialog));
    }
}

void registerTrips()
{
    for (const int slotCount : {1, 4, 12, 48, 192, 768}) {
        bench::registerPair(
            bench::nameWith("trips.slot", slotCount), 1,
            [slotCount](benchmark::State &state) {
                trips(state, {.slotsPerGroup = slotCount, .trips = TripsOfOne});
            },
            [](benchmark::State &state) { bareTrips(state, 1, TripsOfOne); });
    }
    bench::registerPair(
        "trips.dialog", 1,
        [](benchmark::State &state) { trips(state, {.slotsPerGroup = 12, .trips = TripsOfOne}); },
        bareDialog);
    for (const int asking : {4, 16, 64, 256}) {
        const int side = std::max(2, static_cast<int>(std::lround(std::sqrt(asking))));
        bench::registerPair(
            bench::nameWith("trips.at.once", asking), 1,
            [asking, side](benchmark::State &state) {
                trips(
                    state,
                    {.groups = side, .slotsPerGroup = side, .asking = asking, .trips = tripsOfEach(asking)});
            },
            [asking](benchmark::State &state) { bareTrips(state, asking, tripsOfEach(asking)); });
    }
}

/// Only makes trips, for whoever counts what is done meanwhile.
int tripsAlone(const soak::Arguments &arguments)
{
    const bench::TripFigures figures =
        bench::makeTrips({.slotsPerGroup = arguments.number("slots", 1),
                          .isGroup = arguments.text("kind", "slot") == QLatin1String("group"),
                          .trips = arguments.number("trips", 1)});
    soak::say(QStringLiteral("%1 trips in %2 s").arg(figures.trips).arg(figures.seconds));
    return EXIT_SUCCESS;
}

/// Only logs, into a file.
int eventsAlone(int count)
{
    const QTemporaryDir folder;
    const station::LogFile file(folder.filePath("events.log"));
    for (int event = 0; event < count; ++event)
        KVKLogEvent(KVKLogLevel::Debug, "%s: %@ [%ld]", {"-[InteractiveView getCondition:]", "G1", event});
    return EXIT_SUCCESS;
}

int runBenchmarks(int argc, char **argv)
{
    registerTrips();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtFatalMsg)
            soak::say(text);
    });
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    platform::MainQueue::attach();
    const soak::Arguments arguments(argc, argv);
    int status = EXIT_SUCCESS;
    if (const int events = arguments.number("events", 0); events > 0)
        status = eventsAlone(events);
    else if (arguments.number("trips", 0) > 0)
        status = tripsAlone(arguments);
    else
        status = runBenchmarks(argc, argv);
    platform::MainQueue::detach();
    return status;
}
