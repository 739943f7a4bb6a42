#include "tests/end_to_end/StationRun.h"

#include <QDir>
#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

using testsupport::StationRun;

namespace {

/// An operator who waits until a line was logged, takes a picture of the window and answers.
QString waitsFor(const QString &line, const QString &picture)
{
    return QStringLiteral(R"(
        operator.waitForPanel("0", 20)
        eventually(function()
            for _, logged in ipairs(operator.log(1000)) do
                if logged:find(%1, 1, true) then return true end
            end
        end, "the line is logged")
        operator.screenshot(%2)
        operator.click({ panel = "0", title = "OK" })
    )")
        .arg(QLatin1Char('[') + QStringLiteral("==[") + line + QStringLiteral("]==]"),
             QLatin1Char('"') + picture + QLatin1Char('"'));
}

void draw(const QString &path, const QColor &color)
{
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(color);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    ASSERT_TRUE(image.save(path));
}

/// Whether a large part of the picture is of the color.
bool shows(const QString &file, const QColor &color)
{
    const QImage picture(file);
    int found = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            found += picture.pixelColor(x, y) == color ? 1 : 0;
    }
    return found > 5'000;
}

TEST(Instruction, APictureBesideTheSequenceStandsInTheWindow)
{
    StationRun station;
    draw(station.path("red.png"), Qt::red);
    station
        .perSystem(R"(return showView(systemIndex, { image = "red.png", instruction = "# Look" }) == true)")
        .operatorDoes(waitsFor(R"(G1 S1: the picture "red.png" was read)", station.path("window.png")));
    station.passes();
    EXPECT_TRUE(shows(station.path("window.png"), Qt::red));
}

TEST(Instruction, APictureMayLieInAFolderOfTheConfiguration)
{
    StationRun station;
    draw(station.path("shared/blue.png"), Qt::blue);
    station.file("sequence.lua", R"(return showView(systemIndex, { image = "blue.png" }) == true)");
    station
        .config("[station]\ngroups = ['G1']\nslots = ['S1']\nimages = ['shared']\n"
                "[[sequence]]\nscript = 'sequence.lua'\n")
        .operatorDoes(waitsFor(R"(G1 S1: the picture "blue.png" was read)", station.path("window.png")));
    station.passes();
    EXPECT_TRUE(shows(station.path("window.png"), Qt::blue));
}

class InstructionProblem : public ::testing::TestWithParam<const char *>
{};

TEST_P(InstructionProblem, AnImageThatCannotBeShownIsLoggedAndTheCallGoesOn)
{
    StationRun station;
    station.file("empty.png", "");
    station.file("broken.png", "\u0089PNG");
    const QString line = QStringLiteral("error [");
    station
        .perSystem(QStringLiteral("return showView(systemIndex, { image = [[%1]] }) == true").arg(GetParam()))
        .operatorDoes(waitsFor(QStringLiteral("the picture \"%1\" is not shown: ").arg(GetParam()),
                               station.path("window.png")));
    station.passes();
    EXPECT_TRUE(station.log().contains(line)) << station.log().toStdString();
    // The warning's ground.
    EXPECT_TRUE(shows(station.path("window.png"), QColor(255, 213, 79)));
}

INSTANTIATE_TEST_SUITE_P(Images, InstructionProblem,
                         ::testing::Values("none.png", "empty.png", "broken.png", "../x.png", "/etc/passwd",
                                           "http://host/x.png"));

TEST(Instruction, WithoutADisplayNothingIsRemembered)
{
    StationRun station;
    const QString home = station.path("home");
    qputenv("XDG_CONFIG_HOME", home.toUtf8());
    station.perSystem(R"(return showView(systemIndex, { instruction = "# Look" }) == true)").operatorDoes(R"(
        operator.waitForPanel("0", 20)
        operator.click({ panel = "0", title = "OK" })
    )");
    station.passes();
    EXPECT_FALSE(QDir(home).exists("interactive-station"));
}

TEST(Instruction, AButtonThatItsPanePushesOutOfSightIsScrolledTo)
{
    StationRun station;
    station.slotNames({"S1", "S2", "S3", "S4"}).perGroup(R"(
        local look = "# Look\n\n" .. ("and room "):rep(50)
        return showGroupView(groupNumber, { input = { "S1", "S2", "S3", "S4" }, column = 4, instruction = look }) == nil
    )");
    station.operatorDoes(R"(
        operator.waitForPanel("G1", 20)
        operator.resize(1024, 768)
        operator.click({ panel = "G1", slot = "SharedInput" })
        operator.click({ panel = "G1", title = "Cancel" })
    )");
    station.passes();
}

} // namespace
