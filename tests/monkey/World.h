#pragma once

#include "tests/monkey/Call.h"
#include "tests/monkey/Sight.h"
#include "tests/support/LogRecorder.h"

#include <QMap>
#include <QSet>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace monkey {

/// A promise that was not kept, in words.
struct BrokenPromise
{
    QString words;
};

/// A text that a call gave back after its panel was pressed.
struct HandedBack
{
    QString panelKey;
    QString text;
};

/// The station with its calls, and what an observer has noted about them.
///
/// Thread: the main thread. Ownership: owns the calls; the rest outlives it. Requires: every call has ended,
/// or is about to, when it goes.
struct World
{
    interactive::InteractiveView &plugin;
    QWidget &window;
    testsupport::LogRecorder &log;
    /// Serves events until every confirmation begun so far has ended.
    std::function<void()> endConfirmations;
    /// What the operator was told.
    QStringList &operatorLines;
    Shape shape;

    /// Those under way, the oldest first, and those that ended since settle() last looked.
    std::vector<std::unique_ptr<Call>> calls{};
    int step = 0;
    int callsMade = 0;
    /// The last answer to each question, as loop mode may give it back.
    QMap<QString, platform::Value> answers{};
    /// Texts that were entered for a group's slot, by "group slot".
    QMap<QString, QSet<QString>> entered{};
    /// What calls that ended in this step gave back.
    QList<HandedBack> handedBack{};
    /// Loop mode was on at some moment of this step.
    bool wasLoopOn = false;
    /// Entries of answers that were given since the last Stop.
    QSet<QString> given{};
    /// What is being scanned, as long as nobody knows where it has landed.
    QString scanning{};
    /// What stood in a panel's field when Return was pressed in this step: key and text.
    std::pair<QString, QString> returned{};
    /// A choice is being taken from its list.
    bool isWalking = false;
    /// A panel has gone by itself in this step.
    bool hasTimedOut = false;
    /// With it an entry may have gone that its call's function had not judged yet.
    bool mayLoseUnjudged = false;
    /// How long something that is due is waited for.
    std::chrono::seconds patience{20};
    /// What else is to hold at rest; says what does not, otherwise nothing.
    std::function<QString(const World &)> furtherPromise{};
    /// The operator has chosen where the keys go, since an entry was last taken.
    bool isFocusChosen = false;
    /// The number in the loop's field may change in this step.
    bool mayLoopChange = false;

    [[nodiscard]] platform::View *root() const;
    [[nodiscard]] bool isGroupOn(const QString &group) const;
    /// The call that waits for the operator on the panel; null when there is none.
    [[nodiscard]] Call *callAt(const QString &panelKey) const;
    [[nodiscard]] bool isLoopOn() const;
    [[nodiscard]] QString loopText() const;
    /// Whether one of the calls may end by itself at any moment.
    [[nodiscard]] bool isAnyLimited() const;
    /// Notes what is stored at rest as entered.
    void noteEntered();
    /// What is stored as entered for a panel.
    [[nodiscard]] platform::Dictionary record(const QString &panelKey) const;
    /// Whether a line at error level of this step holds the text.
    [[nodiscard]] bool hasErrorLine(const QString &part) const;
    /// Whether the operator was told something with the text in this step.
    [[nodiscard]] bool wasTold(const QString &part) const;
    [[nodiscard]] QString waitingInWords() const;
    /// The lines at error level of this step.
    [[nodiscard]] QString errorLines() const;

    /// Forgets what was noted for the step before.
    void beginStep(int number);
    Call &make(const Request &request);
    void forgetAnswersOf(int group);
};

} // namespace monkey
