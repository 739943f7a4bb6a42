#include "station/record/Recorder.h"

#include "tests/operator/OperatorFixture.h"
#include "tests/support/Wait.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QListView>
#include <QRegularExpression>
#include <QTest>

using platform::Button;
using platform::TextField;
using platform::View;

namespace {

/// What the recorder writes of things done with real events to panels that are made by hand.
class Recording : public testsupport::OperatorFixture
{
protected:
    Recording()
        : recorder([this](const QString &line) { lines.append(line); })
    {
        recorder.start("Station", root);
        recorder.runBegins();
        lines.clear();
        panel = groupPanel("G1");
        first = field(panel, {10, 50, 100, 25}, "G1-S1");
        second = field(panel, {120, 50, 100, 25}, "G1-S2");
        first->becomeFirstResponder();
    }

    void keys(const QString &text)
    {
        for (const QChar key : text)
            QTest::keyClick(window.windowHandle(), key.toLatin1());
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window.windowHandle(), key, modifiers);
    }
    void click(View *view)
    {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                          view->mapTo(&window, view->rect().center()));
    }
    /// What was written since the last time.
    std::string said() { return std::exchange(lines, {}).join('\n').toStdString(); }

    QStringList lines;
    station::Recorder recorder;
    View *panel = nullptr;
    TextField *first = nullptr;
    TextField *second = nullptr;
};

std::string script(const QStringList &lines)
{
    return lines.join('\n').toStdString();
}

const QString Wait = R"(operator.waitForPanel("G1", limit))";

TEST_F(Recording, OfAnEntryIsOneLineWithWhatItBecame)
{
    keys("12x");
    key(Qt::Key_Backspace);
    keys("3");
    key(Qt::Key_Return);
    EXPECT_EQ(said(), script({Wait, R"(operator.enter("G1-S1", "123"))"}));
    EXPECT_EQ(entered, QStringList("123"));
}

TEST_F(Recording, OfAReturnAloneConfirmsWhatIsThere)
{
    first->setStringValue("A4");
    key(Qt::Key_Return);
    EXPECT_EQ(said(), script({Wait, R"(operator.enter("G1-S1"))"}));
}

TEST_F(Recording, OfADeletedTextSaysThatItIsEmpty)
{
    first->setStringValue("A4");
    first->selectText();
    key(Qt::Key_Delete);
    key(Qt::Key_Return);
    EXPECT_EQ(said(), script({Wait, R"(operator.enter("G1-S1", ""))"}));
}

TEST_F(Recording, OfARefusedEntryHasTheKeysOfIt)
{
    keys("AB\x1b"
         "C");
    key(Qt::Key_Return);
    EXPECT_EQ(said(), script({Wait, R"(operator.enter("G1-S1", "AB\027C"))"}));
}

TEST_F(Recording, OfTwoFieldsTypedInTurnWithAClickBetween)
{
    keys("AB");
    click(second);
    keys("X");
    key(Qt::Key_Return);
    click(first);
    keys("CD");
    key(Qt::Key_Return);
    EXPECT_EQ(said(), script({Wait, R"(operator.fill("G1-S1", "AB"))", R"(operator.enter("G1-S2", "X"))",
                              R"(operator.enter("G1-S1", "ABCD"))"}));
}

TEST_F(Recording, OfAButtonIsTheSameByMouseAndByKey)
{
    auto *ok = qobject_cast<Button *>(panel->subviews().first());
    click(ok);
    EXPECT_EQ(said(), script({Wait, R"(operator.click({ panel = "G1", title = "OK" }))"}));
    ok->becomeFirstResponder();
    key(Qt::Key_Space);
    EXPECT_TRUE(testsupport::waitUntil([this] { return pressed.size() == 2; }));
    EXPECT_EQ(said(), script({R"(operator.click({ panel = "G1", title = "OK" }))"}));
    key(Qt::Key_Return);
    EXPECT_EQ(said(), script({R"(operator.click({ panel = "G1", title = "OK" }))"}));
    EXPECT_EQ(pressed, QStringList({"OK", "OK", "OK"}));
}

TEST_F(Recording, OfAButtonThatABlankPressesAfterSomethingElse)
{
    auto *ok = qobject_cast<Button *>(panel->subviews().first());
    Button *other = button(panel, {100, 10, 80, 30}, "Cancel", "G1-0-Cancel");
    ok->becomeFirstResponder();
    key(Qt::Key_Space);
    click(other);
    EXPECT_TRUE(testsupport::waitUntil([this] { return pressed.size() == 2; }));
    EXPECT_EQ(said(), script({Wait, R"(operator.click({ panel = "G1", title = "Cancel" }))",
                              R"(operator.click({ panel = "G1", title = "OK" }))"}));
}

TEST_F(Recording, OfAButtonThatThePressLeavesIsNone)
{
    const View *ok = panel->subviews().first();
    const QPoint position = ok->mapTo(&window, ok->rect().center());
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, position);
    QTest::mouseMove(window.windowHandle(), QPoint(790, 590));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, QPoint(790, 590));
    EXPECT_EQ(said(), "");
    EXPECT_TRUE(pressed.isEmpty());
}

TEST_F(Recording, OfAButtonWithHalfAnEntrySaysWhatStoodThere)
{
    keys("AB");
    click(panel->subviews().first());
    EXPECT_EQ(said(), script({Wait, R"(operator.fill("G1-S1", "AB"))",
                              R"(operator.click({ panel = "G1", title = "OK" }))"}));
}

