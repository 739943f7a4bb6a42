#include "plugin/InteractiveView.h"
#include "tests/docs/Page.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using testsupport::matchesIn;
using testsupport::sorted;
using testsupport::sourceText;

namespace {

const QString page = QStringLiteral("docs/sequences.md");

QStringList configurationRows()
{
    const QString section = sourceText(page).section("## Configuration keys", 1).section("## Errors", 0, 0);
    return section.split('\n').filter(QRegularExpression("^\\| `"));
}

TEST(SequencesPageTables, HaveARowForEveryConfigurationKeyAndNoOther)
{
    const QStringList keys =
        matchesIn("common/ConfigValues.h",
                  R"re(inline const QString (?!DefaultLabel)\w+ = QStringLiteral\("(\w+)"\))re");
    ASSERT_GE(keys.size(), 13);
    QStringList named;
    for (const QString &row : configurationRows())
        named.append(row.section('`', 1, 1));
    EXPECT_EQ(sorted(named), sorted(keys));
}

TEST(SequencesPageTables, HaveAPictureForEveryConfigurationKey)
{
    for (const QString &row : configurationRows())
        EXPECT_TRUE(row.contains("![](pictures/")) << row.toStdString();
}

TEST(SequencesPageTables, HaveARowForEveryErrorCodeAndNoOther)
{
    const QStringList codes = matchesIn("common/ErrorCodes.h", R"(= (\d{3}),)");
    ASSERT_GE(codes.size(), 11);
    QStringList rows;
    for (const QString &line : sourceText(page).section("## Errors", 1).split('\n')) {
        const QString code = line.section('|', 1, 1).trimmed();
        if (code.size() == 3 && code.at(0).isDigit())
            rows.append(code);
    }
    EXPECT_EQ(sorted(rows), sorted(codes));
}

TEST(SequencesPageTables, QuoteTheMessagesOfRefusedConfigurations)
{
    const QStringList messages = matchesIn("common/Messages.h", R"re("(Invalid config\.[^"%]*)")re");
    ASSERT_GE(messages.size(), 8);
    const QString text = sourceText(page).replace('\n', ' ');
    // What a "button" that is no list leads to stands in the log alone.
    for (const QString &message : messages.filter(QRegularExpression("^(?!.*'button')")))
        EXPECT_TRUE(text.contains(message)) << message.toStdString();
}

TEST(SequencesPageTables, HaveASectionForEveryFunction)
{
    interactive::InteractiveView plugin;
    const QStringList functions = plugin.pluginFunctionTable().keys();
    ASSERT_EQ(functions.size(), 6);
    EXPECT_EQ(sorted(matchesIn(page, R"re(\n### `(\w+)\()re")), sorted(functions));
}

TEST(Definitions, NameEveryConfigurationKeyAndNoOther)
{
    const QString panel =
        sourceText("docs/definitions.lua").section("---@class PanelConfig", 1).section("\n\n", 0, 0);
    QStringList fields;
    for (const QString &line : panel.split('\n')) {
        if (line.startsWith("---@field "))
            fields.append(line.section(' ', 1, 1).remove('?'));
    }
    const QStringList keys =
        matchesIn("common/ConfigValues.h",
                  R"re(inline const QString (?!DefaultLabel)\w+ = QStringLiteral\("(\w+)"\))re");
    EXPECT_EQ(sorted(fields), sorted(keys));
}

TEST(OperatorPage, HasARowForEveryFunction)
{
    const QStringList functions =
        matchesIn("station/operator/OperatorFunctions.cpp", R"re(\{"(\w+)", KVKLuaFunction<)re");
    ASSERT_GE(functions.size(), 11);
    EXPECT_EQ(sorted(matchesIn("docs/operator-scripts.md", R"re(\| `operator\.(\w+)\()re")),
              sorted(functions));
}

} // namespace
