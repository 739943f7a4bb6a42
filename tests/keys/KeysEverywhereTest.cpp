#include "station/scanner/ScannerFilter.h"
#include "tests/keys/InStationWindow.h"

#include <QAbstractScrollArea>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>

#include <tuple>

using platform::Array;
using platform::Dictionary;
using testsupport::SequencerCall;

namespace {

/// The window while it runs: a slot's panel that waits for an entry, a group's with switches, the
/// instructions and the open log.
class KeysEverywhereTest : public testsupport::InStationWindow<testsupport::FieldKeysFixture>
{
protected:
    void begin()
    {
        start();
        stationWindow().setRunning(true);
        badge->setRunning(true);
        stationWindow().logPane()->setFolded(false);
        m_runs = std::make_unique<QSignalSpy>(&stationWindow(), &station::StationWindow::runRequested);
        m_stops = std::make_unique<QSignalSpy>(&stationWindow(), &station::StationWindow::stopRequested);
        asked = &showView(
            0, {{"input", Array{"SN"}}, {"instruction", QString("Hold it **up**.\n\n").repeated(20)}});
        ASSERT_TRUE(waitForPanel("0"));
        switches = &showGroup(1, {{"switch", Array{"S1"}}, {"button", Array{"Done"}}});
        ASSERT_TRUE(waitForPanel("G2"));
        ASSERT_TRUE(testsupport::waitUntil([&] { return stationWindow().instructionPane()->isVisible(); }));
    }
    /// A scan as the scanner of a configuration sends it; without a prefix, the text and Return.
    void send(const QString &text, bool withPrefix)
    {
        if (withPrefix && !m_scanner)
            m_scanner = std::make_unique<station::ScannerFilter>(
                &window(), station::ScannerSettings{"]", "#", {Qt::Key_Tab}});
        clock.pause();
        type(withPrefix ? "]" + text + "#" : text);
        key(withPrefix ? Qt::Key_Tab : Qt::Key_Return);
        settle();
    }
    void press(Qt::Key which)
    {
        clock.pause();
        key(which);
        settle();
    }
    [[nodiscard]] qsizetype runs() const { return m_runs->count(); }
    [[nodiscard]] qsizetype stops() const { return m_stops->count(); }

