#include "platform/Button.h"
#include "platform/ChoiceList.h"
#include "platform/TextField.h"
#include "presentation/TimeBar.h"
#include "tests/support/AccessibleWalk.h"
#include "tests/support/PanelKinds.h"

#include <QAccessible>
#include <QTest>

#include <gmock/gmock.h>

using platform::Array;
using platform::Dictionary;
using ::testing::Contains;
using ::testing::IsSupersetOf;
using testsupport::accessibilityFaults;
using testsupport::spokenIn;

namespace {

/// What assistive technology is told of each kind of panel.
class SpokenPanelsTest : public testsupport::PanelKindsFixture
{
protected:
    std::vector<std::string> spoken()
    {
        std::vector<std::string> lines;
        for (const QString &line : spokenIn(&window()))
            lines.push_back(line.toStdString());
        return lines;
    }
    void expectNoFaults() { EXPECT_EQ(accessibilityFaults(&window()), QStringList()); }
    static QAccessibleInterface *interfaceOf(QObject *object)
    {
        return QAccessible::queryAccessibleInterface(object);
    }
    QString description(const QString &identifier)
    {
        return interfaceOf(field(identifier)->focusTarget())->text(QAccessible::Description);
    }
};

class SpokenPanel : public SpokenPanelsTest, public ::testing::WithParamInterface<testsupport::PanelKind>
{};

TEST_P(SpokenPanel, HasANameAndARoleForEveryControlAndText)
{
    open(GetParam());
    expectNoFaults();
}

INSTANTIATE_TEST_SUITE_P(, SpokenPanel, ::testing::ValuesIn(testsupport::panelKinds()),
                         testsupport::nameOfKind);

TEST_F(SpokenPanelsTest, ASlotsPanelSaysWhoseItIs)
{
    open({"", false, {{"input", Array{"SN"}}, {"button", Array{"Clear", "OK"}}}});
    EXPECT_THAT(spoken(),
                IsSupersetOf({"Grouping: Slot S1, group G1", "EditableText: SN, slot S1, group G1",
                              "Button: Clear, slot S1, group G1", "Button: OK, slot S1, group G1"}));
}

TEST_F(SpokenPanelsTest, AGroupsPanelSaysWhoseEachControlIs)
{
    open({"", true, {{"input", Array{"S1", "S2"}}}, {"A1"}});
    EXPECT_THAT(spoken(), IsSupersetOf({"Grouping: Group G1", "Heading: G1", "Grouping: Slot S2, group G1",
                                        "StaticText: SN, slot S1, group G1: A1",
                                        "StaticText: SN, slot S2, group G1", "EditableText: SN, group G1",
                                        "CheckBox: Use, slot S1, group G1", "Button: OK, group G1"}));
}

TEST_F(SpokenPanelsTest, ASwitchSaysWhetherItIsOn)
{
    open({"", true, {{"switch", Array{"S1"}}}});
    for (platform::View *view : testsupport::descendants(rootView())) {
        auto *button = qobject_cast<platform::Button *>(view);
        if (!button || button->identifier().text() != "G1-100-S1")
            continue;
        EXPECT_TRUE(interfaceOf(button->focusTarget())->state().checked);
        click(button);
        EXPECT_FALSE(interfaceOf(button->focusTarget())->state().checked);
        return;
    }
    FAIL() << "no switch";
}

TEST_F(SpokenPanelsTest, WhatStandsAboveThePanelsHasNamesToo)
{
    start();
    EXPECT_THAT(spoken(), IsSupersetOf({"EditableText: Loop: number of passes", "CheckBox: Group G1",
                                        "CheckBox: Group G2"}));
    expectNoFaults();
}

TEST_F(SpokenPanelsTest, AFieldSaysWhatIsAskedForAndWhyItWasRefused)
{
    open({"", false, {{"input", Array{"SN"}}, {"length", "8"}, {"hint", "On the label"}}});
    EXPECT_EQ(description("0-SN"), "On the label; 8 characters");
    expectError("Invalid input");
    scan("A1");
    EXPECT_EQ(description("0-SN"), field("0-StatusLine")->stringValue() + "; On the label; 8 characters");
    scan("A1234567");
    EXPECT_EQ(description("0-SN"), "On the label; 8 characters");
}

TEST_F(SpokenPanelsTest, AFieldForANumberSaysItsRange)
{
    open({"", false, {{"input", Array{"U"}}, {"number", Dictionary{{"min", 3}, {"max", 5}, {"unit", "V"}}}}});
    EXPECT_EQ(description("0-U"), "3 to 5 V");
}

TEST_F(SpokenPanelsTest, AFieldThatIsOffIsToldAsOff)
{
    open({"", true, {{"input", Array{"S1", "S2"}}}});
    field("G1-S1")->setEnabled(false);
    EXPECT_TRUE(interfaceOf(field("G1-S1"))->state().disabled);
}

TEST_F(SpokenPanelsTest, AnErrorPanelIsAnAlertWithAButton)
{
    open({"SlotError", false, {{"input", Array{"A", "B"}}}});
    const std::vector<std::string> all = spoken();
    EXPECT_THAT(all, Contains("Button: OK, error on G1"));
    EXPECT_THAT(all, Contains(::testing::StartsWith("AlertMessage: ")));
    EXPECT_THAT(all, Contains(::testing::StartsWith("Grouping: Error: ")));
}

TEST_F(SpokenPanelsTest, AnOpenListAndItsEntriesHaveNames)
{
    open({"", false, {{"input", Array{"Colour"}}, {"choices", Array{"Red", "Green"}}}});
    QTest::keyClick(window().windowHandle(), Qt::Key_Down);
    auto *list = window().findChild<platform::ChoiceList *>();
    ASSERT_TRUE(list && list->isVisible());
    expectNoFaults();
    EXPECT_THAT(spoken(), IsSupersetOf({"List: Colour, slot S1, group G1", "ListItem: Red", "ListItem: Green",
                                        "ComboBox: Colour, slot S1, group G1"}));
}

TEST_F(SpokenPanelsTest, TheTimeThatIsLeftIsAProgress)
{
    open({"", false, {{"input", Array{"SN"}}, {"timeLimit", 3600}}});
    EXPECT_THAT(spoken(), Contains(::testing::StartsWith("ProgressBar: Time left: ")));
}

/// The guard itself: what has no name is found.
TEST(AccessibleWalk, FindsAButtonWithoutANameAndATextWithoutARole)
{
    QWidget top;
    auto *named = new platform::Button(&top);
    named->setFrame({0, 0, 80, 30});
    named->setTitle("OK");
    top.show();
    EXPECT_EQ(accessibilityFaults(&top).size(), 0);
    named->setTitle(QString());
    EXPECT_EQ(accessibilityFaults(&top).size(), 1);
}

} // namespace
