#pragma once

namespace bench {

/// Round trips of a whole station: its window, its plug-in, Lua sequences from files, results and log
/// written. An operator without pauses answers them, the one that has waited longest first: six keys and a
/// click.
struct TripPlan
{
    int groups = 1;
    int slotsPerGroup = 1;
    int asking = 1;       ///< How many of the systems ask; the sequences of the others end at once.
    bool isGroup = false; ///< The first group asks instead, once for all of its slots (for twelve at most).
    int trips = 1;        ///< Of each that asks.
};

struct TripFigures
{
    double seconds = 0.0;     ///< From the first panel to the end of the run.
    double mainSeconds = 0.0; ///< The main thread's processor time meanwhile.
    double allSeconds = 0.0;  ///< That of all threads.
    int trips = 0;            ///< Of all together.
    /// The longest call of each round held against the round's median, of the round where this is most. A
    /// round is each sequence's call of the same number; those that all begin at once are none. 0 where there
    /// is no other round.
    double slowest = 0.0;
};

/// Thread: the main thread. Requires: a QApplication, platform::MainQueue attached. Errors: ends the program
/// when a sequence does not get its answer.
[[nodiscard]] TripFigures makeTrips(const TripPlan &plan);

} // namespace bench
