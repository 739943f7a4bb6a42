#include "platform/Button.h"
#include "platform/TextField.h"
#include "plugin/LoopControls.h"
#include "presentation/MouseTrackedTextField.h"
#include "presentation/VerticallyCenteredTextFieldCell.h"
#include "tests/support/PluginFixture.h"

#include <QLayout>
#include <QLineEdit>

#include <memory>

using platform::Color;
using platform::Dictionary;
using platform::Font;
using platform::Rect;
using platform::TextField;

namespace {

/// The "Loop:" caption and its number field in the corner of the plug-in's view.
class LoopFieldTest : public testsupport::PluginFixture
{
protected:
    TextField *caption()
    {
        for (platform::View *view : rootView()->subviews()) {
            auto *label = qobject_cast<TextField *>(view);
            if (label && label->stringValue() == "Loop:")
                return label;
        }
        return nullptr;
    }

    Dictionary loopRecord() { return plugin().savedData().value("Loop").toMap(); }

    /// What an operator does who wants another number of passes.
    void enter(const QString &text)
    {
        click(loopField());
        loopField()->selectText();
        scan(text);
    }
};

TEST_F(LoopFieldTest, TheCaptionStandsInTheTopLeftCorner)
{
    TextField *label = caption();
    ASSERT_NE(label, nullptr);
    const double height = rootView()->bounds().height();
    EXPECT_EQ(label->frame(), Rect(16.0, height - 30.0, 80.0, 22.5));
    EXPECT_EQ(label->font(), Font::system(12.0));
    EXPECT_FALSE(label->isBordered());
    EXPECT_FALSE(label->isEditable());
    EXPECT_EQ(label->autoresizingMask(), 12U);
    EXPECT_TRUE(label->drawsBackground());
    EXPECT_EQ(label->backgroundColor(), Color::clear());
}

TEST_F(LoopFieldTest, TheNumberFieldStandsBesideItAndShowsZero)
{
    TextField *field = loopField();
    ASSERT_NE(qobject_cast<interactive::MouseTrackedTextField *>(field), nullptr);
    const double height = rootView()->bounds().height();
    EXPECT_EQ(field->frame(), Rect(80.0, height - 26.0, 80.0, 22.5));
    EXPECT_EQ(field->superview(), rootView());
    EXPECT_EQ(field->stringValue(), "0");
    EXPECT_EQ(field->identifier().text(), "Loop");
    EXPECT_EQ(field->font(), Font::system(12.0));
    EXPECT_TRUE(field->isBordered());
    EXPECT_TRUE(field->isEditable());
    EXPECT_EQ(field->autoresizingMask(), 12U);
    EXPECT_TRUE(field->drawsBackground());
    EXPECT_EQ(field->backgroundColor(), Color::white());
    EXPECT_EQ(field->target(), &plugin());
    EXPECT_EQ(field->actionSelector(), "configLoop:");
}

TEST_F(LoopFieldTest, TheNumberFieldHasABezeledVerticallyCenteredCell)
{
    const platform::TextFieldCell &cell = loopField()->cell();
    EXPECT_NE(dynamic_cast<const interactive::VerticallyCenteredTextFieldCell *>(&cell), nullptr);
    EXPECT_TRUE(cell.isBezeled());
    EXPECT_EQ(static_cast<int>(cell.bezelStyle()), 0);
}

TEST_F(LoopFieldTest, BothKeepTheirDistanceToTheTopLeftCornerWhenTheWindowGrows)
{
    start();
    window().resize(1400, 900);
    window().layout()->activate();
    EXPECT_EQ(caption()->frame(), Rect(16.0, 870.0, 80.0, 22.5));
    EXPECT_EQ(loopField()->frame(), Rect(80.0, 874.0, 80.0, 22.5));
}

TEST_F(LoopFieldTest, TypingANumberSetsTheMaximumAndTurnsLoopModeOn)
{
    enter("9");
    plugin().isLoopFinished(0, nullptr);
    plugin().isLoopFinished(1, nullptr);
    ASSERT_EQ(loopRecord(), (Dictionary{{"LoopMax", 9}, {"LoopCount_0", 1}, {"LoopCount_1", 1}}));
    enter("5");
    EXPECT_EQ(loopRecord(), (Dictionary{{"LoopMax", 5}, {"LoopCount_0", 0}, {"LoopCount_1", 0}}));
    EXPECT_TRUE(plugin().isLoopEnabled());
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Default, "-[InteractiveView configLoop:]: viewIdentifier Loop value: 5"));
}

