#include "station/instruction/InstructionPane.h"

#include "station/instruction/InstructionText.h"
#include "station/instruction/PictureLabel.h"
#include "tests/instruction/PictureFiles.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/LogTrap.h"
#include "tests/support/Wait.h"

#include <QAccessible>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

using station::InstructionPane;
using station::PaneMemory;
using testsupport::waitUntil;

namespace {

class InstructionPaneTest : public ::testing::Test
{
protected:
    InstructionPaneTest()
    {
        files.draw("red.png", {800, 600});
        pane.resize(400, 600);
        pane.show();
    }

    /// Guidance of a panel that has been offered.
    KVKGuidancePointer offered(const QString &image, const QString &instruction = {})
    {
        auto made =
            std::make_shared<const KVKGuidance>(KVKGuidance{"G1 S1", image, instruction, files.path()});
        pane.setOffered(made, true);
        return made;
    }
    KVKGuidancePointer shown(const QString &image, const QString &instruction = {})
    {
        const KVKGuidancePointer guidance = offered(image, instruction);
        pane.setCurrent(guidance, true);
        return guidance;
    }
    [[nodiscard]] bool hasPicture() const { return !pane.picture()->pixmap().isNull(); }
    [[nodiscard]] bool warns(const QString &text)
    {
        return waitUntil([&] { return pane.picture()->isVisible() && pane.picture()->text() == text; });
    }
    [[nodiscard]] int timesLogged(const QString &line) const { return log.count(KVKLogLevel::Error, line); }
    void press(const QString &name)
    {
        auto *button = pane.findChild<QToolButton *>(name);
        ASSERT_NE(button, nullptr);
        QTest::mouseClick(button, Qt::LeftButton);
    }
    void wheel(int delta, Qt::KeyboardModifiers modifiers)
    {
        // To the window, which finds out whom it is for.
        const QPointF at = pane.rect().center();
        QWheelEvent event(at, pane.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        // As one of a mouse: others are not handed on to whoever holds the widget below it.
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(pane.windowHandle(), &event);
    }

    testsupport::PictureFiles files;
    testsupport::LogRecorder log;
    InstructionPane pane;
};

TEST_F(InstructionPaneTest, ShowsPictureTextAndWhoseTheyAre)
{
    shown("red.png", "Open the **lid**");
    EXPECT_EQ(pane.caption(), "G1 S1");
    EXPECT_EQ(pane.text()->toPlainText(), "Open the lid") << "the text waits for no picture";
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    EXPECT_EQ(pane.picture()->pixmap().toImage().pixelColor(5, 5), QColor(Qt::red));
    EXPECT_TRUE(pane.picture()->isVisible());
    EXPECT_TRUE(pane.text()->isVisible());
}

TEST_F(InstructionPaneTest, APictureIsAsWideAsThePane)
{
    shown("red.png");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    const int width = pane.picture()->width();
    EXPECT_GT(width, 350);
    EXPECT_LE(width, 400);
    EXPECT_NEAR(pane.picture()->height(), width * 600 / 800, 1);
    pane.resize(500, 600);
    EXPECT_TRUE(waitUntil([&] { return pane.picture()->width() == width + 100; }));
}

/// A drawing is kept with more pixels than it has points.
TEST_F(InstructionPaneTest, ADrawingFillsItsPlace)
{
    files.write("red.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='200' height='100'>"
                           "<rect width='200' height='100' fill='#ff0000'/></svg>");
    shown("red.svg");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    const QImage image = pane.picture()->pixmap().toImage();
    EXPECT_EQ(pane.picture()->size(), QSize(200, 100));
    EXPECT_EQ(image.pixelColor(image.width() - 5, image.height() - 5), QColor(Qt::red));
}

TEST_F(InstructionPaneTest, ASmallPictureKeepsItsSize)
{
    files.draw("small.png", {32, 16});
    shown("small.png");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    EXPECT_EQ(pane.picture()->size(), QSize(32, 16));
}

TEST_F(InstructionPaneTest, ShowsNothingWhenTheOperatorIsAtNoSuchPanel)
{
    const KVKGuidancePointer guidance = shown("red.png", "Look");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    pane.setCurrent(guidance, false);
    EXPECT_FALSE(pane.picture()->isVisible());
    EXPECT_FALSE(pane.text()->isVisible());
    EXPECT_EQ(pane.caption(), "");
    EXPECT_TRUE(pane.isInUse()) << "the panel still stands";
}

TEST_F(InstructionPaneTest, IsThereAtOnceWhenAPanelIsLookedAtAgain)
{
    const KVKGuidancePointer guidance = shown("red.png");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    pane.setCurrent(guidance, false);
    pane.setCurrent(guidance, true);
    EXPECT_TRUE(hasPicture());
    EXPECT_TRUE(pane.picture()->isVisible());
}

TEST_F(InstructionPaneTest, APictureThatComesTooLateIsDropped)
{
    const KVKGuidancePointer first = shown("none.png");
    pane.setCurrent(first, false);
    pane.setOffered(first, false);
    shown("red.png");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    EXPECT_FALSE(pane.picture()->hasWarning());
    EXPECT_EQ(timesLogged("G1 S1: the picture \"none.png\" is not shown: there is no such file"), 0);
}

TEST_F(InstructionPaneTest, OnlyThePictureOfThePanelThatIsLookedAtIsShown)
{
    files.draw("blue.png", {80, 60}, Qt::blue);
    const KVKGuidancePointer first = shown("red.png");
    pane.setCurrent(first, false);
    shown("blue.png");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    EXPECT_EQ(pane.picture()->pixmap().toImage().pixelColor(5, 5), QColor(Qt::blue));
    EXPECT_EQ(pane.picture()->size(), QSize(80, 60));
}

TEST_F(InstructionPaneTest, MayEndWhileAPictureIsRead)
{
    auto other = std::make_unique<InstructionPane>();
    const auto guidance = std::make_shared<const KVKGuidance>(KVKGuidance{"G1", "red.png", "", files.path()});
    other->setOffered(guidance, true);
    other->setCurrent(guidance, true);
    other.reset();
    EXPECT_EQ(guidance.use_count() >= 1, true);
    shown("red.png");
    EXPECT_TRUE(waitUntil([&] { return hasPicture(); }));
}

TEST_F(InstructionPaneTest, WarnsInThePlaceOfAPictureAndOnceInTheLog)
{
    testsupport::expectError("is not shown");
    const KVKGuidancePointer guidance = shown("none.png", "Look");
    EXPECT_TRUE(warns("\u26a0 none.png: there is no such file"));
    EXPECT_TRUE(pane.picture()->autoFillBackground());
    EXPECT_TRUE(pane.text()->isVisible());
    pane.setCurrent(guidance, false);
    pane.setCurrent(guidance, true);
    EXPECT_TRUE(warns("\u26a0 none.png: there is no such file"));
    EXPECT_EQ(timesLogged("G1 S1: the picture \"none.png\" is not shown: there is no such file"), 1);
}

TEST_F(InstructionPaneTest, AWarningIsNotLeftOnTheNextPicture)
{
    testsupport::expectError("is not shown");
    const KVKGuidancePointer bad = shown("none.png");
    ASSERT_TRUE(warns("\u26a0 none.png: there is no such file"));
    pane.setCurrent(bad, false);
    shown("red.png");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    EXPECT_FALSE(pane.picture()->autoFillBackground());
    EXPECT_GT(pane.picture()->width(), 350);
}

TEST_F(InstructionPaneTest, APictureMayLieInAFolderOfTheStation)
{
    const testsupport::PictureFiles shared;
    shared.draw("logo.png");
    pane.setImageFolders({shared.path()});
    shown("logo.png");
    EXPECT_TRUE(waitUntil([&] { return hasPicture(); }));
}

TEST_F(InstructionPaneTest, PicturesInTheTextAreShownByTheSameRules)
{
    testsupport::expectError("is not shown");
    shown({}, "![a](red.png) ![b](../x.png) ![c](http://host/x.png)");
    EXPECT_TRUE(waitUntil([&] {
        const QString text = pane.text()->toPlainText();
        return text.contains(QChar(QChar::ObjectReplacementCharacter)) &&
               text.contains("../x.png: it lies outside") &&
               text.contains("http://host/x.png: it is an address");
    })) << pane.text()->toPlainText().toStdString();
    EXPECT_GT(pane.text()->height(), 200);
}

TEST_F(InstructionPaneTest, ThereAreAtMostTwentyPicturesInAText)
{
    testsupport::expectError("is not shown");
    QString text;
    for (int i = 0; i < 22; ++i) {
        files.draw(QString("p%1.png").arg(i, 2, 10, QChar('0')), {4, 4});
        text += QString("![x](p%1.png) ").arg(i, 2, 10, QChar('0'));
    }
    shown({}, text);
    ASSERT_TRUE(waitUntil([&] { return pane.text()->toPlainText().contains("too many pictures"); }));
    EXPECT_EQ(pane.text()->toPlainText().count(QChar(QChar::ObjectReplacementCharacter)), 20);
}

TEST_F(InstructionPaneTest, ALinkIsNotFollowed)
{
    shown({}, "[here](http://host/)");
    EXPECT_EQ(pane.text()->toPlainText(), "here");
    EXPECT_FALSE(pane.text()->textInteractionFlags().testFlag(Qt::LinksAccessibleByMouse));
    EXPECT_FALSE(pane.text()->textInteractionFlags().testFlag(Qt::LinksAccessibleByKeyboard));
}

TEST_F(InstructionPaneTest, ButtonsZoomAndFit)
{
    shown("red.png", "Look");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    const int fitted = pane.picture()->width();
    press("zoomIn");
    EXPECT_NEAR(pane.picture()->width(), fitted * 1.25, 2);
    press("zoomOut");
    EXPECT_EQ(pane.zoom(), 1.0);
    press("zoomOut");
    EXPECT_NEAR(pane.picture()->width(), fitted / 1.25, 2);
    press("zoomFit");
    EXPECT_EQ(pane.picture()->width(), fitted);
}

TEST_F(InstructionPaneTest, TheWheelZoomsWithCtrlAlone)
{
    shown({}, QString("line\n\n").repeated(200));
    const QScrollBar *bar = pane.findChild<QScrollArea *>()->verticalScrollBar();
    ASSERT_TRUE(waitUntil([&] { return bar->maximum() > 2000; }));
    wheel(120, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pane.zoom(), 1.25);
    wheel(-120, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pane.zoom(), 1.0);
    wheel(-120, Qt::NoModifier);
    EXPECT_DOUBLE_EQ(pane.zoom(), 1.0);
    EXPECT_GT(bar->value(), 0);
}

TEST_F(InstructionPaneTest, TheWheelZoomsAPictureAsWell)
{
    files.draw("tall.png", {400, 2000});
    shown("tall.png");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    wheel(120, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pane.zoom(), 1.25);
}

TEST_F(InstructionPaneTest, ZoomsNoFurtherThanMemoryAllows)
{
    shown("red.png");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    pane.setZoom(1000.0);
    EXPECT_EQ(pane.zoom(), 8.0);
    EXPECT_LE(pane.picture()->width(), 4096);
    pane.setZoom(0.0001);
    EXPECT_EQ(pane.zoom(), 0.25);
}

TEST_F(InstructionPaneTest, FoldsToAStripAndRemembersIt)
{
    const QString file = files.path("window.ini");
    pane.rememberIn(file);
    pane.setChosenWidth(444);
    press("fold");
    EXPECT_TRUE(pane.isFolded());
    EXPECT_EQ(pane.wantedWidth(), InstructionPane::FoldedWidth);
    EXPECT_FALSE(pane.findChild<QScrollArea *>()->isVisible());
    InstructionPane next;
    next.rememberIn(file);
    EXPECT_TRUE(next.isFolded());
    next.setFolded(false);
    EXPECT_EQ(next.wantedWidth(), 444);
}

TEST_F(InstructionPaneTest, IsInUseWhileAPanelHasSomethingToShow)
{
    EXPECT_FALSE(pane.isInUse());
    const KVKGuidancePointer one = offered({}, "one");
    const KVKGuidancePointer two = offered({}, "two");
    EXPECT_TRUE(pane.isInUse());
    auto *leaves = pane.findChild<QTimer *>("leaves");
    ASSERT_NE(leaves, nullptr);
    EXPECT_EQ(leaves->interval(), 500);
    pane.setOffered(one, false);
    EXPECT_FALSE(leaves->isActive());
    pane.setOffered(two, false);
    EXPECT_TRUE(pane.isInUse()) << "the next call may be on its way";
    leaves->start(0);
    EXPECT_TRUE(waitUntil([&] { return !pane.isInUse(); }));
}

TEST_F(InstructionPaneTest, StaysFromOneCallToTheNext)
{
    pane.setOffered(offered({}, "one"), false);
    offered({}, "two");
    EXPECT_FALSE(pane.findChild<QTimer *>("leaves")->isActive());
    EXPECT_TRUE(pane.isInUse());
}

TEST_F(InstructionPaneTest, CanBeReadByThoseWhoCannotSeeIt)
{
    shown("red.png", "Open the **lid**");
    ASSERT_TRUE(waitUntil([&] { return hasPicture(); }));
    const auto name = [](QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    };
    EXPECT_EQ(name(&pane), "Instructions");
    EXPECT_EQ(name(pane.picture()), "Picture for G1 S1: red.png");
    EXPECT_EQ(name(pane.text()), "Instruction");
    QAccessibleTextInterface *text = QAccessible::queryAccessibleInterface(pane.text())->textInterface();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->text(0, text->characterCount()), "Open the lid");
    for (QToolButton *button : pane.findChildren<QToolButton *>())
        EXPECT_GT(name(button).size(), 3) << button->objectName().toStdString();
}

TEST_F(InstructionPaneTest, AWarningCanBeReadAsWell)
{
    testsupport::expectError("is not shown");
    shown("none.png");
    ASSERT_TRUE(warns("\u26a0 none.png: there is no such file"));
    EXPECT_EQ(pane.picture()->accessibleName(), "Warning: none.png: there is no such file");
}

TEST_F(InstructionPaneTest, NoClickInItTakesTheFocusAndTabReachesWhatCanBeUsed)
{
    const QWidgetList controls = pane.controls();
    EXPECT_EQ(controls.size(), 5);
    for (QWidget *widget : pane.findChildren<QWidget *>())
        EXPECT_EQ(widget->focusPolicy(), controls.contains(widget) ? Qt::TabFocus : Qt::NoFocus)
            << widget->metaObject()->className();
}

} // namespace
