#include "tests/docs/Page.h"
#include "tests/end_to_end/StationRun.h"

#include <gtest/gtest.h>

using testsupport::PageExample;

namespace {

class SequencesPage : public ::testing::TestWithParam<PageExample>
{};

TEST_P(SequencesPage, ShowsASequenceThatPasses)
{
    const PageExample &example = GetParam();
    ASSERT_FALSE(example.per.isEmpty()) << "no operator answers the example";
    testsupport::StationRun station;
    station.slotNames(example.per == "system" ? QStringList{"S1"} : QStringList{"S1", "S2"});
    station.sequence(example.per, example.lua).operatorDoes(example.operatorLua).passes();
}

INSTANTIATE_TEST_SUITE_P(Examples, SequencesPage,
                         ::testing::ValuesIn(testsupport::examplesOf("docs/sequences.md")),
                         [](const auto &testCase) { return "Line" + std::to_string(testCase.param.line); });

} // namespace
