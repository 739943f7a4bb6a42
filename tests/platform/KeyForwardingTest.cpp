#include "tests/platform/ViewFixture.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace {

using namespace platform;

/// A chain of two read-only fields that ends with an editable one; the first has the focus.
class KeyForwardingTest : public testsupport::ViewFixture
{
protected:
    KeyForwardingTest()
    {
        first->setNextResponder(second);
        second->setNextResponder(shared);
        shared->setTarget(&target, "enter:", [this](View *) {
            entries += shared->stringValue();
            shared->setStringValue(QString());
        });
        EXPECT_TRUE(first->becomeFirstResponder());
    }

    TextField *first = add<TextField>({10, 10, 100, 25});
    TextField *second = add<TextField>({10, 40, 100, 25});
    TextField *shared = addField({10, 70, 100, 25});
    QStringList entries;
};

TEST_F(KeyForwardingTest, AKeyTravelsToTheFirstEditableFieldWhichTakesTheFocus)
{
    type("S");
    EXPECT_EQ(shared->stringValue(), "S");
    EXPECT_TRUE(shared->isFirstResponder());
    EXPECT_EQ(first->stringValue(), "");
    EXPECT_EQ(second->stringValue(), "");
}

TEST_F(KeyForwardingTest, ABurstLosesNoCharacterAndKeepsTheOrder)
{
    const QString burst = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-0123456789";
    type(burst);
    EXPECT_EQ(shared->stringValue(), burst);
}

TEST_F(KeyForwardingTest, ABurstOfSeveralEntriesArrivesWhole)
{
    type("SN1\nSN2\nSN3\n");
    EXPECT_EQ(entries, (QStringList{"SN1", "SN2", "SN3"}));
}

TEST_F(KeyForwardingTest, AnEntryWhoseActionTurnsBackToAReadOnlyFieldLosesNothing)
{
    shared->setTarget(&target, "enter:", [this](View *) {
        entries += shared->stringValue();
        shared->setStringValue(QString());
        second->becomeFirstResponder();
    });
    type("SN1\nSN2\nSN3\n");
    EXPECT_EQ(entries, (QStringList{"SN1", "SN2", "SN3"}));
    EXPECT_TRUE(second->isFirstResponder());
}

TEST_F(KeyForwardingTest, ReturnTravelsToo)
{
    shared->setStringValue("SN1");
    type("\n");
    EXPECT_EQ(entries, QStringList{"SN1"});
}

TEST_F(KeyForwardingTest, ACharacterReplacesTheTextThatIsThere)
{
    shared->setStringValue("old");
    type("N");
    EXPECT_EQ(shared->stringValue(), "N");
}

TEST_F(KeyForwardingTest, BackspaceTravelsToo)
{
    shared->setStringValue("old");
    press(Qt::Key_Backspace);
    EXPECT_EQ(shared->stringValue(), "");
    EXPECT_TRUE(shared->isFirstResponder());
}

TEST_F(KeyForwardingTest, ACharacterOutsideTheBasicPlaneTravelsWhole)
{
    const char32_t character = U'\U0001F600';
    QKeyEvent event(QEvent::KeyPress, 0, Qt::NoModifier, QString::fromUcs4(&character, 1));
    QCoreApplication::sendEvent(first, &event);
    EXPECT_EQ(shared->stringValue(), QString::fromUcs4(&character, 1));
}

struct OtherKey
{
    const char *name;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
};

class KeyThatStaysTest : public KeyForwardingTest, public ::testing::WithParamInterface<OtherKey>
{};

TEST_P(KeyThatStaysTest, TheEditableFieldIsLeftAlone)
{
    press(GetParam().key, GetParam().modifiers);
    EXPECT_FALSE(shared->isFirstResponder());
    EXPECT_EQ(shared->stringValue(), "");
    EXPECT_TRUE(first->isFirstResponder());
}

INSTANTIATE_TEST_SUITE_P(OtherKeys, KeyThatStaysTest,
                         ::testing::Values(OtherKey{"Shift", Qt::Key_Shift, Qt::NoModifier},
                                           OtherKey{"Control", Qt::Key_Control, Qt::NoModifier},
                                           OtherKey{"Escape", Qt::Key_Escape, Qt::NoModifier},
                                           OtherKey{"Left", Qt::Key_Left, Qt::NoModifier},
                                           OtherKey{"F5", Qt::Key_F5, Qt::NoModifier},
                                           OtherKey{"Copy", Qt::Key_C, Qt::ControlModifier}),
                         [](const auto &tested) { return std::string(tested.param.name); });

TEST_F(KeyForwardingTest, TabIsNoEntryAndOnlyMovesTheFocus)
{
    shared->setStringValue("kept");
    press(Qt::Key_Tab);
    EXPECT_EQ(shared->stringValue(), "kept");
}

TEST_F(KeyForwardingTest, ADisabledFieldOfTheChainIsPassedOver)
{
    TextField *last = addField({10, 100, 100, 25});
    shared->setNextResponder(last);
    shared->setEnabled(false);
    type("SN1");
    EXPECT_EQ(last->stringValue(), "SN1");
    EXPECT_EQ(shared->stringValue(), "");
}

TEST_F(KeyForwardingTest, AHiddenFieldOfTheChainIsPassedOver)
{
    TextField *last = addField({10, 100, 100, 25});
    shared->setNextResponder(last);
    shared->setHidden(true);
    type("SN1");
    EXPECT_EQ(last->stringValue(), "SN1");
}

TEST_F(KeyForwardingTest, ThePathLeadsOverSuperviewsWithoutALinkOfTheirOwn)
{
    View *panel = add({200, 0, 100, 100});
    auto *inner = add<TextField>({0, 0, 50, 20}, panel);
    panel->setNextResponder(shared);
    inner->becomeFirstResponder();
    type("SN1");
    EXPECT_EQ(shared->stringValue(), "SN1");
}

TEST_F(KeyForwardingTest, AKeyThatNobodyTakesGoesOnToWhoeverHoldsTheField)
{
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
    } counter;
    root->installEventFilter(&counter);
    second->setNextResponder(nullptr);
    type("x");
    press(Qt::Key_F5);
    EXPECT_EQ(counter.keys, 2);
    EXPECT_TRUE(first->isFirstResponder());
}

TEST_F(KeyForwardingTest, AFieldOfTheChainThatIsGoneEndsThePath)
{
    delete shared;
    type("SN1");
    EXPECT_TRUE(first->isFirstResponder());
    EXPECT_EQ(second->stringValue(), "");
}

} // namespace
