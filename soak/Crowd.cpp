#include "platform/MainQueue.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHash>
#include <QPointer>
#include <QTemporaryDir>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "soak/Arguments.h"
#include "soak/Sequence.h"
#include "soak/SoakStation.h"

// Many sequences that are asked for at once: each gets the answer of its own panel, whatever the order in
// which an operator answers them; and a large station draws, answers and stops.

namespace {

using platform::Value;
using soak::Sequence;
using soak::SoakStation;

/// How many sequences there are, and how they share the panels.
struct Crowd
{
    int groups;
    int slotsPerGroup;
    int perSystem; ///< Sequences that ask for the same system, and so take turns.

    [[nodiscard]] int systems() const { return groups * slotsPerGroup; }
    [[nodiscard]] int sequences() const { return systems() * perSystem; }
};

/// How long it took, in milliseconds.
struct Durations
{
    qint64 drawn = 0;
    qint64 answered = 0;
    qint64 stopped = 0;
};

/// One station with a crowd of sequences in it.
class Asking
{
public:
    Asking(const Crowd &crowd, const QString &script, quint64 seed)
        : m_crowd(crowd)
        , m_script(script)
        , m_station(crowd.groups, crowd.slotsPerGroup)
        , m_engine(seed)
    {}

    /// Starts all sequences, answers them in random order, and counts those that got another answer.
    void answerAll()
    {
        begin();
        m_clock.start();
        m_fields = m_station.fields();
        std::vector<QString> waiting = labels();
        while (!waiting.empty()) {
            // Of those whose panels stand; the others wait for their turn.
            std::shuffle(waiting.begin(), waiting.end(), m_engine);
            const QString label = anyOpen(waiting);
            answer(label);
            std::erase(waiting, label);
        }
        awaitEnds(QStringLiteral("the answers"));
        m_durations.answered = m_clock.elapsed();
        judge();
        m_sequences.clear();
    }

    /// Starts all sequences, and stops the station when every panel stands.
    void stopAll()
    {
        begin();
        m_clock.start();
        m_station.plugin().interruptWaitingCalls();
        awaitEnds(QStringLiteral("the end by Stop"));
        m_durations.stopped = m_clock.elapsed();
        for (const auto &sequence : m_sequences)
            m_wrong += sequence->end().value == Value(401) ? 0 : 1;
        m_station.plugin().acceptCalls();
        m_sequences.clear();
    }

    [[nodiscard]] qint64 wrong() const { return m_wrong; }
    [[nodiscard]] Durations durations() const { return m_durations; }

private:
    /// Every sequence asks under a name of its own, by which it is known whose panel stands.
    static QString labelOf(int number) { return QStringLiteral("L%1").arg(number); }
    [[nodiscard]] int systemOf(const QString &label) const
    {
        return label.mid(1).toInt() % m_crowd.systems();
    }
    [[nodiscard]] QString fieldOf(const QString &label) const
    {
        return QStringLiteral("%1-%2").arg(systemOf(label)).arg(label);
    }
    [[nodiscard]] static QString textFor(const QString &label, int round)
    {
        return QStringLiteral("%1R%2").arg(label).arg(round);
    }

    [[nodiscard]] std::vector<QString> labels() const
    {
        std::vector<QString> all;
        for (int number = 0; number < m_crowd.sequences(); ++number)
            all.push_back(labelOf(number));
        return all;
    }

    void begin()
    {
        ++m_round;
        m_clock.start();
        for (int number = 0; number < m_crowd.sequences(); ++number) {
            m_sequences.push_back(std::make_unique<Sequence>(
                m_station.plugin(), m_script,
                platform::Dictionary{{"system", number % m_crowd.systems()}, {"label", labelOf(number)}}));
        }
        SoakStation::serveUntil(QStringLiteral("all to be asked at once"), [this] {
            const QMap<QString, qint64> kept = m_station.kept();
            return kept.value("turns") == m_crowd.sequences() && m_station.openPanels() == m_crowd.systems();
        });
        m_durations.drawn = m_clock.elapsed();
    }

    /// The field of one of these whose panels stand.
    QString anyOpen(const std::vector<QString> &waiting)
    {
        QString found;
        SoakStation::serveUntil(QStringLiteral("a panel"), [&] {
            found = firstOpen(waiting);
            // Those that took their turns since the last look are not known yet.
            if (found.isNull()) {
                m_fields = m_station.fields();
                found = firstOpen(waiting);
            }
            return !found.isNull();
        });
        return found;
    }

