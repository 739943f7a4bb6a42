#include "bench/Trips.h"

#include "station/Station.h"

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <vector>

#include "bench/Clock.h"
#include "bench/Serve.h"
#include "bench/TripOperator.h"

namespace bench {

namespace {

constexpr int MostEntries = 12;

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write a file of the station");
}

QByteArray listOf(const char *letter, int count)
{
    QByteArrayList names;
    for (int i = 1; i <= count; ++i)
        names.append('"' + QByteArray(letter) + QByteArray::number(i) + '"');
    return names.join(", ");
}

QByteArray scriptFor(const TripPlan &plan)
{
    const QByteArray names = listOf("S", std::min(plan.slotsPerGroup, MostEntries));
    const QByteArray call = plan.isGroup ? "local answer = showGroupView(groupNumber, { input = { " + names +
                                               " } })\n"
                                               "assert(answer.S1 == \"A0000\")\n"
                                         : "local answer = showView(systemIndex, { input = { \"SN\" } })\n"
                                           "assert(answer.SN == \"A0000\")\n";
    return QByteArray("if %WHO >= %ASKING then return true end\n"
                      "for trip = 1, %TRIPS do\n")
               .replace("%WHO", plan.isGroup ? "groupNumber" : "systemIndex")
               .replace("%ASKING", QByteArray::number(plan.isGroup ? 1 : plan.asking))
               .replace("%TRIPS", QByteArray::number(plan.trips)) +
           call + "end\nreturn true\n";
}

station::CommandLine stationIn(const QTemporaryDir &folder, const TripPlan &plan)
{
    write(folder.filePath("station.toml"),
          "[station]\nname = \"Trips\"\ngroups = [" + listOf("G", plan.groups) + "]\nslots = [" +
              listOf("S", plan.slotsPerGroup) + "]\n[[sequence]]\nscript = \"trips.lua\"\nper = \"" +
              (plan.isGroup ? "group" : "system") + "\"\n");
    write(folder.filePath("trips.lua"), scriptFor(plan));
    station::CommandLine line;
    line.config = folder.filePath("station.toml");
    line.results = folder.filePath("results.jsonl");
    line.log = folder.filePath("station.log");
    line.plugins = QStringList{QStringLiteral(PLUGIN_PATH)};
    return line;
}

station::StationWindow &stationWindow()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *found = qobject_cast<station::StationWindow *>(window))
            return *found;
    }
    qFatal("there is no station");
}

TripFigures answerRun(const TripPlan &plan)
{
    station::StationWindow &window = stationWindow();
    TripFigures figures;
    figures.trips = plan.asking * plan.trips;
    TripOperator person;
    serveUntil([&] { return window.isActiveWindow(); });
    window.runAction()->trigger();
    serveUntil([&] { return person.isAsked(); });
    const Nanoseconds begin = now();
    const Nanoseconds beginOfMain = threadTime();
    const Nanoseconds beginOfAll = processTime();
    const int entries = plan.isGroup ? std::min(plan.slotsPerGroup, MostEntries) : 1;
    for (int trip = 0; trip < figures.trips; ++trip) {
        serveUntil([&] { return person.isAsked() || !window.isRunning(); });
        if (!window.isRunning())
            qFatal("the run has ended too early");
        person.answer(entries);
    }
    serveUntil([&] { return !window.isRunning(); });
    constexpr double Second = 1e9;
    figures.seconds = static_cast<double>(now() - begin) / Second;
    figures.mainSeconds = static_cast<double>(threadTime() - beginOfMain) / Second;
    figures.allSeconds = static_cast<double>(processTime() - beginOfAll) / Second;
    if (window.status() != QLatin1String("All passed"))
        qFatal("a sequence has not got its answer");
    window.close();
    return figures;
}

/// When each system's calls ended, in milliseconds, by the results.
QMap<int, std::vector<qint64>> endsOfCalls(const QString &results)
{
    QMap<int, std::vector<qint64>> ends;
    QFile file(results);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("there are no results");
    while (!file.atEnd()) {
        const QJsonObject line = QJsonDocument::fromJson(file.readLine()).object();
        if (line.contains("call")) {
            const QDateTime time = QDateTime::fromString(line.value("time").toString(), Qt::ISODateWithMs);
            ends[line.value("system").toInt()].push_back(time.toMSecsSinceEpoch());
        }
    }
    return ends;
}

double slowestOf(const TripPlan &plan, const QString &results)
{
    const QMap<int, std::vector<qint64>> ends = endsOfCalls(results);
    double slowest = 0.0;
    for (std::size_t round = 1; round < static_cast<std::size_t>(plan.trips); ++round) {
        std::vector<qint64> times;
        // A sequence calls again as soon as its call has returned.
        for (const std::vector<qint64> &own : ends)
            times.push_back(own.at(round) - own.at(round - 1));
        std::ranges::sort(times);
        const auto median = static_cast<double>(std::max(qint64{1}, times.at(times.size() / 2)));
        slowest = std::max(slowest, static_cast<double>(times.back()) / median);
    }
    return slowest;
}

} // namespace

TripFigures makeTrips(const TripPlan &plan)
{
    const QTemporaryDir folder;
    for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, folder.path().toUtf8());
    TripFigures figures;
    station::Station station(stationIn(folder, plan));
    QTimer::singleShot(0, &station, [&] { figures = answerRun(plan); });
    station.run();
    if (plan.asking > 1)
        figures.slowest = slowestOf(plan, folder.filePath("results.jsonl"));
    return figures;
}

} // namespace bench
