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
    explicit Gathered(QWidget *window)
        : QWidget(window)
    {
        hide();
    }

    /// One walk, for all that stand here. They are deleted before it is: each has been asked to go earlier.
    void leave()
    {
        setParent(nullptr);
        deleteLater();
    }
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
        view.setParent(&gatheredOf(view.window()));
        return;
    }
    ++state().walks;
    view.setParent(nullptr);
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
