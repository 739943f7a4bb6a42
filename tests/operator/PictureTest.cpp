#include "tests/operator/OperatorFixture.h"

#include <QFile>
#include <QImage>

namespace {

using Picture = testsupport::OperatorFixture;

} // namespace

TEST_F(Picture, ShowsTheWholeWindowAndMakesItsFolders)
{
    const QString file = path("some/new/folder/station.png");
    auto *patch = new platform::View(platform::Rect(0, 590, 10, 10));
    patch->setLayerBackgroundColor(platform::Color::standardRed());
    root->addSubview(patch);
    runs("operator.screenshot('" + file + "')");
    const QImage image(file);
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.size(), window.size() * window.devicePixelRatio());
    EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::red));
}

TEST_F(Picture, ShowsAViewWithALittleOfItsSurroundings)
{
    const QString file = path("view.png");
    auto *patch = new platform::View(platform::Rect(100, 100, 40, 20));
    patch->setIdentifier(platform::Identifier(QStringLiteral("patch")));
    patch->setLayerBackgroundColor(platform::Color::standardRed());
    root->addSubview(patch);
    runs("operator.screenshot('" + file + "', 'patch')");
    const QImage image(file);
    EXPECT_EQ(image.size(), QSize(52, 32) * window.devicePixelRatio());
    EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() / 2), QColor(Qt::red));
    EXPECT_NE(image.pixelColor(2, 2), QColor(Qt::red));
    EXPECT_EQ(fails("operator.screenshot('" + file + "', 'nothing')"),
              "operator.lua:1: no view \"nothing\" can be seen");
    patch->setHidden(true);
    EXPECT_EQ(fails("operator.screenshot('" + file + "', 'patch')"),
              "operator.lua:1: no view \"patch\" can be seen");
}

TEST_F(Picture, ThatCannotBeWrittenFails)
{
    QFile blocker(path("file"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    EXPECT_EQ(fails("operator.screenshot('" + path("file/station.png") + "')"),
              "operator.lua:1: the folder \"" + path("file") + "\" cannot be made");
    EXPECT_EQ(fails("operator.screenshot('" + path("") + "')"),
              "operator.lua:1: the picture \"" + path("") + "\" cannot be written");
}

TEST_F(Picture, WindowTakesANewSizeBeforeTheScriptGoesOn)
{
    runs("local w, h = operator.resize(900, 650)\n"
         "assert(w == 900 and h == 650, w .. ' x ' .. h)\n"
         "local frame = operator.tree().frame\n"
         "assert(frame.width == 900 and frame.height == 650, frame.width)");
    EXPECT_EQ(window.size(), QSize(900, 650));
}

TEST_F(Picture, WindowTellsTheSizeThatItsContentNeeds)
{
    window.setMinimumSize(700, 500);
    runs("local w, h = operator.resize(100, 100)\n"
         "assert(w == 700 and h == 500, w .. ' x ' .. h)");
}

TEST_F(Picture, SizeMustBeOneThatAWindowCanHave)
{
    EXPECT_EQ(fails("operator.resize(0, 100)"),
              "operator.lua:1: operator.resize: width must be from 1 to 16384, not 0");
    EXPECT_EQ(fails("operator.resize(100, 1000000)"),
              "operator.lua:1: operator.resize: height must be from 1 to 16384, not 1000000");
    EXPECT_EQ(fails("operator.resize(1.5, 2)"),
              "operator.lua:1: operator.resize: argument 1 (width) must be a whole number, not number");
}
