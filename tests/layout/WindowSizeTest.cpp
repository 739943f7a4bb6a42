#include "platform/Button.h"
#include "platform/ScrollView.h"
#include "plugin/ShowError.h"
#include "tests/support/PanelFixture.h"
#include "tests/support/Wait.h"

using platform::Array;
using platform::Button;
using platform::Dictionary;
using platform::Rect;
using platform::TextField;
using platform::View;
using testsupport::inWords;
using testsupport::SequencerCall;

namespace {

const Dictionary slotEntry{{"input", Array{"SN"}}, {"button", Array{"Cancel", "OK"}}};
const Dictionary groupEntry{{"input", Array{"S1", "S2", "S3", "S4"}}};
const Dictionary switches{{"switch", Array{"S1", "S2", "S3", "S4"}}};

Dictionary in(int columns, Dictionary config)
{
    config.insert("column", columns);
    return config;
}

/// The panels in windows of all sizes, also such as they do not fit.
class WindowSizeTest : public testsupport::PanelFixture
{
protected:
    inline static const QList<QSize> sizes{{600, 400},  {1024, 768}, {1600, 1000}, {600, 400},
                                           {1600, 300}, {600, 1500}, {440, 1000},  {1280, 800}};

    WindowSizeTest() { station.groups = {"G1", "G2", "G3"}; }

    platform::Size documentSize() { return scrollView()->documentView()->frame().size(); }

