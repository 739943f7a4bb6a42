#pragma once

#include "station/operator/OperatorHands.h"
#include "tests/monkey/Step.h"
#include "tests/monkey/World.h"

namespace monkey {

class Press;
class Scan;

/// A person at the station who does what a step says, with real keys and a real mouse, and looks whether what
/// was done had its effect and no other.
///
/// Thread: the main thread. Errors: BrokenPromise.
class Operator
{
public:
    explicit Operator(World &world);

    /// Does what the step says, as far as it can be done; true when the step is one of an operator.
    bool perform(const Step &step);
    /// Answers the first panel that can be seen, in the easiest way; false when there is none.
    bool answerFirstPanel();
    /// Makes everything visible: a large window with all groups switched on.
    void showAll();

private:
    void scan(const Step &step);
    void scan(const QString &entry, const QString &mark);
    void press(const Step &step);
    void press(const SeenPanel &panel, platform::Button *button, const QString &andScan = {});
    void pressByKey(const Step &step);
    void clickField(const Step &step);
    void flip(const Step &step);
    void clickNowhere(const Step &step);
    void resize(const Step &step);
    void switchGroup(const Step &step);
    void beginEntry(const Step &step);
    void typeLoopNumber(const Step &step);
    void tab(const Step &step);
    void pressReturn(const Step &step);
    void walkChoices(const Step &step);
    /// Stops the station's calls, and accepts new ones.
    void stop(const Step &step);

    /// A visible panel; without a view when there is none.
    [[nodiscard]] SeenPanel panelOf(const Step &step) const;
    [[nodiscard]] QString easyEntry(const platform::Dictionary &config);
    [[nodiscard]] QString lastText(qint64 length);
    /// False when the view cannot be clicked just now.
    bool click(platform::View *view);
    void type(const QString &text) { m_hands.type(text); }

    World &m_world;
    station::OperatorHands m_hands;
    int m_texts = 0;
};

} // namespace monkey
