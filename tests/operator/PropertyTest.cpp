#include "tests/operator/OperatorFixture.h"

namespace {

using Property = testsupport::OperatorFixture;

} // namespace

TEST_F(Property, ScriptReadsAPropertyOfThePluginsContext)
{
    context.columns = 4;
    context.savedData = {{"G1", QVariantMap{{"S1", "SN1"}, {"length", 3}}}};
    runs("assert(operator.property('columns') == 4)\n"
         "local data = operator.property('savedData')\n"
         "assert(data.G1.S1 == 'SN1' and data.G1.length == 3)");
}

TEST_F(Property, UnknownNameIsAnErrorThatNamesTheKnownOnes)
{
    EXPECT_EQ(fails("operator.property('colums')"),
              "operator.lua:1: the plug-in has no property \"colums\"; it has: savedData, columns");
}
