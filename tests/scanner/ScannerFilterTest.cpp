#include "station/scanner/ScannerFilter.h"

#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"
#include "platform/Button.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"

#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QWindow>

using platform::Array;
using platform::Dictionary;
using platform::Value;
using station::ScannerFilter;
using station::ScannerSettings;

namespace {

/// A scanner's keys at a station with panels: what it sends around its text never gets there.
class ScannerFilterTest : public testsupport::PluginFixture, public KVKExtensionEntryObserver
{
protected:
    ScannerFilterTest() { KVKExtensionEntryRelay::sharedEntryRelay()->addObserver(this); }
    ~ScannerFilterTest() override { KVKExtensionEntryRelay::sharedEntryRelay()->removeObserver(this); }
    void entryRefused(const KVKRefusedEntry &entry) override { refused.append(entry.text); }

    void scanner(const ScannerSettings &settings)
    {
        start();
        m_filter = std::make_unique<ScannerFilter>(&window(), settings);
    }
    void ask(int system)
    {
        showView(system, {{"input", Array{"SN"}}});
        ASSERT_TRUE(waitForPanel(QString::number(system)));
    }
    void askGroup(const QStringList &slotNames)
    {
        showGroup(0, {{"input", Array(slotNames.cbegin(), slotNames.cend())}});
        ASSERT_TRUE(waitForPanel("G1"));
    }
    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window().windowHandle(), which, modifiers);
    }
    /// A control character that comes as a text without Control.
    void control(const char *character)
    {
        QTest::sendKeyEvent(QTest::Click, window().windowHandle(), Qt::Key_unknown, QString(character),
                            Qt::NoModifier);
    }
    QString focused()
    {
        for (platform::View *view : testsupport::descendants(rootView())) {
            const auto *field = qobject_cast<platform::TextField *>(view);
            if (field && field->isFirstResponder())
                return field->identifier().text();
        }
        return {};
    }
    QString text(const QString &identifier) { return field(identifier)->stringValue(); }
    /// A button of the host's own that counts how often it was pressed.
    QPushButton *hostButton()
    {
        auto *button = new QPushButton("Run", &window());
        QObject::connect(button, &QPushButton::clicked, button, [this] { ++presses; });
        button->show();
        button->setFocus();
        return button;
    }

    QStringList refused;
    int presses = 0;

private:
    std::unique_ptr<ScannerFilter> m_filter;
};

TEST_F(ScannerFilterTest, PrefixAndSuffixDoNotCountForTheLength)
{
    scanner({"##", "%%", {Qt::Key_Return}});
    showView(0, {{"input", Array{"SN"}}, {"length", 4}});
    ASSERT_TRUE(waitForPanel("0"));
    type("##AB-1%%\n");
    EXPECT_EQ(record("0").value("SN"), Value("AB-1"));
    EXPECT_EQ(refused, QStringList());
}

TEST_F(ScannerFilterTest, WhatIsTypedByHandWorksWithoutThem)
{
    scanner({"##", "%%", {Qt::Key_Return}});
    ask(0);
    type("A#%%\n");
    EXPECT_EQ(record("0").value("SN"), Value("A#%%"));
}

TEST_F(ScannerFilterTest, HalfAPrefixIsInTheFieldAsItWasTyped)
{
    scanner({"#~", {}, {Qt::Key_Return}});
    ask(0);
    type("#");
    EXPECT_EQ(text("0-SN"), "");
    type("#A#");
    click(field("0-SN"));
    EXPECT_EQ(text("0-SN"), "##A#");
}

TEST_F(ScannerFilterTest, ControlCharactersComeAsTextOrWithControl)
{
    // Outside of a scan Tab would walk on, and nothing be entered.
    scanner({"\x02", "\x03", {Qt::Key_Tab}});
    askGroup({"S1", "S2"});
    key(Qt::Key_B, Qt::ControlModifier);
    type("A");
    key(Qt::Key_C, Qt::ControlModifier);
    key(Qt::Key_Tab);
    control("\x02");
    type("B");
    control("\x03");
    key(Qt::Key_Tab);
    EXPECT_EQ(record("G1").value("S1"), Value("A"));
    EXPECT_EQ(record("G1").value("S2"), Value("B"));
    EXPECT_EQ(refused, QStringList());
}

TEST_F(ScannerFilterTest, APrefixWorksNoShortcut)
{
    scanner({"\x02", {}, {Qt::Key_Return}});
    int works = 0;
    const QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_B), &window(), [&] { ++works; });
    ask(0);
    key(Qt::Key_B, Qt::ControlModifier);
    type("A\n");
    EXPECT_EQ(record("0").value("SN"), Value("A"));
    EXPECT_EQ(works, 0);
}

TEST_F(ScannerFilterTest, TheTerminatorConfirmsAndTheOthersDoWhatTheyDoOtherwise)
{
    scanner({"#", {}, {Qt::Key_Tab}});
    ask(0);
    ask(1);
    field("0-SN")->becomeFirstResponder();
    type("#A");
    key(Qt::Key_Tab);
    EXPECT_EQ(record("0").value("SN"), Value("A"));
    EXPECT_EQ(focused(), "1-SN") << "the focus goes on as after Return";
    type("#B\n");
    EXPECT_EQ(record("1").value("SN"), Value("B"));
}

