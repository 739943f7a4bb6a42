#include "presentation/MouseTrackedTextField.h"

#include "platform/NotificationCenter.h"
#include "tests/support/Printing.h"
#include "tests/support/Wait.h"

#include <QImage>
#include <QTest>

#include <gtest/gtest.h>

using interactive::MouseTrackedTextField;
using platform::NotificationCenter;
using platform::Rect;
using platform::View;

namespace {

/// A window with two input fields, without a controller.
class MouseTrackedTextFieldTest : public ::testing::Test
{
protected:
    MouseTrackedTextFieldTest()
    {
        for (MouseTrackedTextField *each : {field, other}) {
            each->setEditable(true);
            each->setBordered(true);
            each->setDrawsBackground(true);
            root.addSubview(each);
        }
        NotificationCenter::defaultCenter().addObserver(
            &root, "TextFieldMouseDownNotification",
            [this](const platform::Notification &posted) { notifications.push_back(posted); });
    }
    void SetUp() override
    {
        root.show();
        root.activateWindow();
        ASSERT_TRUE(testsupport::waitUntil([&] { return root.isActiveWindow(); }));
        ASSERT_TRUE(other->becomeFirstResponder());
    }
    void click(View *view)
    {
        QTest::mouseClick(root.windowHandle(), Qt::LeftButton, {}, view->mapTo(&root, view->rect().center()));
    }

    View root{Rect(0.0, 0.0, 300.0, 100.0)};
    MouseTrackedTextField *field = new MouseTrackedTextField(Rect(10.0, 10.0, 100.0, 25.0));
    MouseTrackedTextField *other = new MouseTrackedTextField(Rect(10.0, 50.0, 100.0, 25.0));
    std::vector<platform::Notification> notifications;
};

TEST_F(MouseTrackedTextFieldTest, AClickIsTurnedIntoOneNotificationAboutTheField)
{
    click(field);
    ASSERT_EQ(notifications.size(), 1u);
    EXPECT_EQ(notifications[0].name, "TextFieldMouseDownNotification");
    EXPECT_EQ(notifications[0].object, field);
}

TEST_F(MouseTrackedTextFieldTest, AClickOnAReadOnlyFieldIsNotifiedToo)
{
    field->setEditable(false);
    click(field);
    ASSERT_EQ(notifications.size(), 1u);
    EXPECT_EQ(notifications[0].object, field);
}

TEST_F(MouseTrackedTextFieldTest, EveryClickIsNotified)
{
    click(field);
    click(field);
    click(other);
    ASSERT_EQ(notifications.size(), 3u);
    EXPECT_EQ(notifications[2].object, other);
}

TEST_F(MouseTrackedTextFieldTest, AClickTakesNoFocusByItself)
{
    click(field);
    EXPECT_FALSE(field->isFirstResponder());
    EXPECT_TRUE(other->isFirstResponder());
}

TEST_F(MouseTrackedTextFieldTest, AClickPlacesNoCursor)
{
    other->setStringValue("123456789");
    other->selectText();
    click(other);
    EXPECT_EQ(other->selectedText(), "123456789");
}

TEST_F(MouseTrackedTextFieldTest, AnObserverMayGiveTheFieldTheFocus)
{
    NotificationCenter::defaultCenter().addObserver(
        &root, interactive::TextFieldMouseDownNotification, [](const platform::Notification &posted) {
            qobject_cast<MouseTrackedTextField *>(posted.object)->becomeFirstResponder();
        });
    click(field);
    EXPECT_TRUE(field->isFirstResponder());
}

TEST_F(MouseTrackedTextFieldTest, TheFieldTakesTheFocusWhenAskedTo)
{
    EXPECT_TRUE(field->becomeFirstResponder());
    EXPECT_TRUE(field->isFirstResponder());
}

TEST_F(MouseTrackedTextFieldTest, SystemAndPanelAreUnknownUntilTheyAreSet)
{
    EXPECT_FALSE(field->systemIndex().isValid());
    EXPECT_TRUE(field->parentIdentifier().isNull());
    const platform::Identifier panel("G1");
    field->setSystemIndex(3);
    field->setParentIdentifier(panel);
    EXPECT_EQ(field->systemIndex(), platform::Value(3));
    EXPECT_TRUE(field->parentIdentifier().isSameInstance(panel));
}

TEST_F(MouseTrackedTextFieldTest, TheFieldLooksLikeAnyTextField)
{
    const auto picture = [](platform::TextField &shown) {
        shown.setStringValue("S1");
        shown.setBordered(true);
        shown.setDrawsBackground(true);
        QImage image(100, 25, QImage::Format_ARGB32);
        image.fill(Qt::white);
        shown.render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    };
    platform::TextField plain(Rect(0.0, 0.0, 100.0, 25.0));
    MouseTrackedTextField tracked(Rect(0.0, 0.0, 100.0, 25.0));
    EXPECT_EQ(picture(tracked), picture(plain));
}

TEST_F(MouseTrackedTextFieldTest, AClickOnADisabledFieldIsNotifiedToo)
{
    field->setEnabled(false);
    click(field);
    ASSERT_EQ(notifications.size(), 1u);
    EXPECT_EQ(notifications[0].object, field);
}

TEST_F(MouseTrackedTextFieldTest, BothPressesOfADoubleClickAreNotified)
{
    for (const bool enabled : {true, false}) {
        notifications.clear();
        field->setEnabled(enabled);
        QTest::mouseDClick(root.windowHandle(), Qt::LeftButton, {},
                           field->mapTo(&root, field->rect().center()));
        EXPECT_EQ(notifications.size(), 2u) << (enabled ? "enabled" : "disabled");
    }
}

TEST_F(MouseTrackedTextFieldTest, ADisabledFieldDoesNotTakeTheFocus)
{
    field->setEnabled(false);
    EXPECT_FALSE(field->becomeFirstResponder());
    EXPECT_TRUE(other->isFirstResponder());
}

} // namespace
