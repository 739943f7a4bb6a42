#include "platform/TextField.h"
#include "tests/support/FieldKeys.h"

#include <QLineEdit>

using platform::Array;
using platform::Dictionary;
using platform::Value;
using testsupport::SequencerCall;
using testsupport::waitUntil;

namespace {

const Array Colors{"Green", "Red", "Dark red", "Blue"};

Array manyChoices(int count)
{
    Array choices;
    for (int i = 0; i < count; ++i)
        choices.append(QString("ART-%1-X").arg(i, 5, 10, QLatin1Char('0')));
    return choices;
}

class ChoicesTest : public testsupport::FieldKeysFixture
{
protected:
    SequencerCall &askSystem(int system, const Array &choices)
    {
        SequencerCall &call = showView(system, {{"input", Array{"SN"}}, {"choices", choices}});
        EXPECT_TRUE(waitForPanel(QString::number(system)));
        return call;
    }
    SequencerCall &askGroup(const Array &choices)
    {
        SequencerCall &call = showGroup(0, {{"input", Array{"S1", "S2"}}, {"choices", choices}});
        EXPECT_TRUE(waitForPanel("G1"));
        return call;
    }
    QString current() { return openList() ? openList()->currentIndex().data().toString() : QString(); }
};

TEST_F(ChoicesTest, TheArrowOpensAndFoldsTheList)
{
    askSystem(0, Colors);
    EXPECT_EQ(openList(), nullptr);
    clickArrow("0-SN");
    EXPECT_EQ(rows(), (QStringList{"Green", "Red", "Dark red", "Blue"}));
    EXPECT_TRUE(field("0-SN")->isFirstResponder());
    clickArrow("0-SN");
    EXPECT_EQ(openList(), nullptr);
}

TEST_F(ChoicesTest, APressOnTheRestOfTheFieldOpensNothing)
{
    askSystem(0, Colors);
    click(field("0-SN"));
    EXPECT_EQ(openList(), nullptr);
}

TEST_F(ChoicesTest, AClickOnARowEndsTheEntry)
{
    SequencerCall &call = askSystem(0, Colors);
    clickArrow("0-SN");
    clickRow(2);
    EXPECT_EQ(openList(), nullptr);
    EXPECT_EQ(record("0").value("SN"), Value("Dark red"));
    EXPECT_TRUE(field("0-SN")->isFirstResponder());
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("Dark red"));
}

TEST_F(ChoicesTest, ArrowKeysWalkAndReturnChooses)
{
    askGroup(Colors);
    key(Qt::Key_Down);
    EXPECT_EQ(current(), "Green");
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Up);
    EXPECT_EQ(current(), "Red");
    key(Qt::Key_Return);
    EXPECT_EQ(openList(), nullptr);
    EXPECT_EQ(text("G1-S1"), "Red");
    EXPECT_EQ(text("G1-SharedInput"), "");
}

TEST_F(ChoicesTest, AltAndDownOpensAndFoldsAndEscapeFolds)
{
    askSystem(0, Colors);
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_NE(openList(), nullptr);
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(openList(), nullptr);
    key(Qt::Key_Down, Qt::AltModifier);
    key(Qt::Key_Escape);
    EXPECT_EQ(openList(), nullptr);
    EXPECT_FALSE(record("0").contains("SN"));
}

TEST_F(ChoicesTest, TypingNarrowsWhateverTheCase)
{
    askSystem(0, Colors);
    clickArrow("0-SN");
    type("rED");
    EXPECT_EQ(rows(), (QStringList{"Red", "Dark red"}));
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_EQ(record("0").value("SN"), Value("Dark red"));
}

TEST_F(ChoicesTest, TheListOpensForWhoeverStopsTyping)
{
    askSystem(0, Colors);
    type("re");
    EXPECT_EQ(openList(), nullptr);
    EXPECT_TRUE(waitUntil([&] { return openList() != nullptr; }));
    EXPECT_EQ(rows(), (QStringList{"Green", "Red", "Dark red"}));
}

TEST_F(ChoicesTest, ABegunTextThatFitsNothingFoldsTheList)
{
    askSystem(0, Colors);
    clickArrow("0-SN");
    type("q");
    EXPECT_EQ(openList(), nullptr);
    key(Qt::Key_Backspace);
    EXPECT_EQ(text("0-SN"), "");
}

TEST_F(ChoicesTest, AScanRulesOverTheRowThatWasHighlighted)
{
    askSystem(0, Colors);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    ASSERT_EQ(current(), "Red");
    scan("Blue");
    EXPECT_EQ(record("0").value("SN"), Value("Blue"));
    EXPECT_EQ(openList(), nullptr);
}

TEST_F(ChoicesTest, AScanOfWhatIsNoChoiceIsRefusedWhileTheListIsOpen)
{
    expectError("Invalid input: 0-SN = Re1");
    askSystem(0, Colors);
    key(Qt::Key_Down);
    scan("Re1");
    EXPECT_FALSE(record("0").contains("SN"));
    EXPECT_EQ(told("0"), "\"Re1\" is refused: it is none of the choices");
    EXPECT_EQ(text("0-SN"), "Re1");
}

