#include "kovan/KovanLuaSequencer/KVKFunctionTable.h"
#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "tests/kovan/Instrument.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

using platform::Array;
using platform::Dictionary;
using platform::Value;
using testsupport::Instrument;

namespace {

const QString number = __kviArgTypeLabel(KVKArgType::NSNumber);
const QString dictionary = __kviArgTypeLabel(KVKArgType::NSDictionary);

QString problemOf(const Dictionary &table)
{
    Instrument instrument;
    try {
        const auto functions = KVKBindFunctions(&instrument, table);
        ADD_FAILURE() << functions.size() << " functions were bound";
    } catch (const KVKFunctionTableError &problem) {
        return QString::fromUtf8(problem.what());
    }
    return {};
}

TEST(Labels, GiveBackWhatTheyWereMadeFrom)
{
    EXPECT_EQ(KVKSelectorOfLabel(__kviGetSelectorLabel("showView:config:error:")),
              QByteArray("showView:config:error:"));
    EXPECT_EQ(KVKArgTypeOfLabel(number), KVKArgType::NSNumber);
    EXPECT_EQ(KVKArgTypeOfLabel(dictionary), KVKArgType::NSDictionary);
}

TEST(Labels, AnyOtherTextIsNone)
{
    EXPECT_FALSE(KVKSelectorOfLabel("showView:config:error:"));
    EXPECT_FALSE(KVKSelectorOfLabel(number));
    EXPECT_FALSE(KVKSelectorOfLabel(""));
    EXPECT_FALSE(KVKArgTypeOfLabel(__kviGetSelectorLabel("error:")));
    EXPECT_FALSE(KVKArgTypeOfLabel("NSNumber"));
}

TEST(FunctionTable, BindsByTheFirstWordOfTheSelector)
{
    Instrument instrument;
    const auto functions = KVKBindFunctions(
        &instrument,
        {{"measure", Array{__kviGetSelectorLabel("measureAt:config:error:"), number, dictionary}}});
    ASSERT_EQ(functions.size(), 1U);
    EXPECT_EQ(functions[0].name(), "measure");
    platform::Error error;
    EXPECT_EQ(functions[0].call({4, Dictionary{{"times", 3}}}, &error), Value(qlonglong{12}));
    EXPECT_FALSE(error.isPresent());
}

TEST(FunctionTable, PassesTheErrorOut)
{
    Instrument instrument;
    const auto functions = KVKBindFunctions(&instrument, {{"fail", Array{__kviGetSelectorLabel("fail:")}}});
    platform::Error error;
    EXPECT_FALSE(functions.at(0).call({}, &error).isValid());
    EXPECT_EQ(error, (platform::Error{"Instrument", 5, "no contact"}));
}

TEST(FunctionTable, ANameThatTheSequencerGivesIsRefused)
{
    for (const char *name : {"log", "sleep", "rendezvous", "locked", "shared"}) {
        EXPECT_EQ(problemOf({{name, Array{__kviGetSelectorLabel("fail:")}}}),
                  QStringLiteral("function \"%1\": the sequencer gives it already").arg(name));
    }
    EXPECT_FALSE(KVKSequencerGives("Shared"));
}

TEST(FunctionTable, AWrongEntryIsNamedWithWhatIsWrong)
{
    EXPECT_EQ(problemOf({{"f", 12}}), "function \"f\": its entry is no list of labels");
    EXPECT_EQ(problemOf({{"f", Array{}}}), "function \"f\": its entry is no list of labels");
    EXPECT_EQ(problemOf({{"f", Array{"measureAt:"}}}), "function \"f\": \"measureAt:\" is no selector label");
    EXPECT_EQ(problemOf({{"f", Array{__kviGetSelectorLabel("fail:"), "NSNumber"}}}),
              "function \"f\": \"NSNumber\" is no type label");
    EXPECT_EQ(problemOf({{"f", Array{__kviGetSelectorLabel("explode:")}}}),
              "function \"f\": testsupport::Instrument has no invokable method explode");
    EXPECT_EQ(
        problemOf({{"f", Array{__kviGetSelectorLabel("fail:"), number}}}),
        "function \"f\": the method fail of testsupport::Instrument does not take the arguments that the "
        "table gives");
    EXPECT_EQ(
        problemOf({{"f", Array{__kviGetSelectorLabel("measureAt:config:error:"), dictionary, dictionary}}}),
        "function \"f\": the method measureAt of testsupport::Instrument does not take the arguments that "
        "the "
        "table gives");
}

} // namespace
