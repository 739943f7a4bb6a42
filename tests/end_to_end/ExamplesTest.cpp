#include "tests/end_to_end/StationRun.h"

#include <QDir>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <vector>

using testsupport::StationRun;

namespace {

/// What a call of an example's sequence gives back, as JSON; for a refused one the error's code.
struct Answer
{
    const char *subject;
    const char *call;
    const char *result;
    int code = 0;
};

struct Example
{
    const char *folder;
    std::vector<Answer> answers;
};

void PrintTo(const Example &example, std::ostream *stream)
{
    *stream << example.folder;
}

const std::vector<Example> &examples()
{
    static const std::vector<Example> all{
        {"slot-input",
         {{"0", "showView", R"({"SN":"SN000001","clickedButton":"Pass"})"},
          {"1", "showView", R"({"SN":"SN000002","clickedButton":"Pass"})"}}},
        {"slot-question", {{"0", "showView", "true"}, {"1", "showView", "false"}}},
        {"slot-message", {{"0", "showView", "true"}}},
        {"group-input",
         {{"G1", "showGroupView",
           R"({"S1":"100001","S2":"100022","S3":"100003","S4":"100004","clickedButton":"Pass"})"},
          {"G2", "showGroupView",
           R"({"S1":"200001","S2":"200002","S3":"200003","S4":"200004","clickedButton":"Pass"})"}}},
        {"group-switches", {{"G1", "showGroupView", R"({"S1":1,"S3":1,"S4":true})"}}},
        {"group-message", {{"G1", "showGroupView", "{}"}, {"G1", "showGroupView", "true"}}},
        {"group-question", {{"G1", "showGroupView", "false"}, {"G2", "showGroupView", "true"}}},
        {"entries",
         {{"G1", "showGroupView", R"({"S1":"SN00001","S2":"SN00002","clickedButton":"Pass"})"},
          {"G1", "showGroupView", R"({"S1":3.3,"S2":3.3,"clickedButton":"Pass"})"},
          {"G1", "showGroupView", R"({"S1":"Red","S2":"Blue","clickedButton":"Pass"})"}}},
        {"asking",
         {{"G1", "showGroupView", R"({"S1":"Green","S2":"Blue","clickedButton":"Pass"})"},
          {"G1", "showGroupView", R"({"S1":"B1","S2":"A5","clickedButton":"Pass"})"}}},
        {"checks",
         {{"G1", "showGroupView", R"({"S1":"100010","S2":"100026","clickedButton":"Pass"})"},
          {"G1", "showGroupView", "null", 406}}},
        {"get-data",
         {{"G1", "getData", R"("alpha")"}, {"G1", "getData", R"("beta")"}, {"G1", "getData", R"("gamma")"}}},
        {"instructions",
         {{"0", "showView", R"({"SN":"260001","clickedButton":"Pass"})"},
          {"1", "showView", R"({"SN":"260002","clickedButton":"Pass"})"}}},
        {"loop",
         {{"G1", "isLoopFinished", "0"}, {"G1", "isLoopFinished", "0"}, {"G1", "isLoopFinished", "1"}}},
        {"together", {{"0", "showView", "true"}, {"1", "showView", "true"}, {"2", "showView", "true"}}},
        {"loop-field", {{"G1", "isLoopFinished", "0"}, {"G1", "isLoopFinished", "1"}}},
        {"refusals/input-and-switch", {{"G1", "showGroupView", "null", 100}}},
        {"refusals/unknown-slot", {{"G1", "showGroupView", "null", 101}}},
        {"refusals/too-many-labels", {{"G1", "showGroupView", "null", 102}}},
        {"refusals/too-many-columns", {{"G1", "showGroupView", "null", 103}}},
        {"refusals/duplicate-label", {{"G1", "showGroupView", "null", 104}}},
        {"refusals/two-inputs", {{"0", "showView", "null", 105}}},
        {"refusals/no-data", {{"0", "getData", "null", 201}}},
        {"refusals/switch-is-no-list", {{"G1", "showGroupView", "null"}}},
        {"refusals/input-is-no-list", {{"G1", "showGroupView", "null"}}},
    };
    return all;
}

QString compact(const QJsonValue &value)
{
    const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text.mid(1, text.size() - 2));
}

class ExampleRun : public ::testing::TestWithParam<Example>
{};

TEST_P(ExampleRun, PassesWithTheAnswersItIsAbout)
{
    StationRun station;
    station.example(GetParam().folder).passes();
    QHash<QString, qsizetype> seen;
    for (const Answer &answer : GetParam().answers) {
        const QList<QJsonObject> calls = station.calls(answer.call, answer.subject);
        const qsizetype index = seen[QLatin1String(answer.subject)]++;
        ASSERT_LT(index, calls.size()) << answer.call << " of " << answer.subject;
        const QJsonObject &call = calls.at(index);
        EXPECT_EQ(compact(call.value("result")), answer.result) << answer.call << " of " << answer.subject;
        EXPECT_EQ(call.value("error").toObject().value("code").toInt(), answer.code);
    }
}

INSTANTIATE_TEST_SUITE_P(Folders, ExampleRun, ::testing::ValuesIn(examples()), [](const auto &testCase) {
    std::string name;
    bool capital = true;
    for (const char letter : std::string(testCase.param.folder)) {
        const bool parts = letter == '-' || letter == '/';
        if (!parts)
            name += capital ? static_cast<char>(std::toupper(letter)) : letter;
        capital = parts;
    }
    return name;
});

TEST(Examples, EveryFolderIsRun)
{
    // The demonstration has a script of its own; tests/package builds and runs a host and a plug-in.
    QSet<QString> run{QStringLiteral("demo"), QStringLiteral("host"), QStringLiteral("plugin")};
    for (const Example &example : examples())
        run.insert(QLatin1String(example.folder));
    const QDir root(QStringLiteral(EXAMPLES_PATH));
    QStringList folders = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &refusal :
         QDir(root.filePath("refusals")).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        folders.append(QLatin1String("refusals/") + refusal);
    folders.removeAll(QStringLiteral("refusals"));
    for (const QString &folder : folders)
        EXPECT_TRUE(run.contains(folder)) << folder.toStdString() << " is run by no test";
}

} // namespace
