#include "station/Palette.h"
#include "station/StationConfig.h"
#include "tests/station/StationFiles.h"

using platform::Color;
using station::readStationConfig;
using station::SequenceKind;
using station::SequenceNeed;
using station::StationConfig;

namespace {

/// Configurations that are right.
class ConfigTest : public ::testing::Test
{
protected:
    StationConfig read(const QByteArray &toml) const
    {
        return readStationConfig(m_files.write("station.toml", toml), SequenceNeed::None);
    }
    /// "G1/S1" for each system, in order.
    static QStringList mapping(const StationConfig &config)
    {
        QStringList found;
        for (qsizetype i = 0; i < config.systemGroups.size(); ++i)
            found.append(config.systemGroups.at(i) + "/" + config.systemSlots.value(i));
        return found;
    }
    static QString inWords(const station::SystemColors &colors)
    {
        return colors.background.toQColor().name(QColor::HexArgb) + " " +
               colors.text.toQColor().name(QColor::HexArgb);
    }

    testsupport::StationFiles m_files;
};

constexpr const char *TwoByTwo = "[station]\ngroups = ['G1', 'G2']\nslots = ['S1', 'S2']\n";

TEST_F(ConfigTest, SystemsAreNumberedGroupByGroup)
{
    const StationConfig config = read("[station]\ngroups = ['B', 'A']\nslots = ['S2', 'S1', 'S3']\n");
    EXPECT_EQ(mapping(config), (QStringList{"B/S2", "B/S1", "B/S3", "A/S2", "A/S1", "A/S3"}));
    EXPECT_EQ(config.groups(), (QStringList{"B", "A"}));
}

TEST_F(ConfigTest, FoldersOfImagesAreSeenFromTheFile)
{
    m_files.write("pictures/lamp.png", "x");
    const StationConfig config = read(TwoByTwo + QByteArray("images = ['pictures', '.', '/']\n"));
    EXPECT_EQ(config.imageFolders, (QStringList{m_files.path("pictures"), m_files.folder(), "/"}));
    EXPECT_EQ(read(TwoByTwo).imageFolders, QStringList());
}

TEST_F(ConfigTest, ResultsGoToAFileBesideTheConfigurationOrToAServer)
{
    const StationConfig file = read(TwoByTwo + QByteArray("[results]\ndatabase = 'a/../r.sqlite'\n"));
    EXPECT_EQ(file.resultsDatabase, m_files.path("r.sqlite"));
    const StationConfig server =
        read(TwoByTwo + QByteArray("[results]\ndatabase = 'postgresql://hall/x'\noutbox = 'o.sqlite'\n"));
    EXPECT_EQ(server.resultsDatabase, "postgresql://hall/x");
    EXPECT_EQ(server.resultsOutbox, m_files.path("o.sqlite"));
    const StationConfig usual = read(TwoByTwo + QByteArray("[results]\ndatabase = 'postgresql://hall/x'\n"));
    EXPECT_TRUE(usual.resultsOutbox.contains("/interactive-station/outbox-"));
    EXPECT_EQ(read(TwoByTwo).resultsDatabase, QString());
}

TEST_F(ConfigTest, AMappingMayBeLaidOutByHand)
{
    const StationConfig config =
        read("[station]\nsystem_groups = ['A', 'B', 'A']\nsystem_slots = ['S1', 'S1', 'S2']\n");
    EXPECT_EQ(mapping(config), (QStringList{"A/S1", "B/S1", "A/S2"}));
    EXPECT_EQ(config.groups(), (QStringList{"A", "B"}));
}

TEST_F(ConfigTest, AMappingMayBeEmpty)
{
    const StationConfig config = read("[station]\nsystem_groups = []\nsystem_slots = []\n");
    EXPECT_TRUE(config.systemGroups.isEmpty());
    EXPECT_TRUE(config.systemSlots.isEmpty());
    EXPECT_TRUE(config.systems().isEmpty());
    EXPECT_TRUE(config.colors.isEmpty());
}

TEST_F(ConfigTest, ANumberThatNoSystemHasMayNameAGroup)
{
    EXPECT_EQ(mapping(read("[station]\ngroups = ['4', '00', '+0']\nslots = ['S']\n")),
              (QStringList{"4/S", "00/S", "+0/S"}));
}

TEST_F(ConfigTest, EachSystemHasARowOfItsOwn)
{
    const QList<station::SystemRow> rows = read(TwoByTwo).systems();
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows.at(2).index, 2);
    EXPECT_EQ(rows.at(2).group, "G2");
    EXPECT_EQ(rows.at(2).slotName, "S1");
}

