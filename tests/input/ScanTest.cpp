#include "platform/Button.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <QTest>
#include <QTimer>

using platform::Array;
using platform::Button;
using platform::Dictionary;
using platform::TextField;
using platform::Value;

namespace {

const Dictionary entry{{"input", Array{"SN"}}};
const Dictionary question{{"button", Array{"No", "Yes"}}};

/// Where a scan lands when several panels, or none, wait for one.
class ScanTest : public testsupport::PluginFixture
{
protected:
    /// A control character, as a scanner sends it: without a key of its own.
    void typeControl(char16_t character)
    {
        QTest::sendKeyEvent(QTest::Click, window().windowHandle(), Qt::Key_unknown, QString(QChar(character)),
                            Qt::NoModifier);
    }
    bool nobodyHasTheFocus() { return !window().focusWidget() || window().focusWidget() == &window(); }
};

TEST_F(ScanTest, NothingHasTheFocusUntilAPanelAsksForIt)
{
    start();
    EXPECT_TRUE(nobodyHasTheFocus());
    EXPECT_FALSE(loopField()->isFirstResponder());
}

TEST_F(ScanTest, AScanThatNobodyWaitsForIsRefusedWholeAndVisibly)
{
    start();
    const QString line = "Entry refused: 20230001 (no field waits for it)";
    expectError(line);
    scan("20230001");
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, line));
    EXPECT_EQ(operatorLines, QStringList{line});
    EXPECT_FALSE(plugin().isLoopEnabled());
    EXPECT_EQ(loopField()->stringValue(), "0");
}

TEST_F(ScanTest, AScanWhileAQuestionIsOpenAnswersNothing)
{
    auto &call = showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    expectError("Entry refused: ABC");
    scan("ABC");
    EXPECT_FALSE(call.finished());
    EXPECT_EQ(record("0"), (Dictionary{{"length", 0}}));
}

TEST_F(ScanTest, ATextWithoutAnEndIsRefusedToo)
{
    start();
    expectError("Entry refused: ABC");
    type("ABC");
    EXPECT_TRUE(testsupport::waitUntil([&] { return operatorLines.size() == 1; }));
}

TEST_F(ScanTest, AScanThatBeganBeforeAPanelOpenedDoesNotEndInIt)
{
    start();
    type("AB");
    showView(0, entry);
    ASSERT_TRUE(testsupport::waitUntil([&] { return field("0-SN") && field("0-SN")->isFirstResponder(); }));
    expectError("Entry refused: AB");
    scan("CD");
    EXPECT_FALSE(record("0").contains("SN"));
    scan("EF");
    EXPECT_EQ(record("0").value("SN"), Value("EF"));
}

TEST_F(ScanTest, EightOpenSlotPanelsAreFilledByEightScansInARow)
{
    for (int system = 0; system < 8; ++system) {
        showView(system, entry);
        ASSERT_TRUE(waitForPanel(QString::number(system)));
    }
    for (int i = 0; i < 8; ++i)
        scan(QStringLiteral("U%1").arg(i));
    QStringList entered;
    for (int system = 0; system < 8; ++system)
        entered.append(record(QString::number(system)).value("SN").toString());
    // The panel that opened last has the focus first; then it goes to those that have waited longest.
    EXPECT_EQ(entered, (QStringList{"U1", "U2", "U3", "U4", "U5", "U6", "U7", "U0"}));
}

TEST_F(ScanTest, ARefusedEntryKeepsTheFocus)
{
    showView(1, {{"input", Array{"SN"}}, {"length", 3}});
    ASSERT_TRUE(waitForPanel("1"));
    showView(0, {{"input", Array{"SN"}}, {"length", 3}});
    ASSERT_TRUE(waitForPanel("0"));
    expectError("Invalid input: 0-SN = AB");
    scan("AB");
    EXPECT_TRUE(field("0-SN")->isFirstResponder());
    scan("ABC");
    EXPECT_TRUE(field("1-SN")->isFirstResponder());
}