    void resizeTo(const QSize &size)
    {
        window().resize(size);
        ASSERT_EQ(rootView()->size(), size);
    }
    /// Whether a person who turns the wheels can click all of the view.
    bool canBeReached(View *view)
    {
        const QPoint corner = view->mapTo(scrollView()->documentView(), QPoint(0, 0));
        scrollView()->scrollToPoint({double(corner.x()), documentSize().height() - corner.y()});
        const QRect inside = view->rect().adjusted(1, 1, -1, -1);
        for (const QPoint &point :
             {inside.topLeft(), inside.topRight(), inside.bottomLeft(), inside.bottomRight()}) {
            const QWidget *hit = window().childAt(view->mapTo(&window(), point));
            if (!hit || (hit != view && !view->isAncestorOf(hit)))
                return false;
        }
        return true;
    }
    /// What an operator uses on the panels that are open.
    QList<View *> controls()
    {
        QList<View *> found;
        for (View *view : testsupport::descendants(splitView())) {
            const auto *field = qobject_cast<TextField *>(view);
            if (view->isVisible() && (qobject_cast<Button *>(view) || (field && field->isEditable())))
                found.append(view);
        }
        return found;
    }
    void expectAllCanBeReached(qsizetype count)
    {
        const QList<View *> all = controls();
        EXPECT_EQ(all.size(), count);
        for (View *view : all)
            EXPECT_TRUE(canBeReached(view)) << testsupport::identifierOf(view).toStdString() << " at "
                                            << window().width() << " x " << window().height();
    }
    void expectNoOverlap()
    {
        QList<View *> open;
        for (View *pane : splitView()->subviews()) {
            if (!pane->identifier().isNull() && pane->isVisible())
                open.append(pane);
        }
        for (qsizetype i = 0; i < open.size(); ++i) {
            for (qsizetype j = 0; j < i; ++j)
                EXPECT_FALSE(open[i]->frame().intersects(open[j]->frame()))
                    << inWords(open[i]->frame()).toStdString() << " and "
                    << inWords(open[j]->frame()).toStdString();
        }
    }
    QStringList tileFrames(const QString &group)
    {
        QStringList frames;
        for (int i = 0; i < 4; ++i) {
            const View *view = tile(group, i)->view();
            // From the upper edge, which the rows start from.
            const double fromTop = overviewOf(group)->bounds().height() - view->frame().y();
            frames.append(inWords(Rect(view->frame().x(), fromTop, 250.0, view->frame().height())));
        }
        return frames;
    }
    SequencerCall &showError(const Dictionary &config, const QString &group)
    {
        interactive::Rooms &target = rooms();
        const platform::Identifier key = target.waits.panelKey(group);
        return onSequencer([&target, config, key](platform::Error *) {
            return platform::Value(interactive::showError(target, "The fixture is open.", config, key, {}));
        });
    }
    bool isWhollySeen(const View *view) { return view->visibleRegion().boundingRect() == view->rect(); }
};

TEST_F(WindowSizeTest, EveryFieldAndButtonCanBeScrolledTo)
{
    drawGroup(0, in(1, switches));
    drawGroup(1, in(3, groupEntry));
    drawSlot(8, in(4, slotEntry));
    drawSlot(11, in(4, slotEntry));
    for (const QSize &size : sizes) {
        resizeTo(size);
        // Switches and buttons; switches, field and buttons; fields and buttons of two systems.
        expectAllCanBeReached((4 + 2) + (4 + 1 + 3) + 2 * (1 + 2));
        expectNoOverlap();
    }
}

TEST_F(WindowSizeTest, PanelsThatAreDrawnInANarrowWindowCanBeReachedInAnyOther)
{
    station.windowSize = {440, 300};
    drawSlot(0, in(2, slotEntry));
    drawGroup(1, {{"button", Array{"A", "B", "C", "D", "E", "F", "G"}}, {"input", Array{}}});
    drawGroup(2, in(1, groupEntry));
    for (const QSize &size : sizes) {
        resizeTo(size);
        expectAllCanBeReached(3 + 7 + 8);
        expectNoOverlap();
    }
}

TEST_F(WindowSizeTest, TilesStandInTheColumnsThatWereAskedForAtEveryWidth)
{
    station.windowSize = {600, 400};
    drawGroup(0, in(2, groupEntry));
    drawSlot(4, in(3, slotEntry));
    const QStringList two = tileFrames("G1");
    const QStringList three = tileFrames("G2");
    ASSERT_EQ(two, (QStringList{"(0, 64, 250, 64)", "(250, 64, 250, 64)", "(0, 128, 250, 64)",
                                "(250, 128, 250, 64)"}));
    for (const QSize &size : sizes) {
        resizeTo(size);
        EXPECT_EQ(tileFrames("G1"), two) << size.width();
        EXPECT_EQ(tileFrames("G2"), three) << size.width();
        EXPECT_GE(overviewOf("G1")->frame().width(), 500.0);
        EXPECT_GE(overviewOf("G2")->frame().width(), 750.0);
    }
}

TEST_F(WindowSizeTest, BandsAreAsHighAsTheTallestOpenPanel)
{
    drawGroup(1, in(4, switches));
    EXPECT_EQ(inWords(pane("G2")->frame()), "(0, 126, 1280, 126)");
    drawGroup(0, in(1, switches));
    EXPECT_EQ(inWords(pane("G1")->frame()), "(0, 0, 1280, 456)");
    EXPECT_EQ(inWords(pane("G2")->frame()), "(0, 456, 1280, 126)");
    drawGroup(2, in(2, switches));
    EXPECT_EQ(inWords(pane("G3")->frame()), "(0, 912, 1280, 236)");
    drawGroup(0, in(4, switches));
    EXPECT_EQ(inWords(pane("G2")->frame()), "(0, 236, 1280, 126)");
    EXPECT_EQ(inWords(pane("G3")->frame()), "(0, 472, 1280, 236)");
}

TEST_F(WindowSizeTest, AnEndedSlotPanelGivesItsRoomBackAndKeepsNoClicksFromOthers)
{
    SequencerCall &group = showGroup(1, in(4, {{"button", Array{"No", "Yes"}}}));
    ASSERT_TRUE(waitForPanel("G2"));
    SequencerCall &slot = showView(0, in(1, slotEntry));
    ASSERT_TRUE(waitForPanel("0"));
    ASSERT_EQ(pane("G2")->frame().y(), 456.0);
    press("0", "Cancel");
    ASSERT_TRUE(slot.waitUntilFinished());
    EXPECT_EQ(pane("G2")->frame().y(), 126.0);
    expectAllCanBeReached(2);
    press("G2", "Yes");
    EXPECT_EQ(group.result(), platform::Value(true));
    // The tiles that are there already serve again.
    showView(1, in(1, slotEntry));
    ASSERT_TRUE(waitForPanel("1"));
    EXPECT_TRUE(field("1-SN")->isVisible());
    expectAllCanBeReached(3);
}

TEST_F(WindowSizeTest, TheDocumentShrinksBackWhenAWideErrorPanelGoes)
{
    station.windowSize = {600, 400};
    start();
    const platform::Size before = documentSize();
    SequencerCall &error = showError({{"column", 6}, {"title", "Scan"}}, "G2");
    ASSERT_TRUE(waitForPanel("G2"));
    EXPECT_EQ(documentSize().width(), 1500.0);
    ASSERT_TRUE(canBeReached(buttons(panel("G2")).first()));
    press("G2", "OK");
    ASSERT_TRUE(error.waitUntilFinished());
    EXPECT_EQ(documentSize(), before);
    drawSlot(4, in(2, slotEntry));
    EXPECT_EQ(documentSize(), platform::Size(600.0, 708.0));
    EXPECT_EQ(pane("G2-group")->frame().width(), 600.0);
}

TEST_F(WindowSizeTest, TheDocumentShrinksBackWhenAGroupWithMoreColumnsGoes)
{
    station.windowSize = {600, 400};
    showGroup(1, in(2, {{"button", Array{"Yes"}}}));
    ASSERT_TRUE(waitForPanel("G2"));
    SequencerCall &wide = showGroup(0, in(4, switches));
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(documentSize(), platform::Size(1000.0, 708.0));
    EXPECT_EQ(pane("G2")->frame().width(), 1000.0);
    ASSERT_TRUE(canBeReached(button("G1", "OK")));
    press("G1", "OK");
    ASSERT_TRUE(wide.waitUntilFinished());
    EXPECT_EQ(documentSize(), platform::Size(600.0, 708.0));
    EXPECT_EQ(pane("G2")->frame().width(), 600.0);
    expectAllCanBeReached(1);
}

TEST_F(WindowSizeTest, AnErrorPanelFollowsTheWindow)
{
    SequencerCall &error = showError(in(2, {}), "G2");
    ASSERT_TRUE(waitForPanel("G2"));
    for (const QSize &size : sizes) {
        resizeTo(size);
        const double width = std::max(size.width(), 500);
        EXPECT_EQ(panel("G2")->frame().width(), width);
        EXPECT_EQ(buttons(panel("G2")).first()->frame(), Rect(width - 96.0, 0.0, 80.0, 30.0));
        expectAllCanBeReached(1);
    }
    press("G2", "OK");
    EXPECT_EQ(error.result(), platform::Value(true));
}

TEST_F(WindowSizeTest, AMessageAndItsHeaderStayWithinTheirPanel)
{
    const QString text = "Load the units";
    drawGroup(1, in(2, {{"message", text}}));
    for (const QSize &size : sizes) {
        resizeTo(size);
        const double width = std::max(size.width(), 500);
        EXPECT_EQ(label(pane("G2"), text)->frame().width(), width - 20.0);
        EXPECT_LE(label(pane("G2"), "G2")->frame().width(), width);
    }
}

TEST_F(WindowSizeTest, TheFieldThatTheFocusGoesOnToIsScrolledIntoSightWithItsBox)
{
    station.windowSize = {600, 400};
    showView(8, in(1, slotEntry));
    ASSERT_TRUE(waitForPanel("8"));
    showView(0, in(1, slotEntry));
    ASSERT_TRUE(waitForPanel("0"));
    ASSERT_TRUE(isWhollySeen(field("0-SN")));
    ASSERT_FALSE(isWhollySeen(field("8-SN")));
    scan("A1");
    EXPECT_TRUE(field("8-SN")->isFirstResponder());
    EXPECT_TRUE(isWhollySeen(field("8-SN")));
    EXPECT_TRUE(isWhollySeen(label(field("8-SN")->superview(), "S1")));
}

TEST_F(WindowSizeTest, TheFieldThatHasTheFocusStaysInSightWhenBandsMove)
{
    station.windowSize = {600, 400};
    showView(4, in(2, slotEntry));
    ASSERT_TRUE(waitForPanel("4"));
    SequencerCall &tall = showGroup(0, in(1, switches));
    ASSERT_TRUE(waitForPanel("G1"));
    ASSERT_TRUE(field("4-SN")->becomeFirstResponder());
    ASSERT_TRUE(isWhollySeen(field("4-SN")));
    // Not by the mouse, which would have to scroll away from the field.
    button("G1", "OK")->sendAction();
    ASSERT_TRUE(tall.waitUntilFinished());
    EXPECT_EQ(documentSize().height(), 708.0);
    EXPECT_TRUE(isWhollySeen(field("4-SN")));
}

TEST_F(WindowSizeTest, TheFieldThatHasTheFocusStaysInSightWhenTheWindowIsResized)
{
    station.windowSize = {1280, 1500};
    drawSlot(8, in(1, slotEntry));
    drawSlot(3, in(1, slotEntry));
    for (const QSize &size : sizes) {
        resizeTo(size);
        EXPECT_TRUE(field("3-SN")->isFirstResponder());
        EXPECT_TRUE(isWhollySeen(field("3-SN"))) << size.width() << " x " << size.height();
    }
}

} // namespace