TEST_F(LoopFieldTest, TypingNoNumberGivesZeroAndTurnsLoopModeOff)
{
    enter("5");
    enter("abc");
    EXPECT_EQ(loopRecord().value("LoopMax"), platform::Value(0));
    EXPECT_FALSE(plugin().isLoopEnabled());
    EXPECT_EQ(loopField()->stringValue(), "abc");
}

TEST_F(LoopFieldTest, LoopModeIsOnFromTwoPasses)
{
    enter("2");
    EXPECT_TRUE(plugin().isLoopEnabled());
    enter("1");
    EXPECT_FALSE(plugin().isLoopEnabled());
    enter("-3");
    EXPECT_FALSE(plugin().isLoopEnabled());
}

TEST_F(LoopFieldTest, AnswersStayWhenANumberIsEntered)
{
    answerGroup(0, {"S1"}, {"A"});
    enter("2");
    EXPECT_EQ(record("G1"), (Dictionary{{"S1", "A"}, {"clickedButton", "Pass"}}));
}

TEST_F(LoopFieldTest, AfterTheEntryTheInsertionPointStandsBehindTheNumber)
{
    click(loopField());
    loopField()->selectText();
    type("12");
    QLineEdit *editor = loopField()->currentEditor();
    ASSERT_NE(editor, nullptr);
    editor->setSelection(0, 1);
    type("\n");
    EXPECT_EQ(loopField()->selectedText(), "");
    EXPECT_EQ(editor->cursorPosition(), 2);
}

TEST_F(LoopFieldTest, TheCaptionIsAPlainLabelWithoutAName)
{
    TextField *label = caption();
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(qobject_cast<interactive::MouseTrackedTextField *>(label), nullptr);
    EXPECT_TRUE(label->identifier().isNull());
    EXPECT_EQ(label->superview(), rootView());
}

TEST_F(LoopFieldTest, AnEmptyEntryGivesZeroAndTurnsLoopModeOff)
{
    enter("5");
    loopField()->setStringValue("");
    enter("");
    EXPECT_EQ(loopRecord().value("LoopMax"), platform::Value(0));
    EXPECT_FALSE(plugin().isLoopEnabled());
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Default, "-[InteractiveView configLoop:]: viewIdentifier Loop value: "));
}

TEST_F(LoopFieldTest, AStationWithoutGroupsHasAMaximumAndNoCounts)
{
    station.systemGroups = platform::Array{};
    station.systemSlots = platform::Array{};
    enter("4");
    EXPECT_EQ(loopRecord(), (Dictionary{{"LoopMax", 4}}));
}

/// What the field's action does with whoever sends it, and the field in surroundings of any kind.
class LoopControlsTest : public ::testing::Test
{
protected:
    testsupport::LogRecorder log;
    interactive::StationMap station;
    interactive::PanelRecords records;
    interactive::SlotStates slotStates;
    interactive::PanelSettings settings;
    interactive::PanelViews views{station};
    interactive::Focus focus{station, records, slotStates, views, settings};
    interactive::LoopControls controls{station, records, views, focus};
};

TEST_F(LoopControlsTest, AnotherSenderIsRefused)
{
    testsupport::expectError("Invalid call for -[InteractiveView configLoop:]");
    platform::Button button;
    controls.configLoop(&button);
    EXPECT_EQ(log.count(KVKLogLevel::Error, "Invalid call for -[InteractiveView configLoop:] from sender: "
                                            "<Button: (null)>"),
              1);
    EXPECT_FALSE(records.all().contains("Loop"));
}

TEST_F(LoopControlsTest, APlainTextFieldIsRefusedToo)
{
    testsupport::expectError("Invalid call for -[InteractiveView configLoop:]");
    TextField plain;
    plain.setIdentifier(platform::Identifier("Loop"));
    plain.setStringValue("3");
    controls.configLoop(&plain);
    EXPECT_EQ(log.count(KVKLogLevel::Error, "Invalid call for -[InteractiveView configLoop:] from sender: "
                                            "<TextField: Loop>"),
              1);
    EXPECT_FALSE(records.isLoopEnabled());
}

TEST_F(LoopControlsTest, NoSenderIsRefusedToo)
{
    testsupport::expectError("Invalid call for -[InteractiveView configLoop:]");
    controls.configLoop(nullptr);
    EXPECT_EQ(
        log.count(KVKLogLevel::Error, "Invalid call for -[InteractiveView configLoop:] from sender: (null)"),
        1);
}

TEST_F(LoopControlsTest, WithoutARootViewTheFieldIsMadeAsIfItHadNoHeight)
{
    controls.setupLoopButton(nullptr);
    const std::unique_ptr<TextField> field(controls.loopNumberField());
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->frame(), Rect(80.0, -26.0, 80.0, 22.5));
    EXPECT_EQ(field->superview(), nullptr);
}

} // namespace
