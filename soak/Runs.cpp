#include "platform/MainQueue.h"
#include "platform/TextField.h"
#include "station/Station.h"
#include "station/operator/OperatorHands.h"

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>

#include "soak/Arguments.h"
#include "soak/Figures.h"

// Runs pressed one after another in one window of the whole station: its plug-in is loaded, its sequences are
// Lua scripts from files, its results are written; a person presses Run, scans four units, and presses Run
// again.

namespace {

using platform::TextField;

constexpr int Systems = 4;
constexpr int Looks = 100;
constexpr std::chrono::minutes Patience(2);

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) < 0)
        qFatal("cannot write a file of the station");
}

station::CommandLine commandLineIn(const QTemporaryDir &folder)
{
    write(folder.filePath("station.toml"), R"(
[station]
name = "Soak"
groups = ["G1", "G2"]
slots = ["S1", "S2"]

[[sequence]]
script = "sequence.lua"
per = "system"
)");
    write(folder.filePath("sequence.lua"), R"(
local answer = showView(systemIndex, { input = { "SN" }, length = 8, autoConfirm = true })
log("scanned " .. answer.SN)
return answer.SN:find("^SN") ~= nil
)");
    station::CommandLine line;
    line.config = folder.filePath("station.toml");
    line.results = folder.filePath("results.jsonl");
    line.log = folder.filePath("station.log");
    line.plugins = QStringList{QStringLiteral(PLUGIN_PATH)};
    return line;
}

/// The person in front of the station's window.
class Person
{
public:
    explicit Person(station::StationWindow &window)
        : m_window(window)
        , m_hands(&window)
    {}

    /// Presses Run, scans a unit for each system, and waits for the end; whether all passed.
    bool run()
    {
        clickRun();
        serveUntil("the run", [this] { return m_window.isRunning(); });
        for (int unit = 0; unit < Systems; ++unit) {
            serveUntil("a field that waits", [&] { return openFields() == Systems - unit && isAwaited(); });
            m_hands.type(QStringLiteral("SN%1\n").arg(++m_units % 1'000'000, 6, 10, QLatin1Char('0')));
        }
        serveUntil("the end of the run", [this] { return !m_window.isRunning(); });
        return m_window.status() == QLatin1String("All passed");
    }

    template <class Condition>
    void serveUntil(const char *what, const Condition &condition)
    {
        const QDeadlineTimer limit(Patience);
        QTimer heartbeat;
        heartbeat.start(std::chrono::milliseconds(2));
        while (!condition()) {
            if (limit.hasExpired()) {
                std::cerr << "waited in vain for " << what << ": " << m_window.status().toStdString()
                          << std::endl;
                std::_Exit(EXIT_FAILURE);
            }
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

private:
    void clickRun()
    {
        for (QToolButton *button : m_window.findChildren<QToolButton *>()) {
            if (button->defaultAction() != m_window.runAction() || !button->isVisible())
                continue;
            serveUntil("Run to be possible", [button] { return button->isEnabled(); });
            QTest::mouseClick(m_window.windowHandle(), Qt::LeftButton, {},
                              button->mapTo(&m_window, button->rect().center()));
            return;
        }
        qFatal("there is no button Run");
    }

    [[nodiscard]] int openFields() const
    {
        const QList<TextField *> fields = m_window.findChildren<TextField *>();
        return static_cast<int>(
            std::ranges::count_if(fields, [](TextField *field) { return isEntry(field); }));
    }
    [[nodiscard]] static bool isEntry(TextField *field)
    {
        return field->isVisible() && field->identifier().text().endsWith(QLatin1String("-SN"));
    }
    /// Whether what is scanned goes into an empty field of a panel.
    [[nodiscard]] bool isAwaited() const
    {
        const QList<TextField *> fields = m_window.findChildren<TextField *>();
        return std::ranges::any_of(fields, [](TextField *field) {
            return isEntry(field) && field->isFirstResponder() && field->stringValue().isEmpty();
        });
    }

    station::StationWindow &m_window;
    station::OperatorHands m_hands;
    qint64 m_units = 0;
};

station::StationWindow *stationWindow()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *found = qobject_cast<station::StationWindow *>(window))
            return found;
    }
    return nullptr;
}

void pressRuns(const soak::Arguments &arguments)
{
    station::StationWindow *window = stationWindow();
    if (!window)
        qFatal("there is no station");
    const int runs = arguments.number("runs", 100);
    const int warm = arguments.number("warm", 50);
    const int step = std::max(1, (runs - warm) / Looks);
    Person person(*window);
    soak::Figures figures;
    QElapsedTimer clock;
    clock.start();
    qint64 failed = 0;
    for (int run = 1; run <= runs; ++run) {
        failed += person.run() ? 0 : 1;
        if (run >= warm && (run - warm) % step == 0)
            figures.look(run);
    }
    soak::say(QStringLiteral("%1 runs in %2 s, %3 ms each")
                  .arg(runs)
                  .arg(clock.elapsed() / 1000)
                  .arg(static_cast<double>(clock.elapsed()) / runs, 0, 'f', 1));
    figures.write(arguments.text("figures", "build/soak/runs") + ".csv");
    figures.judge(QStringLiteral("runs in one window"));
    soak::tell(QStringLiteral("every run of four sequences is answered and passes"), runs, failed);
    window->close();
}

} // namespace

int main(int argc, char **argv)
{
    const soak::Arguments arguments(argc, argv);
    const QTemporaryDir folder;
    soak::prepare(folder.path());
    QApplication application(argc, argv);
    platform::MainQueue::attach();
    int status = EXIT_FAILURE;
    {
        station::Station station(commandLineIn(folder));
        QTimer::singleShot(0, [&] { pressRuns(arguments); });
        status = station.run();
    }
    platform::MainQueue::detach();
    return status;
}
