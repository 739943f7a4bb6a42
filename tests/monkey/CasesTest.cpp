#include "tests/monkey/CaseFile.h"
#include "tests/monkey/MonkeyFixture.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <vector>

namespace monkey {
namespace {

std::vector<std::string> caseNames()
{
    std::vector<std::string> names;
    for (const QString &name :
         QDir(QStringLiteral(CASES_PATH)).entryList({"*.steps"}, QDir::Files, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

/// What once went wrong, or nearly did, in the fewest steps.
class CasesTest : public MonkeyFixture, public ::testing::WithParamInterface<std::string>
{};

TEST_P(CasesTest, WhatWasShortenedOnceHoldsNow)
{
    QFile file(QDir(QStringLiteral(CASES_PATH)).filePath(QString::fromStdString(GetParam())));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const Case known = Case::fromText(QString::fromUtf8(file.readAll()));
    ASSERT_FALSE(known.steps.isEmpty()) << "no steps can be read";
    EXPECT_EQ(replay(known.shape, known.steps).toStdString(), "");
}

INSTANTIATE_TEST_SUITE_P(Case, CasesTest, ::testing::ValuesIn(caseNames()), [](const auto &name) {
    std::string text = name.param.substr(0, name.param.find('.'));
    std::ranges::replace(text, '-', '_');
    return text;
});

} // namespace
} // namespace monkey
