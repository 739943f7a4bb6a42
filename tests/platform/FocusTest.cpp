#include "platform/Button.h"
#include "tests/platform/ViewFixture.h"

#include <QApplication>
#include <QLineEdit>

namespace {

using namespace platform;

/// A field that has the focus inside a panel, and another one that Qt would move the focus to.
class FocusTest : public testsupport::ViewFixture
{
protected:
    FocusTest()
    {
        field->setEditable(true);
        EXPECT_TRUE(field->becomeFirstResponder());
    }

    void expectNobodyHasTheFocus()
    {
        EXPECT_FALSE(field->isFirstResponder());
        EXPECT_FALSE(other->isFirstResponder());
        type("x");
        EXPECT_EQ(field->stringValue(), "");
        EXPECT_EQ(other->stringValue(), "");
    }

    View *panel = add({0, 0, 200, 100});
    TextField *field = add<TextField>({10, 10, 100, 25}, panel);
    TextField *other = addField({10, 200, 100, 25});
};

TEST_F(FocusTest, AHiddenFieldLeavesNobodyWithTheFocus)
{
    field->setHidden(true);
    expectNobodyHasTheFocus();
}

TEST_F(FocusTest, ADisabledFieldLeavesNobodyWithTheFocus)
{
    field->setEnabled(false);
    expectNobodyHasTheFocus();
}

TEST_F(FocusTest, AHiddenPanelLeavesNobodyWithTheFocus)
{
    panel->setHidden(true);
    expectNobodyHasTheFocus();
}

TEST_F(FocusTest, APanelHiddenAsAWidgetLeavesNobodyWithTheFocus)
{
    static_cast<QWidget *>(panel)->hide();
    expectNobodyHasTheFocus();
}

TEST_F(FocusTest, ADisabledPanelLeavesNobodyWithTheFocus)
{
    panel->setEnabled(false);
    expectNobodyHasTheFocus();
}

TEST_F(FocusTest, ARemovedPanelLeavesNobodyWithTheFocus)
{
    panel->removeFromSuperview();
    expectNobodyHasTheFocus();
    settle();
    EXPECT_FALSE(other->isFirstResponder());
}

TEST_F(FocusTest, ARemovedFieldLeavesNobodyWithTheFocus)
{
    field->removeFromSuperview();
    expectNobodyHasTheFocus();
}

TEST_F(FocusTest, ADeletedPanelLeavesNobodyWithTheFocus)
{
    delete panel;
    EXPECT_FALSE(other->isFirstResponder());
    type("x");
    EXPECT_EQ(other->stringValue(), "");
}

TEST_F(FocusTest, AFieldMadeReadOnlyLeavesNobodyWithTheFocus)
{
    field->setEditable(false);
    settle();
    expectNobodyHasTheFocus();
}

TEST_F(FocusTest, HidingAnotherPanelLeavesTheFocusWhereItIs)
{
    View *unrelated = add({200, 0, 100, 100});
    unrelated->setHidden(true);
    unrelated->setEnabled(false);
    unrelated->removeFromSuperview();
    EXPECT_TRUE(field->isFirstResponder());
}

TEST_F(FocusTest, NobodyHasTheFocusStillWhenTheWindowBecomesActiveAgain)
{
    field->setHidden(true);
    QWidget elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    ASSERT_TRUE(testsupport::waitUntil([&] { return elsewhere.isActiveWindow(); }));
    elsewhere.close();
    window.activateWindow();
    ASSERT_TRUE(testsupport::waitUntil([&] { return window.isActiveWindow(); }));
    expectNobodyHasTheFocus();
}

TEST_F(FocusTest, AFieldKeepsTheFocusOfItsWindowWhileAnotherWindowIsActive)
{
    QWidget elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    ASSERT_TRUE(testsupport::waitUntil([&] { return elsewhere.isActiveWindow(); }));
    EXPECT_TRUE(field->isFirstResponder());
    EXPECT_TRUE(other->becomeFirstResponder());
    EXPECT_FALSE(field->isFirstResponder());
}

TEST_F(FocusTest, APanelHiddenWhileAnotherWindowIsActiveLeavesNobodyWithTheFocus)
{
    QWidget elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    ASSERT_TRUE(testsupport::waitUntil([&] { return elsewhere.isActiveWindow(); }));
    panel->setHidden(true);
    elsewhere.close();
    window.activateWindow();
    ASSERT_TRUE(testsupport::waitUntil([&] { return window.isActiveWindow(); }));
    expectNobodyHasTheFocus();
}

TEST_F(FocusTest, ADisabledFieldRefusesAndTheFocusStays)
{
    other->setEnabled(false);
    EXPECT_FALSE(other->becomeFirstResponder());
    EXPECT_TRUE(field->isFirstResponder());
}

TEST_F(FocusTest, AHiddenFieldRefusesAndTheFocusStays)
{
    other->setHidden(true);
    EXPECT_FALSE(other->becomeFirstResponder());
    EXPECT_TRUE(field->isFirstResponder());
}

TEST_F(FocusTest, AFieldInAHiddenPanelRefusesAndTheFocusStays)
{
    other->becomeFirstResponder();
    panel->setHidden(true);
    EXPECT_FALSE(field->becomeFirstResponder());
    EXPECT_TRUE(other->isFirstResponder());
}

TEST_F(FocusTest, AFieldWithoutAWindowRefuses)
{
    View detached(Rect(0, 0, 100, 100));
    auto *inner = add<TextField>({0, 0, 50, 20}, &detached);
    inner->setEditable(true);
    EXPECT_FALSE(inner->becomeFirstResponder());
    EXPECT_FALSE(inner->isFirstResponder());
    field->removeFromSuperview();
    EXPECT_FALSE(field->becomeFirstResponder());
}

TEST_F(FocusTest, APlainViewRefusesAndTheFocusStays)
{
    EXPECT_FALSE(panel->becomeFirstResponder());
    EXPECT_TRUE(field->isFirstResponder());
}

TEST_F(FocusTest, AReadOnlyFieldTakesTheFocusWhenAsked)
{
    other->setEditable(false);
    EXPECT_TRUE(other->becomeFirstResponder());
    EXPECT_TRUE(other->isFirstResponder());
    EXPECT_EQ(other->currentEditor(), nullptr);
}

TEST_F(FocusTest, AFieldMadeEditableKeepsTheFocus)
{
    other->setEditable(false);
    other->becomeFirstResponder();
    other->setEditable(true);
    type("x");
    EXPECT_EQ(other->stringValue(), "x");
}

TEST_F(FocusTest, AShownWindowKeepsTheFocusOverHidingAndShowingIt)
{
    View top(Rect(0, 0, 200, 100));
    auto *inner = add<TextField>({0, 0, 50, 20}, &top);
    inner->setEditable(true);
    top.show();
    ASSERT_TRUE(inner->becomeFirstResponder());
    top.setHidden(true);
    top.setHidden(false);
    EXPECT_TRUE(inner->isFirstResponder());
}

TEST_F(FocusTest, TabGoesToTheNextKeyView)
{
    TextField *last = addField({10, 250, 100, 25});
    field->setNextKeyView(last);
    EXPECT_EQ(field->nextKeyView(), last);
    press(Qt::Key_Tab);
    EXPECT_TRUE(last->isFirstResponder());
}

TEST_F(FocusTest, TabReachesNoLabel)
{
    auto *label = add<TextField>({150, 200, 100, 25});
    label->setStringValue("label");
    TextField *last = addField({10, 250, 100, 25});
    press(Qt::Key_Tab);
    EXPECT_TRUE(last->isFirstResponder());
}

TEST_F(FocusTest, AClickOnAFieldPutsTheFocusThere)
{
    click(other);
    EXPECT_TRUE(other->isFirstResponder());
}

TEST_F(FocusTest, AClickOnALabelLeavesTheFocusWhereItIs)
{
    auto *label = add<TextField>({150, 200, 100, 25});
    label->setStringValue("label");
    click(label);
    EXPECT_TRUE(field->isFirstResponder());
}

TEST_F(FocusTest, AClickOnAButtonLeavesTheFocusWhereItIs)
{
    click(add<Button>({150, 200, 100, 30}));
    EXPECT_TRUE(field->isFirstResponder());
}

} // namespace
