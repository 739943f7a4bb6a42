#pragma once

#include <chrono>
#include <cstddef>

namespace platform {

class View;

/// Where the views wait that leave their windows while a round of main-queue jobs runs.
///
/// To take a widget out of its window costs the toolkit a walk over all widgets of that window, which keeps
/// one list of them. When many panels end at once, each would cost such a walk for each of its views. So what
/// leaves during a round is moved to a hidden place of the window, which is no view, and all of that is taken
/// out of the window by one walk at the round's end. To a view it makes no difference: it has no superview
/// from the beginning, and is deleted when control returns to the event loop. Only when a great many leave
/// within a moment does that wait for the jobs that wait, and no longer than the moment: sequences stand
/// still for their jobs, those of the other panels that are to leave among them. Thread: the main thread.
class Departures
{
public:
    /// While one lives, views are gathered; what was gathered leaves its window when it ends. Rounds may
    /// contain one another.
    class Round
    {
    public:
        explicit Round(std::size_t jobs);
        ~Round();
        Round(const Round &) = delete;
        Round &operator=(const Round &) = delete;

    private:
        std::size_t m_jobsAround; ///< Those of the round that contains this one.
    };

    Departures() = delete;

    /// A round of that many jobs has many: more sequences than a person answers at once.
    static constexpr std::size_t ManyJobs = 16;
    /// For so long the jobs that wait go before the deletion of what left in such a round.
    static constexpr std::chrono::milliseconds Patience{200};

    /// Takes a view out of its superview, and has it deleted when control has returned to the event loop: the
    /// call may come from an action of the view, or of one inside it. Outside of a round it leaves its window
    /// at once.
    static void take(View &view);
    /// What was gathered leaves its window now, for somebody who is about to look.
    static void finish();
    /// How often something was taken out of a window, by one view or by many, since the program began.
    [[nodiscard]] static int walks();
};

} // namespace platform