TEST_F(ScannerFilterTest, EnterOfTheKeypadCanBeTheTerminator)
{
    scanner({{}, "%", {Qt::Key_Tab, Qt::Key_Enter}});
    ask(0);
    type("A%");
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(record("0").value("SN"), Value("A"));
}

TEST_F(ScannerFilterTest, WithoutAPrefixTabConfirmsWhatIsWrittenAndWalksOtherwise)
{
    scanner({{}, {}, {Qt::Key_Tab}});
    ask(0);
    ask(1);
    field("0-SN")->becomeFirstResponder();
    key(Qt::Key_Tab);
    EXPECT_NE(focused(), "0-SN") << "nothing is written: Tab walks";
    field("0-SN")->becomeFirstResponder();
    type("A");
    key(Qt::Key_Tab);
    EXPECT_EQ(record("0").value("SN"), Value("A"));
}

TEST_F(ScannerFilterTest, WithoutAPrefixABlankThatWorksAButtonIsNoEntryForTab)
{
    scanner({{}, {}, {Qt::Key_Tab}});
    ask(0);
    const QPushButton *button = hostButton();
    type(" ");
    EXPECT_EQ(presses, 1);
    key(Qt::Key_Tab);
    EXPECT_FALSE(button->hasFocus()) << "Tab walks";
}

TEST_F(ScannerFilterTest, TabAtTheLastFieldConfirmsItAndPressesNothing)
{
    scanner({"#", {}, {Qt::Key_Tab}});
    askGroup({"S1"});
    QPushButton *button = hostButton();
    field("G1-SharedInput")->becomeFirstResponder();
    type("#A");
    key(Qt::Key_Tab);
    EXPECT_EQ(record("G1").value("S1"), Value("A"));
    EXPECT_TRUE(isOpen("G1"));
    EXPECT_EQ(presses, 0);
    EXPECT_FALSE(button->hasFocus()) << "Tab has confirmed, and not walked as well";
    EXPECT_EQ(refused, QStringList());
}

TEST_F(ScannerFilterTest, AScanAtAButtonGoesWholeToTheFieldThatWaits)
{
    scanner({"#", "%", {Qt::Key_Tab}});
    ask(0);
    hostButton();
    type("# A B%");
    key(Qt::Key_Tab);
    EXPECT_EQ(record("0").value("SN"), Value(" A B"));
    EXPECT_EQ(presses, 0);
}

TEST_F(ScannerFilterTest, AScanThatNoFieldWaitsForIsRefusedWhole)
{
    expectError("Entry refused: AB");
    scanner({"#", "%", {Qt::Key_Tab}});
    hostButton();
    type("#AB%");
    key(Qt::Key_Tab);
    EXPECT_EQ(refused, QStringList{"AB"});
    EXPECT_EQ(presses, 0);
}

TEST_F(ScannerFilterTest, AnEmptyScanIsRefusedAndPressesNothing)
{
    expectError("Entry refused");
    scanner({"#", "%", {Qt::Key_Return}});
    hostButton();
    type("#%\n");
    EXPECT_EQ(refused, QStringList{""});
    EXPECT_EQ(presses, 0);
    EXPECT_EQ(operatorLines, QStringList{"Entry refused:  (the scan is empty)"});
}

TEST_F(ScannerFilterTest, APanelThatOpensWithinThePrefixGetsNothingOfIt)
{
    scanner({"##", {}, {Qt::Key_Return}});
    ask(0);
    type("#");
    ask(1);
    ASSERT_EQ(focused(), "1-SN") << "nothing was begun in the first field, so the second one took the focus";
    type("#AB\n");
    EXPECT_EQ(record("0").value("SN"), Value("AB"));
    EXPECT_FALSE(record("1").contains("SN"));
}

TEST_F(ScannerFilterTest, AScanWhoseFieldWentWithinThePrefixIsRefusedWhole)
{
    expectError("Entry refused: AB");
    scanner({"##", "%", {Qt::Key_Tab}});
    ask(0);
    type("#");
    plugin().interruptWaitingCalls();
    ASSERT_TRUE(waitForPanelGone("0"));
    plugin().acceptCalls();
    ask(1);
    type("#AB%");
    key(Qt::Key_Tab);
    EXPECT_EQ(refused, QStringList{"AB"});
    EXPECT_FALSE(record("1").contains("SN"));
    EXPECT_EQ(text("1-SN"), "");
    type("##C%");
    key(Qt::Key_Tab);
    EXPECT_EQ(record("1").value("SN"), Value("C")) << "the next scan is taken";
}

TEST_F(ScannerFilterTest, APanelThatOpensWhereNoneWasGetsNoScanThatHadBegunBefore)
{
    expectError("Entry refused: AB");
    scanner({"##", {}, {Qt::Key_Return}});
    type("#");
    ask(0);
    type("#AB\n");
    EXPECT_EQ(refused, QStringList{"AB"});
    EXPECT_EQ(text("0-SN"), "");
}

} // namespace
