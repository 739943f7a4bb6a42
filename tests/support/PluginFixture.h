#pragma once

#include "platform/Error.h"
#include "platform/Value.h"
#include "platform/View.h"
#include "plugin/InteractiveView.h"
#include "plugin/Rooms.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/LogTrap.h"
#include "tests/support/Printing.h"
#include "tests/support/SequencerCall.h"

#include <QHash>
#include <QStringList>
#include <QWidget>

#include <gtest/gtest.h>

#include <atomic>
#include <deque>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace platform {
class Button;
class CollectionView;
class ScrollView;
class SplitView;
class TextField;
} // namespace platform

namespace testsupport {

/// What the host tells the plug-in about the station that a test takes place in.
struct Station
{
    QStringList groups{"G1", "G2"};
    QStringList slotNames{"S1", "S2", "S3", "S4"};
    /// The mappings as they are, when groups times slots is not what is wanted.
    std::optional<platform::Array> systemGroups;
    std::optional<platform::Array> systemSlots;
    bool customColors = false;
    QHash<qint64, platform::Color> backgrounds;
    QHash<qint64, platform::Color> texts;
    QSize windowSize{1280, 800};
};

/// A station with a window that shows the plug-in's view, a sequencer that calls the plug-in on threads of
/// its own, and the hands of an operator.
///
/// A test changes `station` first; everything else starts the plug-in on first use. At the end the calls that
/// still wait are interrupted, so that a test that fails half way ends all the same.
///
/// Thread: the main thread. Waiting verbs serve the event loop meanwhile and fail the test after a generous
/// limit.
class PluginFixture : public ::testing::Test
{
protected:
    using Highlight = std::pair<quint64, bool>;

    PluginFixture();
    ~PluginFixture() override;
    void TearDown() override;

    /// Makes the controller and shows its view in the active window. Called by every verb that needs it.
    void start();
    interactive::InteractiveView &plugin();
    /// A window with the plug-in's view in it. Called once, by start().
    virtual std::unique_ptr<QWidget> makeWindow();
    /// What the plug-in is made of.
    interactive::Rooms &rooms();
    /// Whose panel a show call with these numbers draws.
    interactive::PanelSubject subject(const platform::Value &groupNumber, const platform::Value &systemIndex);
    QWidget &window();

    // The sequencer
    SequencerCall &showView(const platform::Value &systemIndex, const platform::Dictionary &config);
    SequencerCall &showGroup(const platform::Value &groupNumber, const platform::Dictionary &config);
    /// The same by a caller that does not ask for errors.
    SequencerCall &showViewWithoutError(const platform::Value &systemIndex,
                                        const platform::Dictionary &config);
    SequencerCall &showGroupWithoutError(const platform::Value &groupNumber,
                                         const platform::Dictionary &config);
    /// Sets the number of passes as a sequence does, and waits until it is set.
    platform::Value setLoop(const platform::Value &maximum);
    /// A call for these slots of a group, which the operator answers with a scan for each and "OK".
    void answerGroup(qint64 group, const platform::Array &slotNames, const QStringList &scans);
    /// Any other work of a sequence, on a thread of its own.
    SequencerCall &onSequencer(SequencerCall::Function function);

    // What is on the screen, found in the view tree alone
    /// The plug-in's view, and in it the scroll view around the panels and the split view that holds them.
    platform::View *rootView();
    platform::ScrollView *scrollView();
    platform::SplitView *splitView();
    /// The overview whose tiles stand for the group's systems; null when there is none.
    platform::CollectionView *overviewOf(const QString &group);
    /// Those that are there, in their order; of the plug-in, or of any controller's view.
    QList<platform::Button *> groupButtons() { return groupButtonsIn(rootView()); }
    static QList<platform::Button *> groupButtonsIn(const platform::View *root);
    /// The small field that takes the number of passes.
    platform::TextField *loopField();
    /// The view that holds a panel's buttons, its group's container or its slot's box; null when there is
    /// none.
    platform::View *panel(const QString &panelKey);
    /// Whether a panel with buttons can be seen.
    bool isOpen(const QString &panelKey);
    /// False, and a failed test, when no panel of the key opens.
    bool waitForPanel(const QString &panelKey);
    bool waitForPanelGone(const QString &panelKey);
    platform::TextField *field(const QString &identifier);
    /// Any view by its identifier; null when there is none.
    platform::View *view(const QString &identifier);
    /// The direct button of the panel with the title; null when there is none.
    platform::Button *button(const QString &panelKey, const QString &title);
    platform::Button *groupButton(const QString &group);

    /// Serves the event loop until this many calls wait for their turn; false, and a failed test, when they
    /// do not.
    bool waitsForTurn(int calls);

    // The operator
    /// Real key events to whatever has the focus; "\n" is Return.
    void type(const QString &text);
    /// What a bar code scanner sends: the text and Return.
    void scan(const QString &text);
    /// A real press and release of the mouse on the view.
    void click(QWidget *view);
    /// Clicks the panel's button of that title, and waits until what it started has ended.
    void press(const QString &panelKey, const QString &title);
    /// Serves the event loop until every confirmation begun so far has ended.
    void settle();

    /// The panels' fields in their order, as a press of any button lists them in the log.
    QString fieldsInLog();
    bool knowsFieldsOf(const QString &panelKey);

    // What the plug-in keeps
    platform::Dictionary record(const QString &panelKey);
    platform::Dictionary status(const QString &panelKey);

    /// Announces lines at error level that hold the text; others fail the test.
    static void expectError(const QString &part) { testsupport::expectError(part); }
    /// Whether exactly one such line was written, to both places.
    ::testing::AssertionResult loggedOnce(KVKLogLevel level, const QString &line) const;
    /// How many lines with this text both places have; fails the test when they disagree.
    int timesLogged(KVKLogLevel level, const QString &line) const;
    /// How many lines of any level the proxy has got that begin like this.
    int timesLoggedFrom(const QString &beginning) const;

    Station station;
    LogRecorder log;
    std::vector<Highlight> highlights;
    /// Lines that the plug-in has asked the host to show to the operator.
    QStringList operatorLines;

private:
    void configureHost();
    void endCalls();

    std::atomic<int> m_waitingForTurn{0};
    std::unique_ptr<interactive::InteractiveView> m_plugin;
    std::unique_ptr<QWidget> m_window;
    std::deque<std::unique_ptr<SequencerCall>> m_calls;
};

/// All views below the view, depth first.
QList<platform::View *> descendants(platform::View *view);

} // namespace testsupport
