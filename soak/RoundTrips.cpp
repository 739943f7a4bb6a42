#include "platform/MainQueue.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>

#include "soak/Arguments.h"
#include "soak/Figures.h"
#include "soak/Sequence.h"
#include "soak/SoakStation.h"

// Round trips of show calls: a Lua sequence asks, a panel is drawn, an operator answers it with real keys and
// a real mouse, the sequence gets the answer. However many there were, no more is held than after the first
// few.

namespace {

using platform::Button;
using platform::TextField;
using soak::SoakStation;

constexpr int Groups = 3;
constexpr int Slots = 4;
constexpr int Looks = 100;
constexpr int Round = 12; ///< All kinds of questions at all places.

/// Answers the questions of roundtrips.lua.
class Answers
{
public:
    explicit Answers(SoakStation &station)
        : m_station(station)
    {}

    void answerSystem(int number)
    {
        const int system = number % (Groups * Slots);
        const QString key = QString::number(system);
        switch (number % 6) {
        case 0:
            press(key, "Yes");
            break;
        case 1:
            scan(key + "-SN", textOf(number));
            press(key, "OK");
            break;
        case 2:
            scan(key + "-SN", textOf(number));
            break;
        case 3:
            press(key, "OK");
            break;
        case 4:
            scan(key + "-Color", "gr");
            press(key, "OK");
            break;
        default:
            press(groupKey(system / Slots), "OK");
        }
    }

    void answerGroup(int number)
    {
        const QString key = groupKey(number % Groups);
        switch (number % 6) {
        case 0:
            for (const char *slot : {"1", "2", "3", "4"})
                scan(key + "-SharedInput", textOf(number) + QLatin1String(slot));
            press(key, "OK");
            break;
        case 1:
            flip(key, "S2");
            flip(key, "S2");
            press(key, "OK");
            break;
        case 2:
            press(key, "No");
            break;
        case 3:
            break; // a message waits for nobody
        case 4:
            press(key, "OK");
            break;
        default:
            scan(key + "-SharedInput", textOf(number));
            scan(key + "-SharedInput", "XX" + textOf(number).mid(2));
        }
    }

private:
    static QString groupKey(int group) { return QStringLiteral("G%1").arg(group + 1); }
    /// Repeated after a thousand: what was given in a run is remembered until the next one begins.
    static QString textOf(int number)
    {
        return QStringLiteral("SN%1").arg(number % 1000, 6, 10, QLatin1Char('0'));
    }

    void press(const QString &panelKey, const char *title)
    {
        Button *button = nullptr;
        SoakStation::serveUntil(QStringLiteral("button %1 of panel %2").arg(QLatin1String(title), panelKey),
                                [&] {
                                    button = m_station.button(panelKey, QLatin1String(title));
                                    return button != nullptr;
                                });
        m_station.click(button);
    }
    void flip(const QString &panelKey, const QString &slot)
    {
        Button *button = nullptr;
        SoakStation::serveUntil(QStringLiteral("switch %1 of panel %2").arg(slot, panelKey), [&] {
            button = m_station.slotSwitch(panelKey, slot);
            return button != nullptr;
        });
        m_station.click(button);
    }
    void scan(const QString &identifier, const QString &text)
    {
        SoakStation::serveUntil(QStringLiteral("field ") + identifier, [&] {
            const TextField *field = m_station.field(identifier);
            return field && field->isFirstResponder();
        });
        m_station.type(text + QLatin1Char('\n'));
    }

    SoakStation &m_station;
};

struct Kind
{
    QString name;     ///< As roundtrips.lua names it.
    QString function; ///< The one that is called.
    int places;       ///< Systems or groups.
    void (Answers::*answer)(int number);
};

/// The number of answers that were wrong.
qint64 makeTrips(SoakStation &station, const Kind &kind, const QString &script, int first, int count)
{
    Answers answers(station);
    const soak::Sequence sequence(
        station.plugin(), script,
        {{"kind", kind.name}, {"places", kind.places}, {"first", first}, {"count", count}});
    for (int number = first; number < first + count; ++number)
        (answers.*kind.answer)(number);
    SoakStation::serveUntil(QStringLiteral("the end of the sequence"), [&] { return sequence.hasEnded(); });
    if (sequence.end().outcome != KVKLuaOutcome::Passed)
        soak::say(sequence.end().message);
    return sequence.end().outcome == KVKLuaOutcome::Passed ? sequence.end().value.toLongLong() : count;
}

void tryKind(SoakStation &station, const Kind &kind, const soak::Arguments &arguments)
{
    const int trips = arguments.number("trips", 2000);
    const int warm = arguments.number("warm", 500);
    // Whole rounds, after which the same panel has stood last.
    const int step = Round * std::max(1, (trips - warm) / Looks / Round);
    const QString script = arguments.text("script", "soak/roundtrips.lua");
    soak::Figures figures([&station] { return station.kept(); });
    QElapsedTimer clock;
    clock.start();
    qint64 wrong = 0;
    int made = 0;
    while (made < trips) {
        const int count = made < warm ? warm : std::min(step, trips - made);
        wrong += makeTrips(station, kind, script, made, count);
        made += count;
        figures.look(made);
    }
    const QString what = QStringLiteral("round trips of %1").arg(kind.function);
    figures.write(arguments.text("figures", "build/soak/roundtrips") + "-" + kind.name + ".csv");
    soak::say(QStringLiteral("%1 %2 in %3 s, %4 ms each")
                  .arg(made)
                  .arg(what)
                  .arg(clock.elapsed() / 1000)
                  .arg(static_cast<double>(clock.elapsed()) / made, 0, 'f', 2));
    figures.judge(what);
    soak::tell(QStringLiteral("every one of the %1 gets its answer").arg(what), made, wrong);
}

} // namespace

int main(int argc, char **argv)
{
    const soak::Arguments arguments(argc, argv);
    const QTemporaryDir home;
    soak::prepare(home.path());
    QApplication application(argc, argv);
    platform::MainQueue::attach();
    {
        SoakStation station(Groups, Slots);
        tryKind(station, {"system", "showView", Groups * Slots, &Answers::answerSystem}, arguments);
        tryKind(station, {"group", "showGroupView", Groups, &Answers::answerGroup}, arguments);
    }
    platform::MainQueue::detach();
    return EXIT_SUCCESS;
}
