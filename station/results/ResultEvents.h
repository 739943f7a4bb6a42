#pragma once

#include "station/results/ResultOwner.h"

#include <QDateTime>

#include <chrono>

namespace station {

/// When a call began: by the wall clock for people, and by one that nobody sets for what it took.
struct CallStart
{
    QDateTime time = QDateTime::currentDateTimeUtc();
    std::chrono::steady_clock::time_point point = std::chrono::steady_clock::now();
};

/// What happens in a run and is worth keeping. Plain values; times are universal, in milliseconds.

struct RunBegun
{
    QString run; ///< Names the run and no other one, wherever it took place.
    QString station;
    QString configuration; ///< Its absolute path.
    QString operatorBadge; ///< Empty where nobody was asked for one.
    QDateTime time;
};

struct SequenceBegun
{
    QString run;
    ResultOwner owner;
    QDateTime time;
};

struct CallDone
{
    QString run; ///< Empty for a call outside of any run.
    ResultOwner owner;
    KVKLuaCall call;
    int number = 0; ///< Counts from 1 in its sequence.
    QString operatorBadge;
    QDateTime start;
    QDateTime time;
    qint64 milliseconds = 0; ///< What it took; not the difference of the times where the clock was set.
};

struct SequenceDone
{
    QString run;
    ResultOwner owner;
    KVKLuaEnd end;
    QDateTime time;
};

/// An entry of an operator that was not accepted.
struct RefusedEntry
{
    QString kind;           ///< Why: "length", "pattern", "number", "choice", "duplicate", "validate", …
    QString text;           ///< What was entered.
    QString slot;           ///< Empty where it was for none.
    platform::Value system; ///< The system whose panel it is; nothing on a group's.
    QString groupName;      ///< The group in whose band the panel stands.
};

struct EntryRefused
{
    QString run;
    RefusedEntry entry;
    int number = 0; ///< Counts from 1 in its run.
    QString operatorBadge;
    QDateTime time;
};

} // namespace station