    SequencerCall *asked = nullptr;
    SequencerCall *switches = nullptr;

private:
    std::unique_ptr<QSignalSpy> m_runs;
    std::unique_ptr<QSignalSpy> m_stops;
    std::unique_ptr<station::ScannerFilter> m_scanner;
};

/// Each control that enters no text.
class EveryPlace : public KeysEverywhereTest,
                   public ::testing::WithParamInterface<std::tuple<const char *, bool>>
{
protected:
    static QString place() { return std::get<0>(GetParam()); }
    static bool withPrefix() { return std::get<1>(GetParam()); }
};

TEST_P(EveryPlace, AScanGoesWhereWorkWaitsAndPressesNothing)
{
    begin();
    tabTo(place());
    send("A 1", withPrefix());
    EXPECT_EQ(text("0-SN"), "A 1");
    EXPECT_EQ(stationWindow().message(), "");
    EXPECT_FALSE(asked->finished());
    EXPECT_FALSE(switches->finished());
    EXPECT_EQ(stops(), 0);
    EXPECT_FALSE(stationWindow().logPane()->isFolded());
    EXPECT_EQ(text("Loop"), "0");
}

TEST_P(EveryPlace, AScanThatNobodyWaitsForIsRefusedVisiblyAndPressesNothing)
{
    begin();
    send("A1", withPrefix());
    tabTo(place());
    expectError("B2");
    send("B2", withPrefix());
    // Who is at a panel's button means the field of that panel.
    const bool isAtPanel = place() == "OK, slot S1, group G1";
    EXPECT_EQ(text("0-SN"), isAtPanel ? "B2" : "A1");
    EXPECT_EQ(stationWindow().message().contains("B2"), !isAtPanel)
        << stationWindow().message().toStdString();
    EXPECT_FALSE(asked->finished());
    EXPECT_FALSE(switches->finished());
    EXPECT_EQ(stops(), 0);
    EXPECT_FALSE(stationWindow().logPane()->isFolded());
}

TEST_P(EveryPlace, RunAndStopHaveTheirKeys)
{
    begin();
    tabTo(place());
    key(Qt::Key_F5);
    EXPECT_EQ(runs(), 0);
    key(Qt::Key_F5, Qt::ShiftModifier);
    EXPECT_EQ(stops(), 1);
    stationWindow().setRunning(false);
    if (place() != "Stop")
        tabTo(place());
    key(Qt::Key_F5);
    EXPECT_EQ(runs(), 1);
    EXPECT_EQ(text("0-SN"), "");
}

TEST_P(EveryPlace, EscapePressesNothingAndLosesNoScan)
{
    begin();
    tabTo(place());
    press(Qt::Key_Escape);
    EXPECT_FALSE(asked->finished());
    EXPECT_FALSE(switches->finished());
    EXPECT_EQ(stops(), 0);
    send("A1", withPrefix());
    EXPECT_EQ(text("0-SN"), "A1");
}

INSTANTIATE_TEST_SUITE_P(
    , EveryPlace,
    ::testing::Combine(::testing::Values("Stop", "Systems", "Group G2", "OK, slot S1, group G1",
                                         "Use, slot S1, group G2", "OK, group G2", "Smaller", "Instructions",
                                         "Fold the log", "All levels", "All systems", "Lines of the log"),
                       ::testing::Bool()));

class WithAndWithoutPrefix : public KeysEverywhereTest, public ::testing::WithParamInterface<bool>
{};

TEST_P(WithAndWithoutPrefix, AFieldOfTheHostThatAPersonHasChosenShowsTheScanAndGivesTheKeysBack)
{
    begin();
    tabTo("Text in the log's lines");
    send("A1", GetParam());
    EXPECT_EQ(stationWindow().logPane()->textField()->text(), "A1");
    EXPECT_EQ(text("0-SN"), "");
    send("B2", GetParam());
    EXPECT_EQ(text("0-SN"), "B2");
}

TEST_P(WithAndWithoutPrefix, TheLoopFieldThatAPersonHasChosenShowsTheScanAndGivesTheKeysBack)
{
    begin();
    tabTo("Loop: number of passes");
    send("A1", GetParam());
    EXPECT_EQ(text("Loop"), "A1");
    EXPECT_EQ(text("0-SN"), "");
    send("B2", GetParam());
    EXPECT_EQ(text("0-SN"), "B2");
}

INSTANTIATE_TEST_SUITE_P(, WithAndWithoutPrefix, ::testing::Bool());

TEST_F(KeysEverywhereTest, ReturnAndSpacePressTheButtonThatHasTheFocus)
{
    begin();
    for (const Qt::Key which : {Qt::Key_Return, Qt::Key_Space}) {
        tabTo("Fold the log");
        press(which);
        EXPECT_TRUE(stationWindow().logPane()->isFolded());
        stationWindow().logPane()->setFolded(false);
        tabTo("Larger");
        const double before = stationWindow().instructionPane()->zoom();
        press(which);
        EXPECT_GT(stationWindow().instructionPane()->zoom(), before);
        tabTo("Group G2");
        press(which);
        EXPECT_TRUE(waitForPanelGone("G2"));
        press(which);
        EXPECT_TRUE(waitForPanel("G2"));
        tabTo("All levels");
        press(which);
        EXPECT_NE(QApplication::activePopupWidget(), nullptr);
        stationWindow().logPane()->levelBox()->hidePopup();
    }
    tabTo("OK, group G2");
    press(Qt::Key_Return);
    EXPECT_TRUE(switches->waitUntilFinished());
    EXPECT_FALSE(asked->finished());
    tabTo("Stop");
    press(Qt::Key_Return);
    EXPECT_EQ(stops(), 1);
}

TEST_F(KeysEverywhereTest, TheInstructionsAreScrolledWithTheArrows)
{
    begin();
    tabTo("Instructions");
    stationWindow().instructionPane()->setZoom(8.0);
    stationWindow().resize(1000, 400);
    auto *area = qobject_cast<QAbstractScrollArea *>(window().focusWidget());
    ASSERT_NE(area, nullptr);
    ASSERT_TRUE(testsupport::waitUntil([area] { return area->verticalScrollBar()->maximum() > 0; }));
    key(Qt::Key_Down);
    EXPECT_GT(area->verticalScrollBar()->value(), 0);
}

/// Badge, Run and a scan for each slot, by keys alone, and all of it once more.
TEST_F(KeysEverywhereTest, ADaysWorkIsDoneByTheScannerAndOneKey)
{
    start();
    QObject::connect(&stationWindow(), &station::StationWindow::runRequested, &stationWindow(), [this] {
        ASSERT_EQ(badge->whyNoRun(), std::nullopt);
        badge->setRunning(true);
        stationWindow().setRunning(true);
    });
    badge->takeFocus();
    send("OP7", false);
    EXPECT_EQ(badge->badge(), "OP7");
    for (const QString &unit : QStringList{"A", "B"}) {
        key(Qt::Key_F5);
        ASSERT_TRUE(stationWindow().isRunning());
        std::vector<SequencerCall *> calls;
        for (int system = 0; system < 8; ++system) {
            calls.push_back(&showView(system, {{"input", Array{"SN"}}, {"autoConfirm", true}}));
            ASSERT_TRUE(waitForPanel(QString::number(system)));
        }
        for (int system = 0; system < 8; ++system)
            send(unit + QString::number(system), false);
        QStringList answers;
        for (std::size_t system = 0; system < 8; ++system) {
            ASSERT_TRUE(calls[system]->waitUntilFinished());
            answers.append(calls[system]->result().toMap().value("SN").toString());
        }
        // The first goes where the focus is, into the panel that opened last.
        EXPECT_EQ(answers.join(' ').replace(unit, QString()), "1 2 3 4 5 6 7 0");
        stationWindow().setRunning(false);
        badge->setRunning(false);
    }
    EXPECT_EQ(badge->badge(), "OP7");
    send("OP8", false);
    EXPECT_EQ(badge->badge(), "OP7") << "a text without a form may be a unit's: it is scanned again";
    send("OP8", false);
    EXPECT_EQ(badge->badge(), "OP8");
}

} // namespace
