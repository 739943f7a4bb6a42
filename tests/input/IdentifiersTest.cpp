#include "common/Identifiers.h"

#include "platform/Button.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"

#include <memory>
#include <string>
#include <vector>

#include "common/ConfigValues.h"

using platform::Array;
using platform::Dictionary;
using platform::Identifier;
using platform::Value;
using platform::View;

namespace {

struct Split
{
    std::string name;
    const char *text;
    const char *before;
    const char *after;
};

class IdentifierSplitTest : public testsupport::PluginFixture, public ::testing::WithParamInterface<Split>
{};

TEST_P(IdentifierSplitTest, TheFirstSeparatorDividesPanelPartAndSlotPart)
{
    const Identifier whole{QString(GetParam().text)};
    EXPECT_EQ(interactive::identifiers::before("-", whole).text(), GetParam().before);
    EXPECT_EQ(interactive::identifiers::after("-", whole).text(), GetParam().after);
}

const std::vector<Split> splits = {
    {"SlotField", "G1-S3", "G1", "S3"},
    {"SharedInput", "G1-SharedInput", "G1", "SharedInput"},
    {"IndexedControl", "G1-2-S4", "G1", "2-S4"},
    {"WithoutSeparator", "G1", "G1", "G1"},
    {"Empty", "", "", ""},
    {"SeparatorFirst", "-S1", "", "S1"},
    {"SeparatorLast", "G1-", "G1", ""},
    {"SeparatorAlone", "-", "", ""},
    {"TwoSeparators", "G1--S1", "G1", "-S1"},
};

INSTANTIATE_TEST_SUITE_P(EachKind, IdentifierSplitTest, ::testing::ValuesIn(splits),
                         [](const auto &row) { return row.param.name; });

class IdentifiersTest : public testsupport::PluginFixture
{};

TEST_F(IdentifiersTest, WithoutSeparatorBothPartsAreTheVeryIdentifier)
{
    const Identifier whole("G1");
    EXPECT_TRUE(interactive::identifiers::before("-", whole).isSameInstance(whole));
    EXPECT_TRUE(interactive::identifiers::after("-", whole).isSameInstance(whole));
}

TEST_F(IdentifiersTest, ALongerSeparatorIsSkippedWhole)
{
    EXPECT_EQ(interactive::identifiers::before("::", Identifier("a::b")).text(), "a");
    EXPECT_EQ(interactive::identifiers::after("::", Identifier("a::b")).text(), "b");
}

TEST_F(IdentifiersTest, TheSeparatorsCaseCounts)
{
    EXPECT_EQ(interactive::identifiers::before("x", Identifier("aXbxc")).text(), "aXb");
    EXPECT_EQ(interactive::identifiers::after("x", Identifier("aXbxc")).text(), "c");
}

TEST_F(IdentifiersTest, AValueIsReadAsItDescribesItself)
{
    const Dictionary values{{"text", "G1"},          {"integer", 5}, {"whole", 8.0},
                            {"decimal", 0.25},       {"yes", true},  {"no", false},
                            {"list", Array{"a", 1}}, {"empty", ""},  {"negative", -12}};
    const std::vector<std::pair<QString, QString>> expected{
        {"text", "G1"}, {"integer", "5"},   {"whole", "8"}, {"decimal", "0.25"}, {"yes", "1"},
        {"no", "0"},    {"list", "(a, 1)"}, {"empty", ""},  {"negative", "-12"}};
    for (const auto &[key, text] : expected)
        EXPECT_EQ(interactive::config::text(key, values), text) << key.toStdString();
}

TEST_F(IdentifiersTest, AMissingValueIsReadAsTheEmptyText)
{
    EXPECT_EQ(interactive::config::text("length", {}), "");
    EXPECT_EQ(interactive::config::text("length", {{"Length", 5}}), "");
}

TEST_F(IdentifiersTest, ATagIsTheSystemIndexPlusHundred)
{
    EXPECT_EQ(interactive::identifiers::systemOfTag(103), 3);
    EXPECT_EQ(interactive::identifiers::systemOfTag(99), -1);
    EXPECT_EQ(interactive::identifiers::systemOfTag(0), -100);
    EXPECT_EQ(interactive::identifiers::tagOfSystem(0), 100);
    EXPECT_EQ(interactive::identifiers::tagOfSystem(3.0), 103);
    EXPECT_EQ(interactive::identifiers::tagOfSystem(-1), 99);
}

TEST_F(IdentifiersTest, TagAndSystemIndexAreInverses)
{
    for (const int index : {-100, -1, 0, 1, 42, 9999})
        EXPECT_EQ(interactive::identifiers::systemOfTag(interactive::identifiers::tagOfSystem(index)), index);
}

class SubViewTest : public testsupport::PluginFixture
{
protected:
    View *add(View *to, const Identifier &identifier)
    {
        auto *child = new View(platform::Rect(0.0, 0.0, 10.0, 10.0));
        child->setIdentifier(identifier);
        to->addSubview(child);
        return child;
    }

    const Identifier wanted{QStringLiteral("G1")};
};

TEST_F(SubViewTest, FindsTheFirstThatBearsTheVeryIdentifier)
{
    View parent;
    add(&parent, Identifier("other"));
    View *first = add(&parent, wanted);
    add(&parent, wanted);
    EXPECT_EQ(interactive::PanelViews::subView(&parent, wanted), first);
}

TEST_F(SubViewTest, AnEqualTextOfAnotherInstanceDoesNotMatch)
{
    View parent;
    add(&parent, wanted);
    EXPECT_EQ(interactive::PanelViews::subView(&parent, Identifier("G1")), nullptr);
}

TEST_F(SubViewTest, DoesNotLookBelowTheDirectSubviews)
{
    View parent;
    View *between = add(&parent, Identifier("between"));
    add(between, wanted);
    EXPECT_EQ(interactive::PanelViews::subView(&parent, wanted), nullptr);
}

TEST_F(SubViewTest, WithoutSubviewsThereIsNone)
{
    View parent;
    EXPECT_EQ(interactive::PanelViews::subView(&parent, wanted), nullptr);
}

TEST_F(SubViewTest, NoIdentifierMatchesNoView)
{
    View parent;
    add(&parent, Identifier());
    EXPECT_EQ(interactive::PanelViews::subView(&parent, Identifier()), nullptr);
}

} // namespace