    [[nodiscard]] QString firstOpen(const std::vector<QString> &waiting) const
    {
        const auto open = std::ranges::find_if(
            waiting, [this](const QString &label) { return m_fields.value(fieldOf(label)) != nullptr; });
        return open == waiting.end() ? QString() : *open;
    }

    void answer(const QString &label)
    {
        const QPointer<platform::TextField> field = m_fields.take(fieldOf(label));
        m_station.click(field);
        m_station.type(textFor(label, m_round) + QLatin1Char('\n'));
        m_station.click(SoakStation::buttonBeside(field, QStringLiteral("OK")));
        SoakStation::serveUntil(QStringLiteral("the panel's end"), [&] { return !field; });
    }

    void awaitEnds(const QString &what)
    {
        SoakStation::serveUntil(what, [this] {
            return std::ranges::all_of(m_sequences,
                                       [](const auto &sequence) { return sequence->hasEnded(); });
        });
    }

    void judge()
    {
        for (std::size_t number = 0; number < m_sequences.size(); ++number) {
            const QString expected = textFor(labelOf(static_cast<int>(number)), m_round);
            const Value &value = m_sequences.at(number)->end().value;
            if (value == Value(expected))
                continue;
            ++m_wrong;
            soak::say(QStringLiteral("WRONG %1 instead of %2").arg(platform::description(value), expected));
        }
    }

    Crowd m_crowd;
    QString m_script;
    SoakStation m_station;
    std::mt19937_64 m_engine;
    QHash<QString, QPointer<platform::TextField>> m_fields; ///< Those that were seen, by identifier.
    std::vector<std::unique_ptr<Sequence>> m_sequences;
    QElapsedTimer m_clock;
    Durations m_durations;
    int m_round = 0;
    qint64 m_wrong = 0;
};

void answerInRounds(const Crowd &crowd, int rounds, const QString &script, quint64 seed)
{
    Asking asking(crowd, script, seed);
    Durations longest;
    for (int round = 0; round < rounds; ++round) {
        asking.answerAll();
        longest.drawn = std::max(longest.drawn, asking.durations().drawn);
        longest.answered = std::max(longest.answered, asking.durations().answered);
    }
    soak::tell(
        QStringLiteral("%1 sequences blocked at once on %2 panels, answered in random order (seed %3): each "
                       "gets its own answer (drawn within %4 ms, answered within %5 ms)")
            .arg(crowd.sequences())
            .arg(crowd.systems())
            .arg(seed)
            .arg(longest.drawn)
            .arg(longest.answered),
        static_cast<qint64>(rounds) * crowd.sequences(), asking.wrong());
}

void drawAnswerAndStop(const Crowd &crowd, const QString &script, quint64 seed)
{
    Asking asking(crowd, script, seed);
    asking.answerAll();
    const Durations answered = asking.durations();
    asking.stopAll();
    const Durations stopped = asking.durations();
    soak::tell(QStringLiteral(
                   "%1 systems draw, answer and stop (drawn in %2 ms, answered in %3 ms, drawn again in %4 "
                   "ms, stopped in %5 ms)")
                   .arg(crowd.systems())
                   .arg(answered.drawn)
                   .arg(answered.answered)
                   .arg(stopped.drawn)
                   .arg(stopped.stopped),
               2 * static_cast<qint64>(crowd.sequences()), asking.wrong());
}

} // namespace

int main(int argc, char **argv)
{
    const soak::Arguments arguments(argc, argv);
    const QTemporaryDir home;
    soak::prepare(home.path());
    QApplication application(argc, argv);
    platform::MainQueue::attach();
    const QString script = arguments.text("script", "soak/crowd.lua");
    const int rounds = arguments.number("rounds", 5);
    const auto seed =
        static_cast<quint64>(arguments.number("seed", static_cast<int>(std::random_device()() >> 1U)));
    if (rounds > 0) {
        answerInRounds({8, 8, 1}, rounds, script, seed);
        answerInRounds({16, 16, 1}, std::max(1, rounds / 10), script, seed);
        answerInRounds({8, 8, 4}, std::max(1, rounds / 10), script, seed);
    }
    // As many groups as slots, so that the station is as wide as it is high.
    const int side = arguments.number("side", 16);
    drawAnswerAndStop({side, side, 1}, script, seed);
    platform::MainQueue::detach();
    return EXIT_SUCCESS;
}
