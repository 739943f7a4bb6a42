#include "station/CommandLine.h"

#include "station/base/Version.h"
#include "tests/station/StationFiles.h"

using station::CommandLine;
using station::readCommandLine;

namespace {

class CommandLineTest : public ::testing::Test
{
protected:
    CommandLineTest()
    {
        m_config = m_files.write("station.toml", "");
        m_first = m_files.write("first.lua", "");
        m_second = m_files.write("second.lua", "");
    }

    static std::optional<CommandLine> read(const QStringList &arguments)
    {
        return readCommandLine(QStringList{"station"} + arguments);
    }
    /// What is read when the configuration is given as well.
    CommandLine readBesideConfig(const QStringList &arguments) const
    {
        const auto line = read(QStringList{"--config", m_config} + arguments);
        EXPECT_TRUE(line.has_value());
        return line.value_or(CommandLine());
    }
    QString refusalBesideConfig(const QStringList &arguments) const
    {
        return testsupport::refusalOf([&] {
            static_cast<void>(read(QStringList{"--config", m_config} + arguments));
        });
    }
    static QString refusal(const QStringList &arguments)
    {
        return testsupport::refusalOf([&] { static_cast<void>(read(arguments)); });
    }

    testsupport::StationFiles m_files;
    QString m_config;
    QString m_first;
    QString m_second;
};

TEST_F(CommandLineTest, TheConfigurationIsAllThatIsNeeded)
{
    const CommandLine line = readBesideConfig({});
    EXPECT_EQ(line.config, m_config);
    EXPECT_EQ(line.sequences, QStringList());
    EXPECT_EQ(line.operatorScript, "");
    EXPECT_EQ(line.results, "");
    EXPECT_EQ(line.record, "");
    EXPECT_EQ(line.log, "");
    EXPECT_EQ(line.plugins, QStringList());
    EXPECT_FALSE(line.headless);
}

TEST_F(CommandLineTest, EveryOptionIsRead)
{
    const CommandLine line =
        readBesideConfig({"--sequence", m_first, "--operator", m_second, "--headless", "--results", "r.jsonl",
                          "--record", "record.lua", "--log", "station.log", "--plugin", m_files.folder()});
    EXPECT_EQ(line.config, m_config);
    EXPECT_EQ(line.sequences, QStringList{m_first});
    EXPECT_EQ(line.operatorScript, m_second);
    EXPECT_TRUE(line.headless);
    EXPECT_EQ(line.results, "r.jsonl");
    EXPECT_EQ(line.record, "record.lua");
    EXPECT_EQ(line.log, "station.log");
    EXPECT_EQ(line.plugins, QStringList{m_files.folder()});
}

TEST_F(CommandLineTest, AValueMayBeJoinedByAnEqualsSign)
{
    const auto line = read({"--config=" + m_config, "--results=r=1.jsonl"});
    ASSERT_TRUE(line.has_value());
    EXPECT_EQ(line->config, m_config);
    EXPECT_EQ(line->results, "r=1.jsonl");
}

TEST_F(CommandLineTest, SequencesAndPluginsMayBeGivenSeveralTimesAndKeepTheirOrder)
{
    const CommandLine line = readBesideConfig(
        {"--sequence", m_second, "--plugin", m_second, "--sequence", m_first, "--plugin", m_files.folder()});
    EXPECT_EQ(line.sequences, (QStringList{m_second, m_first}));
    EXPECT_EQ(line.plugins, (QStringList{m_second, m_files.folder()}));
}

TEST_F(CommandLineTest, TheLastOfTwoConfigurationsCounts)
{
    const QString other = m_files.write("other.toml", "");
    EXPECT_EQ(readBesideConfig({"--config", other}).config, other);
}

TEST_F(CommandLineTest, FilesToBeWrittenNeedNotBeThere)
{
    EXPECT_EQ(readBesideConfig({"--results", "/nowhere/r", "--log", "/nowhere/l"}).results, "/nowhere/r");
}

TEST_F(CommandLineTest, WithoutAConfigurationItSaysWhatItNeeds)
{
    EXPECT_EQ(refusal({}), "needs --config FILE; see --help");
    EXPECT_EQ(refusal({"--headless"}), "needs --config FILE; see --help");
    EXPECT_EQ(refusal({"--config", ""}), "needs --config FILE; see --help");
}

TEST_F(CommandLineTest, AnOptionWithoutItsValueIsNamed)
{
    for (const QString option : {"config", "sequence", "operator", "results", "record", "log", "plugin"})
        EXPECT_EQ(refusal({"--" + option}), "Missing value after '--" + option + "'; see --help");
}

TEST_F(CommandLineTest, AnUnknownOptionIsNamed)
{
    EXPECT_EQ(refusalBesideConfig({"--colour"}), "Unknown option 'colour'; see --help");
    EXPECT_EQ(refusalBesideConfig({"--colour", "-x"}), "Unknown options: colour, x; see --help");
}

TEST_F(CommandLineTest, AValueForAnOptionThatTakesNoneIsRefused)
{
    EXPECT_EQ(refusalBesideConfig({"--headless=yes"}), "Unexpected value after '--headless'; see --help");
}

TEST_F(CommandLineTest, AWordThatBelongsToNoOptionIsRefused)
{
    EXPECT_EQ(refusalBesideConfig({"fast", "slow"}), "does not take 'fast'; see --help");
    EXPECT_EQ(refusalBesideConfig({"--", "--headless"}), "does not take '--headless'; see --help");
}

TEST_F(CommandLineTest, AFileThatIsNotThereIsNamedWithItsOption)
{
    EXPECT_EQ(refusal({"--config", "/nowhere/station.toml"}),
              "--config: there is no file /nowhere/station.toml");
    EXPECT_EQ(refusalBesideConfig({"--sequence", m_first, "--sequence", "/nowhere/s.lua"}),
              "--sequence: there is no file /nowhere/s.lua");
    EXPECT_EQ(refusalBesideConfig({"--operator", "/nowhere/o.lua"}),
              "--operator: there is no file /nowhere/o.lua");
    EXPECT_EQ(refusalBesideConfig({"--plugin", "/nowhere/libX.so"}),
              "--plugin: there is no /nowhere/libX.so");
}

TEST_F(CommandLineTest, AFolderIsNoFile)
{
    EXPECT_EQ(refusal({"--config", m_files.folder()}), "--config: there is no file " + m_files.folder());
    EXPECT_EQ(refusalBesideConfig({"--sequence", m_files.folder()}),
              "--sequence: there is no file " + m_files.folder());
}

TEST_F(CommandLineTest, HelpIsPrintedAndNothingElseDone)
{
    for (const QString option : {"--help", "-h"}) {
        testing::internal::CaptureStdout();
        EXPECT_FALSE(read({option}).has_value());
        const QString help = QString::fromStdString(testing::internal::GetCapturedStdout());
        for (const QString named :
             {"--config <FILE>", "--sequence <FILE>", "--operator <FILE>", "--headless", "--results <FILE>",
              "--record <FILE>", "--log <FILE>", "--plugin <PATH>", "--version"})
            EXPECT_TRUE(help.contains(named)) << named.toStdString();
        EXPECT_TRUE(
            help.startsWith("Usage: station --config FILE [options]\n       station check|new|report "))
            << help.toStdString();
        EXPECT_TRUE(help.endsWith(
            "\nExit status: 0 every sequence passed, 1 one did not, 2 the station could not start.\n"))
            << help.toStdString();
    }
}

TEST_F(CommandLineTest, TheVersionIsPrintedAndNothingElseDone)
{
    for (const QString option : {"--version", "-v"}) {
        testing::internal::CaptureStdout();
        EXPECT_FALSE(read({option}).has_value());
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "station " + std::string(station::Version) + "\n");
    }
}

