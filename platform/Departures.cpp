#include "platform/Departures.h"

#include "platform/View.h"

#include <QPointer>

#include <utility>
#include <vector>

namespace platform {

namespace {

/// Hidden, and no view, so that what stands in it has no superview.
class Gathered : public QWidget
{
public:
    /// Asked to go now and not when it leaves, which may be in an event loop inside of an action that one of
    /// the views runs.
    explicit Gathered(QWidget *window)
        : QWidget(window)
    {
        hide();
        deleteLater();
    }

    /// One walk, for all that stand here.
    void leave() { setParent(nullptr); }
};

struct State
{
    int rounds = 0;
    int walks = 0;
    std::vector<QPointer<Gathered>> gathered; ///< One for each window that something leaves.
};

State &state()
{
    static State instance;
    return instance;
}

Gathered &gatheredOf(QWidget *window)
{
    for (const QPointer<Gathered> &each : state().gathered) {
        if (each && each->parentWidget() == window)
            return *each;
    }
    auto *made = new Gathered(window);
    state().gathered.emplace_back(made);
    // An event loop that one of the jobs runs is not to find them there either.
    QMetaObject::invokeMethod(made, &Departures::finish, Qt::QueuedConnection);
    return *made;
}

} // namespace

Departures::Round::Round()
{
    finish();
    ++state().rounds;
}

Departures::Round::~Round()
{
    --state().rounds;
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
