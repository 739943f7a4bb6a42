#include "station/operator/ClickTarget.h"
#include "station/operator/OperatorFailure.h"
#include "tests/operator/OperatorFixture.h"

using platform::View;
using station::ClickTarget;
using Kind = ClickTarget::Kind;

namespace {

class Target : public testsupport::OperatorFixture
{
protected:
    std::string nameOf(View *view)
    {
        const auto target = station::targetOf(root, view);
        return target ? target->description().toStdString() : "none";
    }
};

} // namespace

TEST_F(Target, OfAPanelsButtonIsItsTitle)
{
    View *panel = groupPanel("G1");
    EXPECT_EQ(nameOf(panel->subviews().first()), "button \"OK\" of panel \"G1\"");
}

TEST_F(Target, OfASecondButtonWithTheSameTitleIsItsIdentifier)
{
    View *panel = groupPanel("G1");
    EXPECT_EQ(nameOf(button(panel, {100, 10, 80, 30}, "OK", "G1-1-OK")), "view \"G1-1-OK\"");
}

TEST_F(Target, IsNoneWhereOnlyAnotherPanelsViewWouldBeFound)
{
    View *panel = groupPanel("G1");
    EXPECT_EQ(nameOf(button(panel, {100, 10, 80, 30}, "OK", "Other")), "none");
}

TEST_F(Target, OfAFieldIsItsIdentifierAndOfASwitchItsSlot)
{
    View *panel = groupPanel("G1");
    EXPECT_EQ(nameOf(field(panel, {10, 50, 100, 25}, "G1-S2")), "view \"G1-S2\"");
    EXPECT_EQ(nameOf(switchButton(panel, {120, 50, 30, 30}, "G1-101-S-2")),
              "switch of slot \"S-2\" of panel \"G1\"");
}

TEST_F(Target, ThatHoldsAZeroIsNamedWholeWhereThereIsNone)
{
    try {
        static_cast<void>(
            station::findTarget(root, {Kind::Identifier, {}, QString(QLatin1String("a\0b", 3))}));
        ADD_FAILURE() << "it was found";
    } catch (const station::OperatorFailure &failure) {
        EXPECT_EQ(QString::fromUtf8(failure.what()), QString::fromUtf8("there is no view \"a\u2400b\""));
    }
}

TEST_F(Target, OfANumberIsWhatLuaWritesForIt)
{
    EXPECT_EQ(fails("operator.click(-0.0)"), "operator.lua:1: there is no view \"-0.0\"");
    EXPECT_EQ(fails("operator.click(1e15)"), "operator.lua:1: there is no view \"1e+15\"");
}

TEST_F(Target, OfAGroupsButtonIsTheGroup)
{
    groupPanel("G1");
    EXPECT_EQ(nameOf(switchButton(root, {700, 560, 80, 30}, "G1")), "view \"G1\"");
}
