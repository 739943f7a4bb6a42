#include "platform/Departures.h"

#include "platform/MainQueue.h"
#include "platform/View.h"

#include <QDeadlineTimer>
#include <QPointer>

#include <chrono>
#include <utility>
#include <vector>

namespace platform {

namespace {

/// Hidden, and no view, so that what stands in it has no superview.
class Gathered : public QWidget
{
public:
    explicit Gathered(QWidget *window)
        : QWidget(window)
    {
        hide();
    }

    /// One walk, for all that stand here.
    void leave() { setParent(nullptr); }
};

struct State
{
    int rounds = 0;
    int walks = 0;
    std::size_t jobs = 0;                     ///< Of the round that runs.
    std::vector<QPointer<Gathered>> gathered; ///< One for each window that something leaves.
};

State &state()
{
    static State instance;
    return instance;
}

/// Deletes what was gathered when control returns to the event loop. Behind a round of many jobs it gives way
/// to those that wait, for a moment at most: nobody waits for what is gone.
class Ending : public QObject
{
public:
    /// Made with what it ends and not when that leaves, which may be in an event loop inside of an action
    /// that one of the views runs.
    explicit Ending(Gathered *gathered, QDeadlineTimer givesWay)
        : m_gathered(gathered)
        , m_givesWay(givesWay)
    {
        deleteLater();
    }

    ~Ending() override
    {
        if (!m_gathered)
            return;
        if (!m_givesWay.hasExpired() && MainQueue::isBusy())
            new Ending(m_gathered, m_givesWay);
        else
            delete m_gathered;
    }

    Ending(const Ending &) = delete;
    Ending &operator=(const Ending &) = delete;

private:
    QPointer<Gathered> m_gathered;
    QDeadlineTimer m_givesWay;
};

Gathered &gatheredOf(QWidget *window)
{
    for (const QPointer<Gathered> &each : state().gathered) {
        if (each && each->parentWidget() == window)
            return *each;
    }
    auto *made = new Gathered(window);
    const bool isOneOfMany = state().jobs >= Departures::ManyJobs;
    new Ending(made, isOneOfMany ? QDeadlineTimer(Departures::Patience) : QDeadlineTimer(0));
    state().gathered.emplace_back(made);
    // An event loop that one of the jobs runs is not to find them there either.
    QMetaObject::invokeMethod(made, &Departures::finish, Qt::QueuedConnection);
    return *made;
}

} // namespace

Departures::Round::Round(std::size_t jobs)
    : m_jobsAround(std::exchange(state().jobs, jobs))
{
    finish();
    ++state().rounds;
}

Departures::Round::~Round()
{
    --state().rounds;
    state().jobs = m_jobsAround;
    finish();
}

void Departures::take(View &view)
{
    // A window of its own stands in no other window's list.
    if (state().rounds > 0 && !view.isWindow()) {
        // Its end is theirs: the toolkit looks through all that waits to be deleted for each that is.
        view.setParent(&gatheredOf(view.window()));
        return;
    }
    ++state().walks;
    view.setParent(nullptr);
    view.deleteLater();
}

void Departures::finish()
{
    for (const QPointer<Gathered> &each : std::exchange(state().gathered, {})) {
        if (!each)
            continue;
        ++state().walks;
        each->leave();
    }
}

int Departures::walks()
{
    return state().walks;
}

} // namespace platform
