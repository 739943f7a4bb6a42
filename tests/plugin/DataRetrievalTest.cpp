#include "tests/support/PluginFixture.h"

#include <stdexcept>

using platform::Array;
using platform::Dictionary;
using platform::Error;
using platform::Value;

namespace {

const QString notFound =
    QStringLiteral("-[InteractiveView getData:error:]: Invalid parameter or data not found: %1");

class DataRetrievalTest : public testsupport::PluginFixture
{
protected:
    testsupport::SequencerCall &getData(const Value &systemIndex)
    {
        interactive::InteractiveView &target = plugin();
        return onSequencer(
            [&target, systemIndex](Error *error) { return target.getData(systemIndex, error); });
    }

    void expectNotFound(testsupport::SequencerCall &call, const QString &index)
    {
        EXPECT_EQ(call.result(), Value());
        EXPECT_EQ(call.error(), (Error{interactive::InteractivePluginErrorDomain, 201, notFound.arg(index)}));
    }
};

TEST_F(DataRetrievalTest, BeforeAnyPanelThereIsNothing)
{
    expectNotFound(getData(0), "0");
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, "-[InteractiveView getData:error:]: getData for G1"));
}

TEST_F(DataRetrievalTest, EverySystemOfAConfirmedGroupHasItsOwnEntry)
{
    auto &panelCall = showGroup(1, {{"input", Array{"S1", "S2", "S3", "S4"}}});
    ASSERT_TRUE(waitForPanel("G2"));
    for (const char *entry : {"A1", "B2", "C3", "D4"})
        scan(entry);
    press("G2", "OK");
    ASSERT_TRUE(panelCall.waitUntilFinished());

    EXPECT_EQ(getData(4).result(), Value("A1"));
    EXPECT_EQ(getData(5).result(), Value("B2"));
    EXPECT_EQ(getData(6).result(), Value("C3"));
    auto &last = getData(7);
    EXPECT_EQ(last.result(), Value("D4"));
    EXPECT_FALSE(last.error().isPresent());
    EXPECT_EQ(timesLogged(KVKLogLevel::Default, "-[InteractiveView getData:error:]: getData for G2"), 4);
    expectNotFound(getData(0), "0");
}

TEST_F(DataRetrievalTest, ARecordWithoutEntriesGivesAnErrorForEverySlot)
{
    auto &question = showGroup(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Yes");
    ASSERT_TRUE(question.waitUntilFinished());
    ASSERT_EQ(record("G1"), (Dictionary{{"clickedButton", "Pass"}}));
    for (int i = 0; i < 4; ++i)
        expectNotFound(getData(i), QString::number(i));
}

TEST_F(DataRetrievalTest, ARecordThatIsNoDictionaryGivesAnError)
{
    rooms().records.restore({{"G1", "S1"}});
    expectNotFound(getData(0), "0");
}

TEST_F(DataRetrievalTest, TheAnswerOfASystemsOwnPanelIsNotFound)
{
    setLoop(2); // so that the answer outlives its call
    auto &call = showView(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("Y");
    press("0", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    ASSERT_EQ(record("0").value("S1"), Value("Y"));
    expectNotFound(getData(0), "0");
}

TEST_F(DataRetrievalTest, AnEmptyEntryIsAnEntry)
{
    answerGroup(0, {"S1"}, {""});
    auto &call = getData(0);
    EXPECT_EQ(call.result(), Value(""));
    EXPECT_FALSE(call.error().isPresent());
}

TEST_F(DataRetrievalTest, AValueIsGivenAsItWasStored)
{
    rooms().records.restore({{"G1", Dictionary{{"S2", 42}}}});
    EXPECT_EQ(getData(1).result(), Value(42));
}

TEST_F(DataRetrievalTest, ASystemWithoutASlotNameGivesAnError)
{
    station.systemGroups = Array{"G1", "G1"};
    station.systemSlots = Array{"S1"};
    answerGroup(0, {"S1"}, {"A"});
    EXPECT_EQ(getData(0).result(), Value("A"));
    expectNotFound(getData(1), "1");
    rooms().records.restore({{"G1", Dictionary{{"S1", "A"}, {platform::description(Value()), "B"}}}});
    expectNotFound(getData(1), "1");
}

TEST_F(DataRetrievalTest, ASystemWithoutAGroupGivesAnErrorAndIsLogged)
{
    station.systemGroups = Array{Value(), "G1"};
    station.systemSlots = Array{"S1", "S1"};
    rooms().records.restore({{"G1", Dictionary{{"S1", "A"}}},
                             {"", Dictionary{{"S1", "B"}}},
                             {platform::description(Value()), Dictionary{{"S1", "C"}}}});
    expectNotFound(getData(0), "0");
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default, "-[InteractiveView getData:error:]: getData for (null)"));
}

TEST_F(DataRetrievalTest, AnIndexBeyondTheMappingIsARangeException)
{
    const QString text = getData(8).thrown<std::out_of_range>();
    EXPECT_TRUE(text.contains("8")) << text.toStdString();
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView getData:error:]"), 0);
}

TEST_F(DataRetrievalTest, TheExceptionNamesTheValueAndTheRange)
{
    const QString text = getData(123).thrown<std::out_of_range>();
    EXPECT_TRUE(text.contains("123")) << text.toStdString();
    EXPECT_TRUE(text.contains("7") || text.contains("8")) << text.toStdString();
}

TEST_F(DataRetrievalTest, ANegativeIndexIsARangeException)
{
    EXPECT_FALSE(getData(-1).thrown<std::out_of_range>().isEmpty());
}

TEST_F(DataRetrievalTest, AnIndexGivenAsADecimalNumberNamesTheSameSystem)
{
    answerGroup(0, {"S3"}, {"C"});
    EXPECT_EQ(getData(2.0).result(), Value("C"));
    expectNotFound(getData(3.0), "3");
}

TEST_F(DataRetrievalTest, ACallerWithoutAPlaceForAnErrorGetsNothing)
{
    EXPECT_EQ(plugin().getData(0, nullptr), Value());
}

TEST_F(DataRetrievalTest, AnAnswerLeavesTheErrorAsItWas)
{
    answerGroup(0, {"S1"}, {"A"});
    Error error{"elsewhere", 7, "kept"};
    EXPECT_EQ(plugin().getData(0, &error), Value("A"));
    EXPECT_EQ(error, (Error{"elsewhere", 7, "kept"}));
}

TEST_F(DataRetrievalTest, TheTextsOfAWrongIndexAreWhole)
{
    const QString method = "-[InteractiveView getData:error:]: ";
    EXPECT_EQ(getData(8).thrown<std::out_of_range>(),
              method + "system index 8 is out of range, there are 8 (0 to 7)");
    EXPECT_EQ(getData(2.5).thrown<std::invalid_argument>(),
              method + "system index must be an integer, got 2.5");
}

} // namespace