TEST_F(ConfigTest, NamesAreKeptAsTheyAreWritten)
{
    const StationConfig config =
        read("[station]\nname = 'Prüfstand \"7\"'\ngroups = [' left ']\nslots = ['槽 1']\n");
    EXPECT_EQ(config.name, QString::fromUtf8("Prüfstand \"7\""));
    EXPECT_EQ(mapping(config), QStringList{QString::fromUtf8(" left /槽 1")});
}

TEST_F(ConfigTest, WhatIsNotGivenHasADefault)
{
    const StationConfig config = read(TwoByTwo);
    EXPECT_EQ(config.name, "Station");
    EXPECT_FALSE(config.customRowColor);
    EXPECT_TRUE(config.sequences.isEmpty());
    EXPECT_EQ(config.plugins, QStringList{"InteractiveView"});
    ASSERT_EQ(config.colors.size(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(inWords(config.colors[i]), inWords(station::defaultColors(i))) << i;
}

TEST_F(ConfigTest, TheRowsMayHaveCustomColours)
{
    EXPECT_TRUE(read(QByteArray(TwoByTwo) + "custom_row_color = true\n").customRowColor);
    EXPECT_FALSE(read(QByteArray(TwoByTwo) + "custom_row_color = false\n").customRowColor);
}

TEST_F(ConfigTest, NumbersAreWrittenAsInCUnlessALocaleIsNamed)
{
    EXPECT_EQ(read(TwoByTwo).locale, "C");
    EXPECT_EQ(read(QByteArray(TwoByTwo) + "locale = 'de_DE'\n").locale, "de_DE");
}

TEST_F(ConfigTest, ASystemHasTheColoursItIsGiven)
{
    const StationConfig config =
        read(QByteArray(TwoByTwo) + "[[system]]\nindex = 2\nbackground = '#102030'\ntext = '#405060ff'\n"
                                    "[[system]]\nindex = 0\nbackground = 'navy'\ntext = '#ffffff80'\n");
    EXPECT_EQ(inWords(config.colors[2]), "#ff102030 #ff405060");
    EXPECT_EQ(inWords(config.colors[0]), "#ff000080 #80ffffff");
    EXPECT_EQ(inWords(config.colors[1]), inWords(station::defaultColors(1)));
}

TEST_F(ConfigTest, AColourThatIsNotGivenIsThePalettes)
{
    const StationConfig config =
        read(QByteArray(TwoByTwo) + "[[system]]\nindex = 3\n[[system]]\nindex = 1\ntext = 'red'\n");
    EXPECT_EQ(inWords(config.colors[3]), inWords(station::defaultColors(3)));
    EXPECT_EQ(config.colors[1].background, station::defaultColors(1).background);
    EXPECT_EQ(config.colors[1].text, Color::standardRed());
}

TEST_F(ConfigTest, ASequenceRunsForEachSystemUnlessItSaysOtherwise)
{
    m_files.write("a.lua", "");
    const StationConfig config =
        read(QByteArray(TwoByTwo) + "[[sequence]]\nscript = 'a.lua'\n"
                                    "[[sequence]]\nscript = 'a.lua'\nper = 'station'\n"
                                    "[[sequence]]\nscript = 'a.lua'\nper = 'group'\n"
                                    "[[sequence]]\nscript = 'a.lua'\nper = 'system'\n");
    QList<SequenceKind> kinds;
    for (const station::SequenceEntry &entry : config.sequences)
        kinds.append(entry.kind);
    EXPECT_EQ(kinds, (QList<SequenceKind>{SequenceKind::System, SequenceKind::Station, SequenceKind::Group,
                                          SequenceKind::System}));
}

TEST_F(ConfigTest, AScriptIsFoundBesideTheConfigurationOrByItsWholePath)
{
    const QString beside = m_files.write("sequences/a.lua", "");
    const StationConfig config =
        read(QByteArray(TwoByTwo) + "[[sequence]]\nscript = 'sequences/../sequences/a.lua'\n" +
             "[[sequence]]\nscript = '" + beside.toUtf8() + "'\n");
    ASSERT_EQ(config.sequences.size(), 2);
    EXPECT_EQ(config.sequences.at(0).script, beside);
    EXPECT_EQ(config.sequences.at(1).script, beside);
}

TEST_F(ConfigTest, APluginIsANameOrAPathBesideTheConfiguration)
{
    const StationConfig config =
        read("plugins = ['InteractiveView', './lib/../libB.so', '/opt/libC.so']\n" + QByteArray(TwoByTwo));
    EXPECT_EQ(config.plugins, (QStringList{"InteractiveView", m_files.path("libB.so"), "/opt/libC.so"}));
}

TEST_F(ConfigTest, AListOfNoPluginsIsTakenAsItIs)
{
    EXPECT_EQ(read("plugins = []\n" + QByteArray(TwoByTwo)).plugins, QStringList());
}

TEST_F(ConfigTest, TheStationMayBeWrittenInOneLine)
{
    EXPECT_EQ(mapping(read("station = { groups = ['G'], slots = ['S'] }\n")), QStringList{"G/S"});
}

TEST_F(ConfigTest, ScriptsHaveWhatIsAllowedAndTheMemoryThatIsGiven)
{
    const StationConfig usual = read(TwoByTwo);
    EXPECT_EQ(usual.lua.allowed, QStringList());
    EXPECT_EQ(usual.lua.memory, std::size_t{256} << 20);
    EXPECT_EQ(read(TwoByTwo + QByteArray("[lua]\n")).lua.memory, std::size_t{256} << 20);
    const StationConfig given =
        read(TwoByTwo + QByteArray("[lua]\nallow = ['os.execute', 'debug']\nmemory = 1048576\n"));
    EXPECT_EQ(given.lua.allowed, (QStringList{"os.execute", "debug"}));
    EXPECT_EQ(given.lua.memory, std::size_t{1} << 40);
    EXPECT_EQ(read(TwoByTwo + QByteArray("[lua]\nallow = ['io.popen', 'os.exit', 'package.loadlib']\n"))
                  .lua.allowed.size(),
              3);
}

TEST_F(ConfigTest, FilesBelongToTheUserAloneUnlessTheyAreShared)
{
    EXPECT_FALSE(read(TwoByTwo).sharesFiles);
    EXPECT_FALSE(read(TwoByTwo + QByteArray("files = 'private'\n")).sharesFiles);
    EXPECT_TRUE(read(TwoByTwo + QByteArray("files = 'shared'\n")).sharesFiles);
}

TEST_F(ConfigTest, NothingIsHeardAndNobodyAskedUnlessItIsSaid)
{
    const StationConfig config = read(TwoByTwo);
    EXPECT_FALSE(config.sounds.areOn);
    EXPECT_EQ(config.sounds.volume, 50);
    EXPECT_FALSE(config.badge.isAsked);
    EXPECT_TRUE(config.scanner.isPlain());
}

TEST_F(ConfigTest, SaysWhatThePersonHearsAndGives)
{
    const StationConfig config =
        read(QByteArray(TwoByTwo) +
             "sounds = true\nvolume = 100\nask_operator = true\nbadge_pattern = 'B[0-9]+'\n"
             "[scanner]\nprefix = \"\\u0002\"\nsuffix = \"\\u0003\"\nterminator = ['tab', 'enter']\n");
    EXPECT_TRUE(config.sounds.areOn);
    EXPECT_EQ(config.sounds.volume, 100);
    EXPECT_TRUE(config.badge.isAsked);
    EXPECT_EQ(config.badge.pattern, "B[0-9]+");
    EXPECT_EQ(config.scanner.prefix, "\x02");
    EXPECT_EQ(config.scanner.suffix, "\x03");
    EXPECT_EQ(config.scanner.terminators, (QList<Qt::Key>{Qt::Key_Tab, Qt::Key_Enter}));
    EXPECT_FALSE(config.scanner.isPlain());
}

TEST_F(ConfigTest, ATerminatorMayBeWrittenAlone)
{
    EXPECT_EQ(read(QByteArray(TwoByTwo) + "[scanner]\nterminator = 'enter'\n").scanner.terminators,
              QList<Qt::Key>{Qt::Key_Enter});
}

} // namespace
