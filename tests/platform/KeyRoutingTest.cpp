#include "platform/KeyRouting.h"

#include "platform/Button.h"
#include "tests/platform/ViewFixture.h"
#include "tests/support/ManualKeyClock.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace {

using namespace platform;

/// Counts the keys that reach it unused.
class KeyCounter : public QObject
{
public:
    int keys = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        keys += event->type() == QEvent::KeyPress ? 1 : 0;
        return false;
    }
};

/// A push button and a switch whose next responder is a field.
class KeyRoutingTest : public testsupport::ViewFixture
{
protected:
    KeyRoutingTest()
    {
        toggle->setButtonType(Button::Type::Switch);
        for (Button *control : {button, toggle}) {
            control->setNextResponder(field);
            control->setTarget(&target, "press:", [this](View *) { ++presses; });
        }
        field->setTarget(&target, "enter:", [this](View *) { entries += field->stringValue(); });
    }

    /// A blank works the switch. Whatever an earlier one does has been done by then.
    void workToggle()
    {
        const int before = presses;
        toggle->becomeFirstResponder();
        type(" ");
        EXPECT_TRUE(testsupport::waitUntil([this, before] { return presses > before; }));
    }

    testsupport::ManualKeyClock clock;
    Button *button = add<Button>({10, 10, 80, 30});
    Button *toggle = add<Button>({10, 50, 80, 30});
    TextField *field = addField({10, 100, 100, 25});
    int presses = 0;
    QStringList entries;
};

TEST_F(KeyRoutingTest, AnEntryTypedAtAButtonArrivesWholeInTheField)
{
    button->becomeFirstResponder();
    type("SN 1 2\n");
    EXPECT_EQ(entries, QStringList{"SN 1 2"});
    EXPECT_TRUE(field->isFirstResponder());
    EXPECT_EQ(presses, 0);
}

TEST_F(KeyRoutingTest, AnEntryTypedAtASwitchArrivesWholeInTheFieldAndTheSwitchStays)
{
    toggle->setState(Button::On);
    toggle->becomeFirstResponder();
    type("SN 1\n");
    EXPECT_EQ(entries, QStringList{"SN 1"});
    EXPECT_EQ(toggle->state(), Button::On);
    EXPECT_EQ(presses, 0);
}

TEST_F(KeyRoutingTest, AnEntryTypedAtAButtonReplacesWhatTheFieldHeld)
{
    field->setStringValue("old");
    button->becomeFirstResponder();
    type("N");
    EXPECT_EQ(field->stringValue(), "N");
}

TEST_F(KeyRoutingTest, ReturnAlonePressesAButton)
{
    button->becomeFirstResponder();
    type("\n");
    EXPECT_EQ(presses, 1);
    press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(presses, 2);
    EXPECT_TRUE(entries.isEmpty());
    EXPECT_TRUE(button->isFirstResponder());
}

TEST_F(KeyRoutingTest, ReturnAloneTogglesASwitch)
{
    toggle->becomeFirstResponder();
    type("\n");
    EXPECT_EQ(toggle->state(), Button::On);
    EXPECT_EQ(presses, 1);
}

TEST_F(KeyRoutingTest, ABlankAloneWorksAControl)
{
    for (Button *control : {button, toggle}) {
        control->becomeFirstResponder();
        type(" ");
    }
    EXPECT_TRUE(testsupport::waitUntil([this] { return presses == 2; }));
    EXPECT_EQ(toggle->state(), Button::On);
    EXPECT_EQ(field->stringValue(), "");
}

TEST_F(KeyRoutingTest, BlanksAPersonTypesOneAfterAnotherEachWorkASwitch)
{
    toggle->becomeFirstResponder();
    type("  ");
    EXPECT_TRUE(testsupport::waitUntil([this] { return presses == 2; }));
    EXPECT_EQ(toggle->state(), Button::Off);
}

TEST_F(KeyRoutingTest, ABlankThatBeginsAScanWorksNoControlAndReachesTheField)
{
    for (Button *control : {button, toggle}) {
        control->becomeFirstResponder();
        type("  SN 1\n");
        EXPECT_EQ(entries, QStringList{"  SN 1"});
        entries.clear();
        clock.pause();
    }
    workToggle();
    EXPECT_EQ(presses, 1);
}