TEST_F(CommandLineTest, HelpIsGivenHoweverIncompleteTheRest)
{
    testing::internal::CaptureStdout();
    EXPECT_FALSE(read({"--config", "/nowhere", "extra", "--help"}).has_value());
    EXPECT_NE(testing::internal::GetCapturedStdout(), "");
}

TEST_F(CommandLineTest, ABadgeIsATextThatIsNotEmpty)
{
    EXPECT_EQ(readBesideConfig({}).badges, QStringList());
    EXPECT_EQ(readBesideConfig({"--badge", "B 4711"}).badges, QStringList{"B 4711"});
    EXPECT_EQ(readBesideConfig({"--badge", "A", "--badge", "B"}).badges, (QStringList{"A", "B"}));
    EXPECT_EQ(refusalBesideConfig({"--badge", ""}), "--badge: is empty");
}

TEST_F(CommandLineTest, TheThemeIsOneOfThreeOrLeftOpen)
{
    EXPECT_EQ(readBesideConfig({}).theme, std::nullopt);
    EXPECT_EQ(readBesideConfig({"--theme", "dark"}).theme, station::ThemeChoice::Dark);
    EXPECT_EQ(readBesideConfig({"--theme", "light"}).theme, station::ThemeChoice::Light);
    EXPECT_EQ(readBesideConfig({"--theme", "auto"}).theme, station::ThemeChoice::Auto);
    EXPECT_EQ(refusalBesideConfig({"--theme", "pink"}), "--theme: is light, dark or auto, not 'pink'");
}

} // namespace
