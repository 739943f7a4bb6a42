#include "station/Station.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanUIExtension/KVKColorEngine.h"
#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "kovan/KovanUIExtension/KVKExtensionInteractiveView.h"
#include "station/ExitGuard.h"
#include "station/FileRights.h"
#include "station/StopSignal.h"
#include "station/base/StationError.h"
#include "station/look/MemoryFile.h"
#include "station/results/OutboxLabel.h"

#include <QApplication>
#include <QStatusBar>
#include <QTextStream>

#include <cstdlib>
#include <utility>

namespace station {

namespace {

/// Long enough for every call to end that can be ended, short enough that nobody kills the program instead.
constexpr std::chrono::milliseconds StopLimit{3000};
constexpr std::chrono::milliseconds BetweenStopLooks{100};
constexpr std::chrono::milliseconds BetweenIdleLooks{500};
constexpr std::chrono::milliseconds BetweenResultTries{1000};
const QString NobodyToRunFor = QStringLiteral("no sequence has a system or group to run for");
constexpr QSize HeadlessSize{1440, 900};
const QString OperatorsName = QStringLiteral("the operator's script");

platform::Array toArray(const QStringList &texts)
{
    platform::Array array;
    for (const QString &text : texts)
        array.append(text);
    return array;
}

StationConfig configurationFor(const CommandLine &line)
{
    StationConfig config = readStationConfig(line.config, line.sequences.isEmpty() ? SequenceNeed::AtLeastOne
                                                                                   : SequenceNeed::None);
    if (!line.sequences.isEmpty()) {
        config.sequences.clear();
        for (const QString &script : line.sequences)
            config.sequences.append({script, SequenceKind::System});
    }
    // Before anything is written.
    if (config.sharesFiles)
        makeFilesShared();
    return config;
}

void sayOnError(const QString &text)
{
    QTextStream(stderr) << "station: " << text << Qt::endl;
}

} // namespace

Station::Station(const CommandLine &commandLine)
    : m_commandLine(commandLine)
    , m_config(configurationFor(commandLine))
    , m_log(commandLine.log)
    , m_results({commandLine.results, m_config.resultsDatabase, m_config.resultsOutbox},
                commandLine.headless || !commandLine.operatorScript.isEmpty())
    , m_recording(commandLine.record)
{
    serveConfiguration();
    loadPlugins();
    makeWindow();
    makeRunner();
    makeOperator();
    connectRun();
}

Station::~Station()
{
    // The operator and the sequences go first: they use everything else. The plug-ins go before the window
    // that shows their views, and while the main queue serves: a confirmation of theirs may be under way.
    m_operator.reset();
    m_board.reset();
    m_runner.reset();
    m_recording.end();
    m_plugins.clear();
    m_senses.reset();
    m_window.reset();
    KVKColorEngine::setProviders(nullptr, nullptr);
}

void Station::serveConfiguration() const
{
    KVKConfigEngine *engine = KVKConfigEngine::sharedConfigEngine();
    engine->setStatusTableCustomRowColorEnabled(m_config.customRowColor);
    engine->setSystemIndexToGroupMapping(toArray(m_config.systemGroups));
    engine->setSystemIndexToSlotMapping(toArray(m_config.systemSlots));
    engine->setLocale(m_config.locale);
    const auto provider = [colors = m_config.colors](platform::Color SystemColors::*part) {
        return [colors, part](const platform::Value &index) -> std::optional<platform::Color> {
            const auto found = colors.constFind(index.toInt());
            return found == colors.constEnd() ? std::nullopt : std::optional(*found.*part);
        };
    };
    KVKColorEngine::setProviders(provider(&SystemColors::background), provider(&SystemColors::text));
}

void Station::loadPlugins()
{
    m_plugins = station::loadPlugins(m_commandLine.plugins, m_config.plugins);
    if (m_plugins.empty())
        throw StationError(QStringLiteral("%1: key 'plugins': names no plug-in").arg(m_commandLine.config));
}

void Station::makeWindow()
{
    m_window = std::make_unique<StationWindow>(m_config.name, m_config.systems());
    for (const LoadedPlugin &plugin : m_plugins) {
        platform::View *view = plugin.view();
        m_window->addPluginView(plugin.name(), view, plugin.minimumSize());
    }
    m_recording.start(m_config.name, *m_window, m_plugins.front().view());
    m_window->setImageFolders(m_config.imageFolders);
    m_window->statusBar()->addPermanentWidget(new OutboxLabel(m_results));
    if (m_commandLine.headless) {
        m_window->setStandsOnNoScreen();
        m_window->resize(HeadlessSize);
    } else {
        m_window->rememberIn(MemoryFile::usualFile());
    }
    const bool hasPerson = !m_commandLine.headless && m_commandLine.operatorScript.isEmpty();
    m_senses = std::make_unique<Senses>(m_config, *m_window, m_commandLine.badges, hasPerson);
    if (m_commandLine.theme)
        m_window->setTheme(*m_commandLine.theme, StationWindow::Keep::No);
    m_window->setLogOwners(&RunningSequence::systemsOfThread);
}

void Station::makeRunner()
{
    platform::Dictionary constants;
    QList<KVKExtensionInterruption *> interruptions;
    for (const LoadedPlugin &plugin : m_plugins) {
        constants.insert(plugin.constants());
        if (plugin.interruption())
            interruptions.append(plugin.interruption());
    }
    m_runner = std::make_unique<SequenceRunner>(m_config, bindFunctions(m_plugins), constants, interruptions,
                                                m_results);
}

void Station::makeOperator()
{
    if (m_commandLine.operatorScript.isEmpty())
        return;
    const LoadedPlugin &plugin = m_plugins.front();
    const OperatorStage stage{m_window.get(),   plugin.view(),         plugin.extension()->pluginContext(),
                              m_config.scanner, m_window->runAction(), m_window->stopAction(),
                              m_config.lua,     m_senses->field(),     m_commandLine.badges};
    m_operatorDone = false;
    m_operator = std::make_unique<OperatorScript>(
        m_commandLine.operatorScript, stage, [this](const OperatorScript::End &end) { operatorEnded(end); });
}

void Station::connectRun()
{
    connect(m_window.get(), &StationWindow::runRequested, this, &Station::startRun);
    connect(m_window.get(), &StationWindow::stopRequested, this, &Station::stopRun);
    m_board = std::make_unique<RunBoard>(m_config, *m_runner, *m_window);
    // Queued, so that the last sequence is not taken away inside its own report.
    connect(m_runner.get(), &SequenceRunner::allEnded, this, &Station::runEnded, Qt::QueuedConnection);
    m_idleWait.setInterval(BetweenIdleLooks);
    connect(&m_idleWait, &QTimer::timeout, this, &Station::lookForIdleWait);
    m_unwritten.setInterval(BetweenResultTries);
    connect(&m_unwritten, &QTimer::timeout, this, [this] { m_results.tryAgain(); });
    m_unwritten.start();
    m_stuck.setInterval(BetweenStopLooks);
    connect(&m_stuck, &QTimer::timeout, this, &Station::lookForStuck);
}

int Station::run()
{
    // Lives as long as the event loop that serves it.
    const StopSignal signal([this] { endNow(); });
    const ExitGuard guard([this] {
        sayOnError(QStringLiteral("the connection to the display has gone"));
        giveUp();
    });
    m_window->show();
    m_window->activateWindow();
    if (endsByItself()) {
        startRun();
        if (m_operator)
            m_operator->start();
        else
            m_idleWait.start();
    }
    QApplication::exec();
    endOperator();
    const bool hasLost = m_results.hasFailed() || m_recording.hasFailed();
    return m_runner->allPassed() && !m_operatorFailed && !hasLost ? EXIT_SUCCESS : EXIT_FAILURE;
}

bool Station::endsByItself() const
{
    return m_commandLine.headless || m_operator;
}

void Station::startRun()
{
    if (!m_senses->mayRun())
        return;
    m_senses->setRunning(true);
    m_window->setRunning(true);
    m_window->setStatus(QStringLiteral("Running"));
    m_results.beginRun(m_config.name, m_commandLine.config, m_senses->badge());
    m_recording.runBegins(m_senses->badge());
    m_runner->start(m_senses->badge());
    m_board->begin();
}

void Station::stopRun()
{
    if (!m_runner->isRunning())
        return;
    m_window->setStatus(QStringLiteral("Stopping"));
    m_stuckLooks = 0;
    m_stuck.start();
    m_recording.runStops();
    m_runner->stop();
}

/// Ends the program from outside. Asked once more (a session's end sends several signals), it has nothing
/// more to do.
void Station::endNow()
{
    if (m_endLimit)
        return;
    m_endLimit = std::chrono::steady_clock::now() + StopLimit;
    if (m_operator)
        m_operator->stop();
    stopRun();
    // Where a run goes on, the window closes with its end.
    m_window->close();
}

/// A script that does not end is left where it is, and with it the program: its thread uses what would go.
void Station::endOperator()
{
    if (!m_endLimit)
        m_endLimit = std::chrono::steady_clock::now() + StopLimit;
    if (m_operator && !m_operator->endBy(*m_endLimit)) {
        sayOnError(QStringLiteral("does not end when stopped: %1").arg(OperatorsName));
        giveUp();
    }
}

void Station::runEnded()
{
    m_stuck.stop();
    m_idleWait.stop();
    m_recording.runEnds();
    if (m_runner->ranNothing()) {
        sayOnError(QStringLiteral("nothing has run: ") + NobodyToRunFor);
        m_window->setStatus(QStringLiteral("Nothing has run: ") + NobodyToRunFor);
    } else {
        m_window->setStatus(m_runner->wasStopped()  ? QStringLiteral("Run stopped")
                            : m_runner->allPassed() ? QStringLiteral("All passed")
                                                    : QStringLiteral("Not all passed"));
    }
    m_window->setRunning(false);
    m_senses->setRunning(false);
    endWhenDone();
}

void Station::operatorEnded(const OperatorScript::End &end)
{
    m_operatorDone = true;
    if (!end.ok) {
        m_operatorFailed = true;
        // That the end of the program ended the script goes without saying.
        if (!m_endLimit) {
            const QString calls = end.traceback.isEmpty() ? QString() : QLatin1Char('\n') + end.traceback;
            KVKLogEvent(KVKLogLevel::Error, "operator: %@%@", {end.message, calls});
            sayOnError(QStringLiteral("operator: %1").arg(end.message));
        }
        stopRun();
    } else if (m_runner->isRunning()) {
        m_idleWatch = {};
        m_idleWait.start();
    }
    endWhenDone();
}

void Station::endWhenDone()
{
    // Not before the end of the run has been told: to quit closes the window, and that would be a Stop.
    if (endsByItself() && m_operatorDone && !m_runner->isRunning() && !m_window->isRunning())
        QApplication::quit();
}

/// Without an operator, or with its script over, a sequence that waits for an answer would wait for ever.
void Station::lookForIdleWait()
{
    if (!m_idleWatch.look(m_runner->callsUnderWay()))
        return;
    m_idleWait.stop();
    m_operatorFailed = true;
    const QString why = m_operator ? QStringLiteral("the script has ended")
                                   : QStringLiteral("there is none (--operator FILE)");
    sayOnError(QStringLiteral("operator: %1, but an answer is waited for by %2")
                   .arg(why, m_runner->runningNames().join(QStringLiteral(", "))));
    stopRun();
}

/// Looks are counted instead of time: on a machine that has none to spare, this thread looks less often, as
/// the sequences end more slowly.
void Station::lookForStuck()
{
    if (++m_stuckLooks < StopLimit / BetweenStopLooks)
        return;
    m_stuck.stop();
    reportStuck();
}

/// A sequence that is inside a library function (a child process, an endless search) cannot be ended from
/// outside. What it would have to say is lost; all that was said is written.
void Station::reportStuck()
{
    QStringList running = m_runner->runningNames();
    if (m_endLimit && m_operator && !m_operator->isFinished())
        running.append(OperatorsName);
    // All have ended just now; the report of it is on its way to this thread.
    if (running.isEmpty())
        return;
    const QString names = running.join(QStringLiteral(", "));
    sayOnError(QStringLiteral("does not end when stopped: %1").arg(names));
    m_window->setStatus(QStringLiteral("Does not end: ") + names);
    if (endsByItself() || !m_window->isVisible() || m_window->isClosing())
        giveUp();
}

/// Ends without the threads that do not. What results could not be written yet is tried once more, and told.
void Station::giveUp()
{
    static_cast<void>(m_results.hasFailed());
    static_cast<void>(KVKLogGetProxy()->flush(KVKLogProxy::EndLimit));
    std::_Exit(EXIT_FAILURE);
}

} // namespace station