TEST_F(Recording, OfASwitchAndASlotThatIsOpenedAnew)
{
    Button *box = switchButton(panel, {230, 50, 30, 30}, "G1-101-S2");
    TextField *shown = field(panel, {10, 80, 100, 15}, "G1-S3");
    shown->setEditable(false);
    shown->setDrawsBackground(true);
    click(box);
    click(shown);
    shown->setFocusPolicy(Qt::StrongFocus);
    shown->becomeFirstResponder();
    key(Qt::Key_F2);
    EXPECT_EQ(said(), script({Wait, R"(operator.click({ panel = "G1", switch = "S2" }))",
                              R"(operator.click("G1-S3"))", R"(operator.click("G1-S3"))"}));
}

TEST_F(Recording, OfABesideButtonWaitsForThePanelsThatAreThere)
{
    Button *group = button(root, {700, 560, 80, 30}, "G1", "G1");
    click(group);
    EXPECT_EQ(said(), script({Wait, R"(operator.click("G1"))"}));
}

TEST_F(Recording, OfAPanelThatGoesWhileTextIsHalfTyped)
{
    keys("AB");
    panel->removeFromSuperview();
    EXPECT_EQ(said(), script({Wait, R"(operator.fill("G1-S1", "AB"))"}));
}

TEST_F(Recording, OfStopWithHalfAnEntry)
{
    keys("AB");
    recorder.stopPressed();
    recorder.runStops();
    keys("CD");
    recorder.runEnds();
    EXPECT_EQ(said(), script({Wait, R"(operator.fill("G1-S1", "AB"))", "operator.stop()"}));
    recorder.runBegins();
    lines.removeIf([](const QString &line) { return line.isEmpty() || line.startsWith("--"); });
    EXPECT_EQ(said(), script({"operator.waitForRunEnd(limit)", "operator.run()"}));
}

TEST_F(Recording, OfAChoiceThatIsWalkedTo)
{
    first->setChoices({"Red", "Green", "Blue"});
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_EQ(said(), script({Wait, R"(operator.enter("G1-S1", "Green"))"}));
    EXPECT_EQ(entered, QStringList("Green"));
}

TEST_F(Recording, OfAChoiceThatIsClicked)
{
    first->setChoices({"Red", "Green", "Blue"});
    first->toggleList();
    const auto *list = window.findChild<QListView *>();
    ASSERT_TRUE(list && list->isVisible());
    const QPoint row = list->visualRect(list->model()->index(2, 0)).center();
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, list->viewport()->mapTo(&window, row));
    EXPECT_EQ(said(), script({Wait, R"(operator.enter("G1-S1", "Blue"))"}));
    EXPECT_EQ(entered, QStringList("Blue"));
}

TEST_F(Recording, WaitsForWhatAPanelHasComeToSay)
{
    auto *line = new TextField(platform::Rect(10, 80, 200, 15));
    line->setIdentifier(platform::Identifier("G1-StatusLine"));
    panel->addSubview(line);
    keys("bad\r");
    line->setStringValue("\"bad\" is refused");
    keys("good\r");
    EXPECT_EQ(said(), script({Wait, R"(operator.enter("G1-S1", "bad"))",
                              R"(operator.waitForText("G1-StatusLine", "\"bad\" is refused", limit))",
                              R"(operator.enter("G1-S1", "good"))"}));
}

TEST_F(Recording, OfARefusedTextThatWasPastedHasItInOnePiece)
{
    QGuiApplication::clipboard()->setText("AB\x01\nCD");
    keys("x");
    key(Qt::Key_V, Qt::ControlModifier);
    key(Qt::Key_Return);
    EXPECT_EQ(said(),
              script({Wait, R"(operator.paste("G1-S1", "xAB\001\nCD"))", R"(operator.enter("G1-S1"))"}));
    EXPECT_EQ(entered, QStringList()) << "it was refused";
    QGuiApplication::clipboard()->setText("EF");
    key(Qt::Key_V, Qt::ControlModifier);
    key(Qt::Key_Return);
    EXPECT_EQ(said(), script({R"(operator.enter("G1-S1", "EF"))"})) << "what is taken is an entry like any";
}

TEST_F(Recording, OfABadgeHasTheNumberOfThePersonAndNotTheBadge)
{
    const auto runs = [this](const QString &badge) {
        recorder.runEnds();
        lines.clear();
        recorder.runBegins(badge);
        lines.removeFirst(); // A wait for the end of the run before.
        return lines.filter(QRegularExpression("^operator|adge")).join('\n').toStdString();
    };
    EXPECT_EQ(runs("anna"),
              script({"-- Badge 1 is not written here: the first --badge gives it.", "operator.run()"}));
    EXPECT_EQ(runs("anna"), "operator.run()");
    EXPECT_EQ(runs("bert"), script({"operator.logIn(2)", "operator.run()"}));
    EXPECT_EQ(runs("carl"), script({"operator.logIn(3)", "operator.run()"}));
    EXPECT_EQ(runs("anna"), script({"operator.logIn(1)", "operator.run()"}));
}

TEST_F(Recording, OfAButtonThatNothingNamesSaysSoInAComment)
{
    View *twin = button(panel, {100, 10, 80, 30}, "OK", "Other");
    click(twin);
    EXPECT_EQ(said(), script({Wait, "-- Button \"Other\" was clicked, which has no name."}));
}

} // namespace
