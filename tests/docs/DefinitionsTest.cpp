#include "kovan/KovanLuaSequencer/KVKFunctionTable.h"
#include "plugin/InteractiveView.h"
#include "tests/docs/Page.h"
#include "tests/support/Printing.h"

#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

using testsupport::matchesIn;
using testsupport::sorted;
using testsupport::sourceText;

namespace {

const QString File = QStringLiteral("docs/definitions.lua");

/// A function of the file, with the annotations that stand right above it.
struct Defined
{
    QString name;
    QStringList parameters;
    QStringList annotations;
};

QList<Defined> functions()
{
    static const QRegularExpression function(QStringLiteral("^function ([\\w.]+)\\((.*)\\) end$"));
    QList<Defined> found;
    QStringList annotations;
    for (const QString &line : sourceText(File).split('\n')) {
        const QRegularExpressionMatch match = function.match(line);
        if (match.hasMatch())
            found.append({match.captured(1), match.captured(2).split(", ", Qt::SkipEmptyParts), annotations});
        if (line.startsWith("---"))
            annotations.append(line);
        else
            annotations.clear();
    }
    return found;
}

QStringList namesOfFunctions(bool ofOperator)
{
    QStringList names;
    for (const Defined &each : functions()) {
        if ((each.name.startsWith("operator.") || each.name == "expect") == ofOperator)
            names.append(each.name);
    }
    return sorted(names);
}

/// The type that an annotation begins with, behind its tag and, where it has one, its name.
QString typeOf(const QString &text)
{
    static const QRegularExpression function(QStringLiteral("^fun\\([^)]*\\)(: ?[^ ]+(, [^ ]+)*)?"));
    const QRegularExpressionMatch match = function.match(text);
    if (match.hasMatch())
        return match.captured();
    // Blanks stand only between the parts of a table's type.
    static const QRegularExpression plain(QStringLiteral("^(?:table<[^>]*>|[^ ])+"));
    return plain.match(text).captured();
}

/// The words of a type that have to be known.
QStringList wordsOf(QString type)
{
    type.remove(QRegularExpression(QStringLiteral("\"[^\"]*\"")));
    type.remove(QRegularExpression(QStringLiteral("\\w+\\??:")));
    QStringList words;
    auto matches = QRegularExpression(QStringLiteral("[A-Za-z]\\w*")).globalMatch(type);
    while (matches.hasNext())
        words.append(matches.next().captured());
    return words;
}

TEST(Definitions, NameEveryFunctionThatASequenceFindsAndNoOther)
{
    interactive::InteractiveView plugin;
    QStringList wanted = plugin.pluginFunctionTable().keys() + KVKSequencerNames();
    wanted.removeOne("shared");
    wanted.append("shared.update");
    EXPECT_EQ(namesOfFunctions(false), sorted(wanted));
}

TEST(Definitions, NameEveryFunctionOfTheOperatorAndNoOther)
{
    QStringList wanted{"expect"};
    for (const QString &name :
         matchesIn("station/operator/OperatorFunctions.cpp", R"re(\{"(\w+)", KVKLuaFunction<)re"))
        wanted.append("operator." + name);
    ASSERT_GE(wanted.size(), 12);
    EXPECT_EQ(namesOfFunctions(true), sorted(wanted));
}

TEST(Definitions, TakeTheArgumentsThatTheFunctionTableNames)
{
    interactive::InteractiveView plugin;
    const platform::Dictionary table = plugin.pluginFunctionTable();
    for (const Defined &each : functions()) {
        if (!table.contains(each.name))
            continue;
        EXPECT_EQ(each.parameters.size(), table.value(each.name).toList().size() - 1)
            << each.name.toStdString();
    }
}

TEST(Definitions, NameEveryGlobalOfThePageAndNoOther)
{
    const QString section =
        sourceText("docs/sequences.md").section("## What a sequence finds", 1).section("\n## ", 0, 0);
    QStringList wanted;
    for (const QString &row : section.split('\n')) {
        if (QRegularExpression("^\\| `(\\w+)` \\|").match(row).hasMatch())
            wanted.append(row.section('`', 1, 1));
    }
    ASSERT_EQ(wanted.size(), 5);
    EXPECT_EQ(sorted(matchesIn(File, R"re(\n(\w+) = nil)re")), sorted(wanted));
}

TEST(Definitions, DescribeEachParameterInItsOrder)
{
    static const QRegularExpression parameter(QStringLiteral("^---@param ([\\w.]+)\\?? \\S"));
    for (const Defined &each : functions()) {
        QStringList described;
        for (const QString &line : each.annotations) {
            const QRegularExpressionMatch match = parameter.match(line);
            if (match.hasMatch())
                described.append(match.captured(1));
        }
        EXPECT_EQ(described, each.parameters) << each.name.toStdString();
        EXPECT_FALSE(each.annotations.isEmpty() || each.annotations.first().startsWith("---@"))
            << each.name.toStdString() << " says not what it does";
    }
}

TEST(Definitions, UseKnownTagsAndTypesAlone)
{
    QSet<QString> known{"string", "integer", "number", "boolean", "table",
                        "nil",    "any",     "true",   "false",   "fun"};
    const QString text = sourceText(File);
    for (const QString &name : matchesIn(File, R"re(---@(?:class|generic) (\w+))re")) {
        EXPECT_FALSE(known.contains(name)) << name.toStdString() << " is defined twice";
        known.insert(name);
    }
    static const QRegularExpression tag(QStringLiteral("^---@(\\w+) ?(.*)$"));
    static const QRegularExpression named(QStringLiteral("^(?:[\\w.]+\\??|\\[[^\\]]*\\]) "));
    int types = 0;
    for (const QString &line : text.split('\n')) {
        const QRegularExpressionMatch match = tag.match(line);
        if (!match.hasMatch())
            continue;
        const QString kind = match.captured(1);
        EXPECT_TRUE(
            (QStringList{"meta", "class", "generic", "field", "param", "type", "return"}).contains(kind))
            << line.toStdString();
        if (kind != "field" && kind != "param" && kind != "type" && kind != "return")
            continue;
        QString rest = match.captured(2);
        if (kind == "field" || kind == "param") {
            EXPECT_TRUE(named.match(rest).hasMatch()) << line.toStdString();
            rest.remove(named);
        }
        const QStringList words = wordsOf(typeOf(rest));
        for (const QString &word : words)
            EXPECT_TRUE(known.contains(word)) << line.toStdString() << ": " << word.toStdString();
        EXPECT_FALSE(typeOf(rest).isEmpty()) << line.toStdString();
        ++types;
    }
    EXPECT_GE(types, 50);
}

} // namespace