TEST_F(KeyRoutingTest, ABlankWorksAControlThoughItsReleaseGoesAstray)
{
    button->becomeFirstResponder();
    QKeyEvent blank(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ");
    QCoreApplication::sendEvent(window.focusWidget(), &blank);
    field->becomeFirstResponder();
    EXPECT_TRUE(testsupport::waitUntil([this] { return presses == 1; }));
    EXPECT_EQ(field->stringValue(), "");
}

TEST_F(KeyRoutingTest, AHeldBlankWorksAControlOnce)
{
    button->becomeFirstResponder();
    QKeyEvent blank(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ");
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
    for (QKeyEvent *event : {&blank, &again, &again})
        QCoreApplication::sendEvent(window.focusWidget(), event);
    EXPECT_TRUE(testsupport::waitUntil([this] { return presses == 1; }));
    workToggle();
    EXPECT_EQ(presses, 2);
}

TEST_F(KeyRoutingTest, ABlankWorksNoControlThatHasBeenSwitchedOffMeanwhile)
{
    button->becomeFirstResponder();
    type(" ");
    button->setEnabled(false);
    workToggle();
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(toggle->state(), Button::On);
}

TEST_F(KeyRoutingTest, AHeldReturnPressesOnce)
{
    button->becomeFirstResponder();
    type("\n");
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QCoreApplication::sendEvent(window.focusWidget(), &again);
    EXPECT_EQ(presses, 1);
}

TEST_F(KeyRoutingTest, AScannersReturnPressesNoButton)
{
    field->becomeFirstResponder();
    type("SN1");
    button->becomeFirstResponder();
    clock.pause(keys::ScannerGapMilliseconds);
    type("\n");
    EXPECT_EQ(presses, 0);
    EXPECT_TRUE(entries.isEmpty());
    EXPECT_TRUE(button->isFirstResponder());
}

TEST_F(KeyRoutingTest, APersonsReturnAfterACharacterPressesTheButton)
{
    field->becomeFirstResponder();
    type("SN1");
    button->becomeFirstResponder();
    clock.pause();
    type("\n");
    EXPECT_EQ(presses, 1);
}

TEST_F(KeyRoutingTest, AScannersReturnPressesNoButtonWhenTheProgramWasBusyInBetween)
{
    field->becomeFirstResponder();
    type("SN1");
    button->becomeFirstResponder();
    clock.beBusy(1000);
    type("\n");
    EXPECT_EQ(presses, 0);
}

TEST_F(KeyRoutingTest, AScannersReturnIsKnownByWhenItCameWhereNobodyNotedWhenItWasSent)
{
    clock.forgetSending();
    for (const qint64 gap : {keys::ScannerGapMilliseconds, keys::ScannerGapMilliseconds + 1}) {
        field->becomeFirstResponder();
        type("SN1");
        button->becomeFirstResponder();
        clock.pause(gap);
        type("\n");
    }
    EXPECT_EQ(presses, 1);
}

TEST_F(KeyRoutingTest, TheSecondOfTwoReturnsOfAScannerPressesNoButton)
{
    field->setTarget(&target, "enter:", [this](View *) {
        entries += field->stringValue();
        button->becomeFirstResponder();
    });
    field->becomeFirstResponder();
    type("SN1\n\n");
    EXPECT_EQ(entries, QStringList{"SN1"});
    EXPECT_EQ(presses, 0);
}

TEST_F(KeyRoutingTest, AScanThatFindsNoFieldPressesNothingAndReachesTheWindow)
{
    KeyCounter atWindow;
    window.installEventFilter(&atWindow);
    field->setEnabled(false);
    toggle->becomeFirstResponder();
    type("A B\n");
    EXPECT_EQ(atWindow.keys, 3) << "the characters are refused there";
    EXPECT_EQ(presses, 0);
    EXPECT_EQ(toggle->state(), Button::Off);
    EXPECT_TRUE(toggle->isFirstResponder());
}

TEST_F(KeyRoutingTest, ACharacterThatReachedNoViewMakesTheReturnAScannersToo)
{
    field->setEnabled(false);
    type("SN1");
    button->becomeFirstResponder();
    type("\n");
    EXPECT_EQ(presses, 0);
}

TEST_F(KeyRoutingTest, AnEntryGoesPastFieldsThatCannotTakeIt)
{
    TextField *last = addField({10, 200, 100, 25});
    field->setNextResponder(last);
    field->setHidden(true);
    button->becomeFirstResponder();
    type("SN1");
    EXPECT_EQ(last->stringValue(), "SN1");
}

TEST_F(KeyRoutingTest, AChainThatLeadsBackEndsTheSearch)
{
    field->setNextResponder(button);
    field->setEditable(false);
    button->becomeFirstResponder();
    type("S");
    EXPECT_TRUE(button->isFirstResponder());
}

TEST_F(KeyRoutingTest, KeysThatAreNoCharactersStayWithTheButton)
{
    button->becomeFirstResponder();
    press(Qt::Key_Backspace);
    press(Qt::Key_Delete);
    press(Qt::Key_F5);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(button->isFirstResponder());
    EXPECT_EQ(presses, 0);
}

TEST_F(KeyRoutingTest, AScannersTabAtAButtonLeavesTheFocusWhereItIs)
{
    field->setEnabled(false);
    button->becomeFirstResponder();
    type("SN1");
    press(Qt::Key_Tab);
    EXPECT_TRUE(button->isFirstResponder());
    clock.pause();
    press(Qt::Key_Tab);
    EXPECT_TRUE(toggle->isFirstResponder());
}

TEST_F(KeyRoutingTest, AButtonMayBeDeletedByItsOwnActionHoweverItIsPressed)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        View *panel = add({100, 100, 100, 100});
        const QPointer<Button> doomed = add<Button>({10, 10, 80, 30}, panel);
        doomed->setTarget(&target, "press:", [panel](View *) { delete panel; });
        doomed->becomeFirstResponder();
        press(key);
        EXPECT_TRUE(testsupport::waitUntil([&doomed] { return !doomed; }));
    }
    View *panel = add({100, 100, 100, 100});
    const QPointer<Button> doomed = add<Button>({10, 10, 80, 30}, panel);
    doomed->setTarget(&target, "press:", [panel](View *) { delete panel; });
    click(doomed);
    EXPECT_FALSE(doomed);
}

