#include "platform/TextField.h"
#include "tests/support/FieldKeys.h"

#include <QAccessible>
#include <QLineEdit>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <private/qguiapplication_p.h>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

/// What assistive technology was told at once: the name of what raised an alert, or its description.
QStringList alerts;

void noteAlert(QAccessibleEvent *event)
{
    if (event->type() != QAccessible::Alert)
        return;
    const QAccessibleInterface *source = event->accessibleInterface();
    const QString name = source->text(QAccessible::Name);
    alerts.append(source->role() == QAccessible::AlertMessage ? name
                                                              : source->text(QAccessible::Description));
}

class RefusalToldTest : public testsupport::FieldKeysFixture
{
protected:
    RefusalToldTest()
    {
        alerts.clear();
        listen(true);
        QAccessible::installUpdateHandler(noteAlert);
    }
    ~RefusalToldTest() override
    {
        QAccessible::installUpdateHandler(nullptr);
        listen(false);
    }
    /// As if a screen reader had connected itself, or gone: without one nothing is raised.
    static void listen(bool listening)
    {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(listening);
    }

    static QAccessibleInterface *interfaceOf(QObject *object)
    {
        return QAccessible::queryAccessibleInterface(object);
    }
    /// What is said about the field that has the focus.
    QString saidOf(const QString &identifier)
    {
        return interfaceOf(field(identifier)->focusTarget())->text(QAccessible::Description);
    }
};

struct Kind
{
    const char *name;
    Dictionary config;
    QString entry;
    QString told;
    QString asked{}; ///< What is said about the field all the time.
};

class RefusalKind : public RefusalToldTest, public ::testing::WithParamInterface<Kind>
{};

TEST_P(RefusalKind, IsToldOnThePanelAndToAssistiveTechnology)
{
    expectError("Invalid input");
    Dictionary config = GetParam().config;
    config.insert("input", Array{"SN"});
    config.insert("button", Array{"Clear", "OK"});
    showView(0, config);
    ASSERT_TRUE(waitForPanel("0"));
    scan(GetParam().entry);
    EXPECT_EQ(told("0"), GetParam().told);
    EXPECT_EQ(interfaceOf(field("0-StatusLine"))->text(QAccessible::Name), GetParam().told);
    const QString asked = GetParam().asked;
    EXPECT_EQ(saidOf("0-SN"), asked.isEmpty() ? GetParam().told : GetParam().told + "; " + asked);
    EXPECT_EQ(alerts, QStringList{GetParam().told});
    press("0", "Clear");
    EXPECT_EQ(told("0"), "");
    EXPECT_EQ(saidOf("0-SN"), asked);
}

INSTANTIATE_TEST_SUITE_P(
    Each, RefusalKind,
    ::testing::Values(Kind{"Length",
                           {{"length", 3}, {"hint", "Three"}},
                           "AB",
                           "Three (it has 2 characters instead of 3)",
                           "Three; 3 characters"},
                      Kind{"Pattern",
                           {{"pattern", "[0-9]+"}},
                           "AB",
                           "\"AB\" is refused: it does not have the form that is asked for"},
                      Kind{"Number",
                           {{"number", Dictionary{{"max", 5}}}},
                           "6",
                           "\"6\" is refused: it must be at most 5",
                           "at most 5"},
                      Kind{"Choices",
                           {{"choices", Array{"Red", "Rose"}}},
                           "R",
                           "\"R\" is refused: it fits 2 of the choices"}),
    [](const ::testing::TestParamInfo<Kind> &kind) { return kind.param.name; });

TEST_F(RefusalToldTest, ADuplicateIsToldAndTakenBackByTheNextEntry)
{
    expectError("Invalid input");
    expectError("Duplicated input detected");
    showGroup(0, {{"input", Array{"S1", "S2"}}, {"hint", "Each board once"}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    scan("A");
    const QString why = "Each board once (it was given before)";
    EXPECT_EQ(told("G1"), why);
    EXPECT_EQ(saidOf("G1-SharedInput"), why + "; Each board once");
    EXPECT_EQ(alerts, QStringList{why});
    scan("B");
    EXPECT_EQ(told("G1"), "");
    EXPECT_EQ(saidOf("G1-SharedInput"), "Each board once");
    EXPECT_EQ(alerts.size(), 1);
}

TEST_F(RefusalToldTest, WithoutAStatusLineTheFieldItselfIsSaidToBeRefused)
{
    expectError("Invalid input");
    showView(0, {{"input", Array{"SN"}}, {"length", 3}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("AB");
    const QString why = "\"AB\" is refused: it has 2 characters instead of 3";
    EXPECT_EQ(saidOf("0-SN"), why + "; 3 characters");
    EXPECT_EQ(alerts, QStringList{why + "; 3 characters"});
}

TEST_F(RefusalToldTest, AnEntryThatTheFieldCannotHoldIsToldToo)
{
    expectError("Entry refused");
    showView(0, {{"input", Array{"SN"}}, {"hint", "Short"}});
    ASSERT_TRUE(waitForPanel("0"));
    scan(QString(platform::TextField::MaximumEntryLength + 1, QLatin1Char('9')));
    EXPECT_TRUE(told("0").endsWith("is refused: longer than 4096 characters"));
    EXPECT_EQ(saidOf("0-SN"), told("0") + "; Short");
}

TEST_F(RefusalToldTest, AFieldWithChoicesIsAComboBoxWithAName)
{
    showView(0, {{"input", Array{"Colour"}}, {"choices", Array{"Red", "Green"}}});
    ASSERT_TRUE(waitForPanel("0"));
    QAccessibleInterface *box = interfaceOf(field("0-Colour"));
    EXPECT_EQ(box->role(), QAccessible::ComboBox);
    EXPECT_EQ(box->text(QAccessible::Name), "Colour, slot S1, group G1");
    EXPECT_TRUE(box->state().expandable);
    EXPECT_FALSE(box->state().expanded);
    EXPECT_EQ(interfaceOf(field("0-Colour")->focusTarget())->text(QAccessible::Name),
              "Colour, slot S1, group G1");
    box->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    ASSERT_NE(openList(), nullptr);
    EXPECT_TRUE(box->state().expanded);
    EXPECT_EQ(interfaceOf(openList())->text(QAccessible::Name), "Colour, slot S1, group G1");
    scan("Red");
    EXPECT_EQ(box->text(QAccessible::Value), "Red");
}

} // namespace