TEST_F(ScanTest, AnEntryThatWasReplacedByARefusedOneIsNoAnswerAnyMore)
{
    auto &call = showView(0, {{"input", Array{"SN"}}, {"length", 3}, {"button", Array{"Skip"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("ABC");
    expectError("Invalid input: 0-SN = AB");
    scan("AB");
    press("0", "Skip");
    EXPECT_EQ(call.result(), Value(Dictionary{{"clickedButton", "Pass"}}));
}

TEST_F(ScanTest, ABegunEntryKeepsTheFocusWhenAPanelOpens)
{
    showView(0, entry);
    ASSERT_TRUE(waitForPanel("0"));
    type("AB");
    showView(1, entry);
    ASSERT_TRUE(waitForPanel("1"));
    showGroup(1, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G2"));
    scan("CD");
    EXPECT_EQ(record("0").value("SN"), Value("ABCD"));
    EXPECT_TRUE(field("1-SN")->isFirstResponder());
    scan("EF");
    EXPECT_TRUE(field("G2-SharedInput")->isFirstResponder());
}

TEST_F(ScanTest, AfterAPanelHasGoneTheFocusIsWhereWorkWaits)
{
    showView(0, entry);
    ASSERT_TRUE(waitForPanel("0"));
    auto &asked = showView(1, entry);
    ASSERT_TRUE(waitForPanel("1"));
    type("X");
    press("1", "OK");
    ASSERT_TRUE(asked.waitUntilFinished());
    EXPECT_TRUE(field("0-SN")->isFirstResponder());
}

TEST_F(ScanTest, AScanSentRightBehindClearComesAfterTheClearing)
{
    showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    for (int i = 0; i < 20; ++i) {
        scan("OLD");
        click(button("G1", "Clear"));
        scan("NEW");
        settle();
        EXPECT_TRUE(testsupport::waitUntil([&] { return record("G1").contains("S1"); }));
        EXPECT_EQ(record("G1"), (Dictionary{{"length", 0}, {"S1", "NEW"}}));
        EXPECT_EQ(field("G1-S1")->stringValue(), "NEW");
        press("G1", "Clear");
    }
}

TEST_F(ScanTest, AScanSentRightBehindOkIsInNoOtherPanelUnseen)
{
    auto &call = showView(0, entry);
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    click(button("0", "OK"));
    expectError("Entry refused: B");
    scan("B");
    EXPECT_EQ(call.result(), Value(Dictionary{{"SN", "A"}, {"clickedButton", "Pass"}}));
    EXPECT_TRUE(testsupport::waitUntil([&] { return operatorLines.size() == 1; }));
}

TEST_F(ScanTest, AScanSentRightBehindOkGoesToThePanelThatWaits)
{
    showView(1, entry);
    ASSERT_TRUE(waitForPanel("1"));
    auto &call = showView(0, entry);
    ASSERT_TRUE(waitForPanel("0"));
    type("A");
    click(button("0", "OK"));
    scan("B");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("A"));
    EXPECT_TRUE(testsupport::waitUntil([&] { return record("1").value("SN") == Value("B"); }));
}

TEST_F(ScanTest, PressesAndScansOfSeveralPanelsKeepTheirOrder)
{
    std::vector<testsupport::SequencerCall *> calls;
    for (int system = 0; system < 8; ++system) {
        calls.push_back(&showView(system, entry));
        ASSERT_TRUE(waitForPanel(QString::number(system)));
    }
    // All of it arrives before the first press has been carried out.
    for (const int system : {3, 6, 1, 4, 7, 2, 5, 0}) {
        click(field(QString::number(system) + "-SN"));
        scan(QStringLiteral("U%1").arg(system));
        click(button(QString::number(system), "OK"));
    }
    for (int system = 0; system < 8; ++system)
        EXPECT_EQ(calls.at(static_cast<std::size_t>(system))->result(),
                  Value(Dictionary{{"SN", QStringLiteral("U%1").arg(system)}, {"clickedButton", "Pass"}}));
}

TEST_F(ScanTest, TheScanOfAPanelThatIsTakenAwayInItsMidstIsRefusedWhole)
{
    showView(1, entry);
    ASSERT_TRUE(waitForPanel("1"));
    auto &call = showView(0, entry);
    ASSERT_TRUE(waitForPanel("0"));
    type("AB");
    // As when another thread ends the call: no press tells that something new begins.
    rooms().waits.press(rooms().waits.panelKey("0")).end();
    ASSERT_TRUE(call.waitUntilFinished());
    ASSERT_TRUE(field("1-SN")->isFirstResponder());
    expectError("Entry refused: ABCD");
    scan("CD");
    EXPECT_FALSE(record("1").contains("SN"));
    EXPECT_EQ(field("1-SN")->stringValue(), "");
}

TEST_F(ScanTest, AfterClearTheFocusIsInAFieldThatCanBeSeen)
{
    showGroup(1, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G2"));
    showGroup(0, {{"input", Array{"S2", "S3"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    click(field("G2-SharedInput"));
    press("G1", "Clear");
    scan("A");
    EXPECT_EQ(record("G1").value("S2"), Value("A"));
    EXPECT_FALSE(record("G2").contains("S1"));
}

TEST_F(ScanTest, ASwitchThatDisablesTheFocusedFieldHandsTheFocusOn)
{
    showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Clear");
    ASSERT_TRUE(field("G1-S1")->isFirstResponder());
    for (platform::View *view : field("G1-S1")->superview()->subviews()) {
        if (auto *toggle = qobject_cast<Button *>(view))
            click(toggle);
    }
    ASSERT_FALSE(field("G1-S1")->isEnabled());
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
}

TEST_F(ScanTest, AScanWithAButtonInFocusGoesToThePanelsField)
{
    showView(0, {{"input", Array{"SN"}}, {"button", Array{"Cancel", "OK"}}});
    ASSERT_TRUE(waitForPanel("0"));
    ASSERT_TRUE(button("0", "Cancel")->becomeFirstResponder());
    scan("A B");
    EXPECT_EQ(record("0").value("SN"), Value("A B"));
}

TEST_F(ScanTest, TheLoopFieldTakesKeysAfterAClickAndGivesTheFocusBackWithReturn)
{
    showView(0, entry);
    ASSERT_TRUE(waitForPanel("0"));
    click(loopField());
    scan("3");
    EXPECT_TRUE(plugin().isLoopEnabled());
    EXPECT_TRUE(field("0-SN")->isFirstResponder());
    scan("A");
    EXPECT_EQ(record("0").value("SN"), Value("A"));
    EXPECT_EQ(plugin().getLoopConfig(nullptr).value("LoopMax"), Value(3));
}

TEST_F(ScanTest, AnEntryWithAControlCharacterIsRefusedWholeAndOneWithGsIsKept)
{
    showView(0, entry);
    ASSERT_TRUE(waitForPanel("0"));
    expectError(QString("Entry refused: A") + QChar(0x2407) + "B (control character U+0007, in 0-SN)");
    type("A");
    typeControl(u'\a');
    scan("B");
    EXPECT_FALSE(record("0").contains("SN"));
    type("A");
    typeControl(u'\x1d');
    scan("B");
    EXPECT_EQ(record("0").value("SN"), Value(QString("A") + QChar(0x1d) + QString("B")));
}

TEST_F(ScanTest, AWindowThatBecomesActiveAgainDoesNotPutTheFocusIntoTheLoopField)
{
    start();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(testsupport::waitUntil([&] { return other.isActiveWindow(); }));
    window().activateWindow();
    ASSERT_TRUE(testsupport::waitUntil([&] { return window().isActiveWindow(); }));
    EXPECT_FALSE(loopField()->isFirstResponder());
}

} // namespace