TEST_F(ChoicesTest, NoCharacterOfAScanIsLostAmongFiveThousandChoices)
{
    SequencerCall &call = askSystem(0, manyChoices(5000));
    clickArrow("0-SN");
    ASSERT_EQ(rows().size(), 5000);
    scan("ART-04711-X");
    EXPECT_EQ(record("0").value("SN"), Value("ART-04711-X"));
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("ART-04711-X"));
}

TEST_F(ChoicesTest, ThousandsAreNarrowedToAFew)
{
    askSystem(0, manyChoices(5000));
    clickArrow("0-SN");
    type("471");
    EXPECT_EQ(rows().size(), 15);
    key(Qt::Key_PageDown);
    key(Qt::Key_Return);
    EXPECT_EQ(record("0").value("SN"), Value("ART-00471-X"));
}

TEST_F(ChoicesTest, ScansOneRightAfterTheOtherEachLandWhileAListWasOpen)
{
    SequencerCall &call = askGroup(manyChoices(5000));
    key(Qt::Key_Down);
    scan("ART-00001-X");
    key(Qt::Key_Down);
    scan("ART-04999-X");
    EXPECT_EQ(text("G1-S1"), "ART-00001-X");
    EXPECT_EQ(text("G1-S2"), "ART-04999-X");
    press("G1", "OK");
    EXPECT_EQ(call.result().toMap().value("S2"), Value("ART-04999-X"));
}

TEST_F(ChoicesTest, AnEscapeWithinAScanIsNotTheLists)
{
    expectError("Entry refused");
    askSystem(0, Colors);
    key(Qt::Key_Down);
    type("Bl");
    key(Qt::Key_Escape);
    scan("ue");
    EXPECT_FALSE(record("0").contains("SN"));
}

TEST_F(ChoicesTest, APanelThatOpensTakesTheFocusFromNobodyWhoLooksThroughAList)
{
    askSystem(0, Colors);
    key(Qt::Key_Down);
    askSystem(5, Colors);
    EXPECT_TRUE(field("0-SN")->isFirstResponder());
    EXPECT_NE(openList(), nullptr);
    key(Qt::Key_Return);
    EXPECT_EQ(record("0").value("SN"), Value("Green"));
}

TEST_F(ChoicesTest, TheListNeverHasTheFocusOfAnotherPanelsBegunEntry)
{
    askSystem(0, Colors);
    type("Gr");
    ASSERT_TRUE(waitUntil([&] { return openList() != nullptr; }));
    showView(5, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("5"));
    click(field("5-SN"));
    // What is typed from here on is another panel's.
    EXPECT_EQ(openList(), nullptr);
    type("A");
    key(Qt::Key_Down);
    EXPECT_EQ(openList(), nullptr);
    scan("B");
    EXPECT_EQ(record("5").value("SN"), Value("AB"));
}

TEST_F(ChoicesTest, TheListGoesWithItsPanel)
{
    SequencerCall &call = askSystem(0, Colors);
    key(Qt::Key_Down);
    const QPointer<platform::ChoiceList> list = openList();
    plugin().interruptWaitingCalls();
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_EQ(openList(), nullptr);
    EXPECT_TRUE(waitUntil([&] { return list.isNull(); }));
}

TEST_F(ChoicesTest, APressElsewhereFoldsTheListAndCounts)
{
    SequencerCall &call = askSystem(0, Colors);
    scan("Red");
    key(Qt::Key_Down);
    ASSERT_NE(openList(), nullptr);
    QTest::mouseClick(window().windowHandle(), Qt::LeftButton, {}, QPoint(5, window().height() - 5));
    EXPECT_EQ(openList(), nullptr);
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("Red"));
}

TEST_F(ChoicesTest, OkTakesWhatIsWrittenAndNotTheRowThatNobodyChose)
{
    SequencerCall &call = askSystem(0, Colors);
    type("Gr");
    ASSERT_TRUE(waitUntil([&] { return openList() != nullptr; }));
    press("0", "OK");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("Green"));
    EXPECT_EQ(openList(), nullptr);
}

class ListPlaceTest : public ChoicesTest, public ::testing::WithParamInterface<QSize>
{};

TEST_P(ListPlaceTest, TheListLiesInTheWindowAndBesideItsField)
{
    station.windowSize = GetParam();
    for (const int system : {0, 3, 7}) {
        askSystem(system, manyChoices(50));
        const QString name = QString("%1-SN").arg(system);
        ASSERT_TRUE(field(name)->becomeFirstResponder());
        key(Qt::Key_Down);
        ASSERT_NE(openList(), nullptr);
        const QRect list = openList()->geometry();
        const QRect at(field(name)->mapTo(&window(), QPoint()), field(name)->size());
        EXPECT_TRUE(window().rect().contains(list)) << system;
        EXPECT_FALSE(list.intersects(at)) << system;
        EXPECT_GE(list.height(), 60) << system;
        key(Qt::Key_Escape);
    }
}

INSTANTIATE_TEST_SUITE_P(Windows, ListPlaceTest,
                         ::testing::Values(QSize(600, 400), QSize(1280, 800), QSize(1600, 1000)));

} // namespace
