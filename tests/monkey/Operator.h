#pragma once

#include "station/operator/OperatorHands.h"
#include "tests/monkey/Dice.h"
#include "tests/monkey/World.h"

#include <QStringList>

namespace monkey {

class Press;
class Scan;

/// A person at the station who does whatever comes to mind, with real keys and a real mouse, and looks
/// whether what was done had its effect and no other.
///
/// Thread: the main thread. Errors: BrokenPromise.
class Operator
{
public:
    /// Notes what is done before it is done.
    using Diary = std::function<void(const QString &words)>;

    Operator(World &world, Diary diary);

    /// Does one thing at random.
    void act(Dice &dice);
    /// Answers the first panel that can be seen, in the easiest way; false when there is none.
    bool answerFirstPanel();
    /// Makes everything visible: a large window with all groups switched on.
    void showAll();
    /// Stops the station's calls, and accepts new ones.
    void stop();

private:
    void scanSomething(Dice &dice);
    void scan(const QString &entry, const QString &mark);
    void pressSomething(Dice &dice);
    void pressAndScan(Dice &dice);
    void pressByKey();
    void clickField(Dice &dice);
    void clickSwitch(Dice &dice);
    void switchAndScan(Dice &dice);
    void clickNowhere();
    void resize(Dice &dice);
    void toggleGroup(Dice &dice);
    void beginEntry();
    void typeLoopNumber(Dice &dice);
    void tab();

    void press(const SeenPanel &panel, platform::Button *button);
    [[nodiscard]] QString newText(qint64 length);
    [[nodiscard]] qint64 wantedLength() const;
    /// False, noted, when the view cannot be clicked just now.
    bool click(platform::View *view);
    void type(const QString &text);

    World &m_world;
    Diary m_diary;
    station::OperatorHands m_hands;
    int m_texts = 0;
    QStringList m_scanned;
};

} // namespace monkey