/// Three fields that Tab follows, and a switch that stands between them.
class TabTest : public testsupport::ViewFixture
{
protected:
    TabTest()
    {
        first->setNextKeyView(second);
        second->setNextKeyView(third);
        for (TextField *each : {first, second, third})
            each->setTarget(&target, "enter:", [this, each](View *) { entries += each->stringValue(); });
        first->becomeFirstResponder();
    }

    testsupport::ManualKeyClock clock;
    TextField *first = addField({10, 10, 100, 25});
    Button *between = add<Button>({10, 40, 100, 25});
    TextField *second = addField({10, 70, 100, 25});
    TextField *third = addField({10, 100, 100, 25});
    QStringList entries;
};

TEST_F(TabTest, TabFollowsTheFieldsPastWhatStandsBetween)
{
    press(Qt::Key_Tab);
    EXPECT_TRUE(second->isFirstResponder());
    press(Qt::Key_Tab);
    EXPECT_TRUE(third->isFirstResponder());
}

TEST_F(TabTest, TabFollowsTheFieldsAlsoWhenTheyWereLinkedBeforeTheyWereShown)
{
    View panel(Rect(0, 0, 100, 100));
    auto *upper = add<TextField>({0, 0, 50, 20}, &panel);
    auto *lower = add<TextField>({0, 50, 50, 20});
    for (TextField *each : {upper, lower})
        each->setEditable(true);
    upper->setNextKeyView(lower);
    root->addSubview(upper);
    upper->becomeFirstResponder();
    press(Qt::Key_Tab);
    EXPECT_TRUE(lower->isFirstResponder());
}

TEST_F(TabTest, TabSelectsTheTextOfTheFieldItGoesTo)
{
    second->setStringValue("old");
    press(Qt::Key_Tab);
    EXPECT_EQ(second->selectedText(), "old");
}

TEST_F(TabTest, TabPassesOverFieldsThatAreOffOrHidden)
{
    second->setEnabled(false);
    press(Qt::Key_Tab);
    EXPECT_TRUE(third->isFirstResponder());
    second->setEnabled(true);
    second->setHidden(true);
    first->becomeFirstResponder();
    press(Qt::Key_Tab);
    EXPECT_TRUE(third->isFirstResponder());
}

TEST_F(TabTest, TabInAReadOnlyFieldFollowsTheChainToo)
{
    first->setEditable(false);
    first->becomeFirstResponder();
    press(Qt::Key_Tab);
    EXPECT_TRUE(second->isFirstResponder());
}

TEST_F(TabTest, TabGoesOnAsUsualWhereTheChainEndsOrNobodyTakesTheFocus)
{
    third->becomeFirstResponder();
    press(Qt::Key_Tab);
    EXPECT_FALSE(third->isFirstResponder());
    third->setEnabled(false);
    third->setNextKeyView(second);
    second->becomeFirstResponder();
    press(Qt::Key_Tab);
    EXPECT_FALSE(second->isFirstResponder());
}

TEST_F(TabTest, BacktabGoesBack)
{
    third->becomeFirstResponder();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(second->isFirstResponder());
}

TEST_F(TabTest, AScannersTabInFrontOfReturnLeavesTheEntryWhereItIs)
{
    type("SN1");
    press(Qt::Key_Tab);
    type("\n");
    EXPECT_EQ(entries, QStringList{"SN1"});
    EXPECT_TRUE(first->isFirstResponder());
}

TEST_F(TabTest, AScannersTabInAFieldWithoutAChainLeavesTheFocusWhereItIs)
{
    third->becomeFirstResponder();
    type("SN1");
    press(Qt::Key_Tab);
    EXPECT_TRUE(third->isFirstResponder());
    EXPECT_EQ(third->stringValue(), "SN1");
}

TEST_F(TabTest, APersonsTabAfterACharacterMovesOn)
{
    type("SN1");
    clock.pause();
    press(Qt::Key_Tab);
    EXPECT_TRUE(second->isFirstResponder());
    EXPECT_EQ(first->stringValue(), "SN1");
}

} // namespace
