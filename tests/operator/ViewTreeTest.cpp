#include "station/operator/ViewTree.h"

#include "tests/operator/OperatorFixture.h"

using platform::Box;
using platform::Button;
using platform::Color;
using platform::Dictionary;
using platform::Font;
using platform::Rect;
using platform::TextAlignment;
using platform::TextField;
using platform::View;

namespace {

class ViewTree : public testsupport::OperatorFixture
{
protected:
    static Dictionary color(double red, double green, double blue, double alpha)
    {
        return {{"red", red}, {"green", green}, {"blue", blue}, {"alpha", alpha}};
    }
};

} // namespace

TEST_F(ViewTree, PlainViewHasItsFrameExactlyAndNothingThatDoesNotApply)
{
    auto *view = new View(Rect(0.25, 10.5, 100.125, 20.0625));
    view->setTag(103);
    root->addSubview(view);
    const Dictionary fields = station::viewTree(view);
    EXPECT_EQ(fields.value("class"), "View");
    EXPECT_EQ(fields.value("frame").toMap(),
              (Dictionary{{"x", 0.25}, {"y", 10.5}, {"width", 100.125}, {"height", 20.0625}}));
    EXPECT_EQ(fields.value("tag"), 103);
    EXPECT_EQ(fields.keys(),
              QStringList({"children", "class", "enabled", "focused", "frame", "hidden", "tag"}));
}

TEST_F(ViewTree, FieldTellsTextColoursFontAndAlignment)
{
    TextField *target = field(split, {10, 300, 200, 25}, "G1-S2");
    target->setStringValue("SN1");
    target->setFont(Font::boldSystem(14.4));
    target->setTextColor({1.0, 0.0, 0.0, 0.5});
    target->setDrawsBackground(true);
    target->setBackgroundColor(Color::white().withAlphaComponent(0.6));
    target->setAlignment(TextAlignment::Center);
    const Dictionary fields = station::viewTree(target);
    EXPECT_EQ(fields.value("class"), "TextField");
    EXPECT_EQ(fields.value("identifier"), "G1-S2");
    EXPECT_EQ(fields.value("text"), "SN1");
    EXPECT_EQ(fields.value("editable"), true);
    EXPECT_EQ(fields.value("fontSize"), 14.4);
    EXPECT_EQ(fields.value("bold"), true);
    EXPECT_EQ(fields.value("alignment"), 2);
    EXPECT_EQ(fields.value("textColor").toMap(), color(1.0, 0.0, 0.0, 0.5));
    EXPECT_EQ(fields.value("background").toMap(), color(1.0, 1.0, 1.0, 0.6));
    EXPECT_FALSE(fields.contains("state"));
}

TEST_F(ViewTree, FieldWithoutABackgroundHasNone)
{
    EXPECT_FALSE(station::viewTree(field(split, {10, 300, 200, 25}, "f")).contains("background"));
}

TEST_F(ViewTree, SwitchTellsItsState)
{
    Button *target = switchButton(split, {10, 10, 30, 30}, "G1-101-S2");
    EXPECT_EQ(station::viewTree(target).value("state"), 1);
    target->setState(Button::Off);
    EXPECT_EQ(station::viewTree(target).value("state"), 0);
}

TEST_F(ViewTree, PushButtonTellsItsTitleAndNoState)
{
    const Dictionary fields = station::viewTree(button(split, {10, 10, 80, 30}, "Cancel"));
    EXPECT_EQ(fields.value("class"), "Button");
    EXPECT_EQ(fields.value("text"), "Cancel");
    EXPECT_FALSE(fields.contains("state"));
    EXPECT_FALSE(fields.contains("editable"));
}

TEST_F(ViewTree, BoxTellsItsFillAndHoldsItsContentView)
{
    Box *box = tile("3");
    box->setFillColor(Color::standardRed().withAlphaComponent(0.3));
    const Dictionary fields = station::viewTree(box);
    EXPECT_EQ(fields.value("background").toMap(), color(1.0, 0.0, 0.0, 0.3));
    ASSERT_EQ(fields.value("children").toList().size(), 1);
    EXPECT_EQ(fields.value("children").toList().first().toMap().value("identifier"), "3");
}

TEST_F(ViewTree, LayerColourIsTheBackgroundOfAPlainView)
{
    auto *line = new View(Rect(0, 0, 10, 1));
    line->setLayerBackgroundColor(Color::lightGray());
    root->addSubview(line);
    EXPECT_EQ(station::viewTree(line).value("background").toMap(),
              color(2.0 / 3.0, 2.0 / 3.0, 2.0 / 3.0, 1.0));
}

TEST_F(ViewTree, TellsWhatIsHiddenDisabledAndFocused)
{
    TextField *target = field(split, {10, 300, 200, 25}, "f");
    target->becomeFirstResponder();
    EXPECT_EQ(station::viewTree(target).value("focused"), true);
    EXPECT_EQ(station::viewTree(target).value("hidden"), false);
    EXPECT_EQ(station::viewTree(target).value("enabled"), true);
    target->setEnabled(false);
    target->setHidden(true);
    EXPECT_EQ(station::viewTree(target).value("focused"), false);
    EXPECT_EQ(station::viewTree(target).value("hidden"), true);
    EXPECT_EQ(station::viewTree(target).value("enabled"), false);
}

TEST_F(ViewTree, ScriptGetsThePluginsViewWithoutAnIdentifier)
{
    runs("local t = operator.tree()\n"
         "assert(t.identifier == 'root' and t.class == 'View', t.identifier)\n"
         "assert(t.frame.width == 800 and t.frame.height == 600)\n"
         "assert(t.children[1].class == 'ScrollView')");
}

TEST_F(ViewTree, ScriptGetsTheFirstViewWithAnIdentifier)
{
    groupPanel("G1");
    field(split, {10.25, 300, 200, 25}, "G1-S1")->setStringValue("abc");
    runs("local f = operator.tree('G1-S1')\n"
         "assert(f.text == 'abc' and f.editable == true and f.frame.x == 10.25)\n"
         "assert(#f.children == 0)\n"
         "local p = operator.tree('G1')\n"
         "assert(p.children[1].identifier == 'Pass' and p.children[1].text == 'OK')");
}

TEST_F(ViewTree, ScriptGetsNilForAnUnknownIdentifier)
{
    runs("assert(operator.tree('Nobody') == nil)");
}
