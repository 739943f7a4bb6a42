#include "station/window/StatusTable.h"

#include "kovan/KovanUIExtension/KVKColorEngine.h"
#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "station/look/Contrast.h"
#include "station/look/WindowLook.h"
#include "station/window/BadgeText.h"
#include "station/window/StatusDelegate.h"
#include "tests/support/Wait.h"

#include <QAction>
#include <QHeaderView>
#include <QImage>
#include <QMenu>
#include <QPaintEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextDocumentFragment>

#include <gtest/gtest.h>

using platform::Color;
using platform::Value;
using station::BadgeText;
using station::contrast;
using station::StatusDelegate;
using station::StatusModel;
using station::StatusTable;
using station::SystemState;

namespace {

constexpr SystemState AllStates[] = {SystemState::Idle,   SystemState::Running, SystemState::Waiting,
                                     SystemState::Passed, SystemState::Failed,  SystemState::Erred,
                                     SystemState::Stopped};
const Color blue{0.2, 0.4, 0.8, 1.0};
const Color yellow{1.0, 1.0, 0.0, 1.0};

/// What of a widget is painted, from begin() on.
class PaintedArea : public QObject
{
public:
    explicit PaintedArea(QWidget *widget) { widget->installEventFilter(this); }

    int begin()
    {
        m_area = {};
        return m_times;
    }
    [[nodiscard]] int times() const { return m_times; }
    [[nodiscard]] bool covers(const QRect &rect) const { return QRegion(rect).subtracted(m_area).isEmpty(); }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            ++m_times;
            m_area += static_cast<QPaintEvent *>(event)->region();
        }
        return false;
    }

private:
    QRegion m_area;
    int m_times = 0;
};

/// Two groups of two slots; system 1 has colours of its own.
class StatusTableTest : public ::testing::Test
{
protected:
    StatusTableTest()
    {
        KVKConfigEngine::sharedConfigEngine()->setStatusTableCustomRowColorEnabled(true);
        KVKColorEngine::setProviders([](const Value &index) { return onlyOne(index, blue); },
                                     [](const Value &index) { return onlyOne(index, yellow); });
        table.resize(400, 300);
        table.show();
    }
    ~StatusTableTest() override { KVKColorEngine::setProviders({}, {}); }

    static std::optional<Color> onlyOne(const Value &index, const Color &color)
    {
        return index.toInt() == 1 ? std::optional(color) : std::nullopt;
    }
    [[nodiscard]] QVariant cell(int row, int column, int role = Qt::DisplayRole) const
    {
        return table.model()->index(row, column).data(role);
    }
    [[nodiscard]] QRect rectOf(int row, int column) const
    {
        return table.visualRect(table.model()->index(row, column));
    }
    [[nodiscard]] QFont boldFont() const
    {
        QFont font = table.font();
        font.setBold(true);
        return font;
    }
    [[nodiscard]] QImage picture() { return table.viewport()->grab().toImage(); }

    StatusTable table{{{0, "G1", "S1"}, {1, "G1", "S2"}, {2, "G2", "S1"}, {3, "G2", "S2"}}};
};

} // namespace

TEST_F(StatusTableTest, NamesEverySystemByNumberGroupAndSlot)
{
    ASSERT_EQ(table.model()->rowCount(), 4);
    EXPECT_EQ(cell(2, StatusModel::IndexColumn), "2");
    EXPECT_EQ(cell(2, StatusModel::GroupColumn), "G2");
    EXPECT_EQ(cell(2, StatusModel::SlotColumn), "S1");
    EXPECT_EQ(cell(2, StatusModel::StateColumn), "Idle");
}

TEST_F(StatusTableTest, ShowsTheStateAndWhatIsSaidAboutIt)
{
    table.statusModel()->setState(1, SystemState::Running, {});
    table.statusModel()->setState(2, SystemState::Failed, "wrong unit");
    EXPECT_EQ(cell(1, StatusModel::StateColumn), "Running");
    EXPECT_EQ(cell(2, StatusModel::StateColumn), "Failed");
    EXPECT_EQ(cell(2, StatusModel::AboutColumn), "wrong unit");
    EXPECT_EQ(cell(2, 0, StatusModel::WholeStateRole), "Failed: wrong unit");
    EXPECT_EQ(cell(2, StatusModel::StateColumn, Qt::ToolTipRole), "Failed: wrong unit");
    EXPECT_EQ(cell(3, StatusModel::StateColumn), "Idle");
}

TEST_F(StatusTableTest, WritesEveryStateAsOneWordThatBeginsWithACapital)
{
    const std::pair<SystemState, const char *> words[] = {
        {SystemState::Idle, "Idle"},       {SystemState::Running, "Running"},
        {SystemState::Waiting, "Waiting"}, {SystemState::Passed, "Passed"},
        {SystemState::Failed, "Failed"},   {SystemState::Erred, "Error"},
        {SystemState::Stopped, "Stopped"}};
    for (const auto &[state, word] : words) {
        table.statusModel()->setState(0, state, {});
        EXPECT_EQ(cell(0, StatusModel::StateColumn), word);
    }
}

TEST_F(StatusTableTest, ANewStateReplacesTheTextOfTheFormerOne)
{
    table.statusModel()->setState(2, SystemState::Failed, "wrong unit");
    table.statusModel()->setState(2, SystemState::Running, {});
    EXPECT_EQ(cell(2, StatusModel::StateColumn), "Running");
}

TEST_F(StatusTableTest, WhereThereIsNoRowThereIsNothingToLookAt)
{
    const QImage whole = picture();
    EXPECT_EQ(whole.pixelColor(whole.width() / 2, whole.height() - 5),
              table.palette().color(QPalette::Window));
}

TEST_F(StatusTableTest, PaintsARowInItsSystemsColours)
{
    EXPECT_EQ(cell(1, StatusModel::GroupColumn, Qt::BackgroundRole).value<QBrush>().color(), blue.toQColor());
    EXPECT_EQ(cell(1, StatusModel::GroupColumn, Qt::ForegroundRole).value<QBrush>().color(),
              yellow.toQColor());
    EXPECT_EQ(picture().pixelColor(rectOf(1, StatusModel::GroupColumn).topLeft() + QPoint(2, 2)),
              blue.toQColor());
}

TEST_F(StatusTableTest, PaintsARowWithoutColoursWhite)
{
    EXPECT_EQ(picture().pixelColor(rectOf(0, StatusModel::GroupColumn).topLeft() + QPoint(2, 2)),
              QColor(Qt::white));
}

TEST_F(StatusTableTest, PaintsEveryRowWhiteWhereTheStationHasNoRowColours)
{
    KVKConfigEngine::sharedConfigEngine()->setStatusTableCustomRowColorEnabled(false);
    EXPECT_FALSE(cell(1, StatusModel::GroupColumn, Qt::BackgroundRole).isValid());
    EXPECT_EQ(picture().pixelColor(rectOf(1, StatusModel::GroupColumn).topLeft() + QPoint(2, 2)),
              QColor(Qt::white));
}

TEST_F(StatusTableTest, PaintsTheStateAsABadgeOfItsColour)
{
    table.statusModel()->setState(0, SystemState::Passed, {});
    const QPoint rightOfText(rectOf(0, StatusModel::StateColumn).right() - 12,
                             rectOf(0, StatusModel::StateColumn).center().y());
    EXPECT_EQ(picture().pixelColor(rightOfText), StatusDelegate::badgeColor(SystemState::Passed));
}

TEST_F(StatusTableTest, FramesAHighlightedRowAndNoOther)
{
    table.statusModel()->setHighlighted(1, true);
    const QImage image = picture();
    EXPECT_EQ(image.pixelColor(rectOf(1, StatusModel::IndexColumn).topLeft()),
              StatusDelegate::highlightColor());
    EXPECT_EQ(image.pixelColor(rectOf(1, StatusModel::SlotColumn).bottomLeft()),
              StatusDelegate::highlightColor());
    EXPECT_NE(image.pixelColor(rectOf(2, StatusModel::IndexColumn).topLeft()),
              StatusDelegate::highlightColor());
}

TEST_F(StatusTableTest, ARowStaysFramedUntilTheLastHighlightIsTakenBack)
{
    table.statusModel()->setHighlighted(1, true);
    table.statusModel()->setHighlighted(1, true);
    table.statusModel()->setHighlighted(1, false);
    EXPECT_TRUE(cell(1, 0, StatusModel::HighlightRole).toBool());
    table.statusModel()->setHighlighted(1, false);
    EXPECT_FALSE(cell(1, 0, StatusModel::HighlightRole).toBool());
    table.statusModel()->setHighlighted(1, false);
    table.statusModel()->setHighlighted(1, true);
    EXPECT_TRUE(cell(1, 0, StatusModel::HighlightRole).toBool());
}

TEST_F(StatusTableTest, ARowIsPaintedAgainOnlyWhenItsFrameComesOrGoes)
{
    int changes = 0;
    QObject::connect(table.statusModel(), &StatusModel::dataChanged, &table, [&changes] { ++changes; });
    for (const bool highlighted : {true, true, false})
        table.statusModel()->setHighlighted(1, highlighted);
    EXPECT_EQ(changes, 1);
    table.statusModel()->setHighlighted(1, false);
    EXPECT_EQ(changes, 2);
}

TEST_F(StatusTableTest, RowsThatChangeInABurstArePaintedOnceForAllOfIt)
{
    PaintedArea painted(table.viewport());
    // Serves no timer, so that no frame comes in between.
    const auto paintWhatWaits = [] { QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest); };
    ASSERT_TRUE(testsupport::waitUntil([&] { return painted.times() > 0; }));
    paintWhatWaits();
    const int before = painted.begin();
    for (int change = 0; change < 50; ++change) {
        table.statusModel()->setState(1, SystemState::Waiting, QString::number(change % 10));
        table.statusModel()->setHighlighted(2, change % 2 == 0);
        paintWhatWaits();
    }
    EXPECT_EQ(painted.times(), before);
    EXPECT_TRUE(testsupport::waitUntil([&] {
        return painted.covers(rectOf(1, StatusModel::StateColumn)) &&
               painted.covers(rectOf(2, StatusModel::IndexColumn));
    }));
    EXPECT_FALSE(painted.covers(rectOf(0, StatusModel::StateColumn)));
}

TEST_F(StatusTableTest, LosesTheFrameWithTheHighlight)
{
    table.statusModel()->setHighlighted(1, true);
    table.statusModel()->setHighlighted(1, false);
    EXPECT_EQ(picture().pixelColor(rectOf(1, StatusModel::IndexColumn).topLeft()), blue.toQColor());
}

TEST_F(StatusTableTest, IgnoresASystemThatItDoesNotHave)
{
    table.statusModel()->setHighlighted(17, true);
    table.statusModel()->setHighlighted(Q_UINT64_C(0xffffffffffffffff), true);
    table.statusModel()->setState(-1, SystemState::Failed, {});
    for (int row = 0; row < 4; ++row) {
        EXPECT_FALSE(cell(row, 0, StatusModel::HighlightRole).toBool());
        EXPECT_EQ(cell(row, StatusModel::StateColumn), "Idle");
    }
}

TEST_F(StatusTableTest, AsksForTheWidthAtWhichAllColumnsHaveTheirUsualTextsInOneLine)
{
    table.statusModel()->setState(0, SystemState::Waiting, "the operator");
    table.statusModel()->setAnswer(0, QStringLiteral("SN26000001 · OK"));
    table.statusModel()->setSequence(0, "sequence.lua");
    table.resize(table.sizeHint().width(), 160);
    for (int column = 0; column < StatusModel::ColumnCount; ++column) {
        EXPECT_FALSE(table.isColumnHidden(column)) << column;
        EXPECT_GE(table.columnWidth(column),
                  StatusDelegate::textWidth(cell(0, column).toString(), table.font(), column))
            << column;
    }
    EXPECT_EQ(rectOf(0, StatusModel::StateColumn).height(), rectOf(1, StatusModel::StateColumn).height());
    EXPECT_EQ(table.horizontalScrollBar()->maximum(), 0);
}

TEST_F(StatusTableTest, ColumnsGiveWayInTheirOrderAndTheStateSaysWhatTheyDid)
{
    const int whole = table.sizeHint().width();
    table.resize(whole - 10, 160);
    EXPECT_FALSE(table.isColumnHidden(StatusModel::SequenceColumn));
    const QList<int> order{StatusModel::SequenceColumn, StatusModel::AboutColumn, StatusModel::AnswerColumn};
    QList<int> gone;
    for (int width = whole; width >= table.minimumSizeHint().width(); --width) {
        table.resize(width, 160);
        for (const int column : order) {
            if (table.isColumnHidden(column) && !gone.contains(column))
                gone.append(column);
        }
        EXPECT_EQ(table.horizontalScrollBar()->maximum(), 0) << width;
    }
    EXPECT_EQ(gone, order);
    // What has gone is told where it has gone to.
    const int before = rectOf(0, StatusModel::StateColumn).height();
    table.statusModel()->setState(0, SystemState::Erred, "a reason that takes more lines than one or two");
    EXPECT_GT(rectOf(0, StatusModel::StateColumn).height(), before);
}

TEST_F(StatusTableTest, LettersAreLargeWhereThereIsRoomAndSmallerWhereThereIsNot)
{
    table.resize(table.sizeHint().width() + 200, 600);
    EXPECT_EQ(table.letters(), 26);
    table.resize(table.width(), 4 * 36 + 30);
    EXPECT_EQ(table.letters(), 18);
    table.resize(table.minimumSizeHint().width(), 600);
    EXPECT_EQ(table.letters(), 18);
}

TEST_F(StatusTableTest, AColumnThatAPersonHidesOrResizesStaysSoTheNextTime)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("window.ini");
    const auto entry = [](StatusTable &shown, int column) {
        auto *menu = new QMenu(&shown);
        shown.fillColumnMenu(menu);
        return menu->actions().at(column);
    };
    table.rememberIn(file);
    table.resize(900, 300);
    entry(table, StatusModel::GroupColumn)->trigger();
    EXPECT_TRUE(table.isColumnHidden(StatusModel::GroupColumn));
    EXPECT_FALSE(entry(table, StatusModel::StateColumn)->isEnabled());
    table.horizontalHeader()->resizeSection(StatusModel::SlotColumn, 123);
    StatusTable next({{0, "G1", "S1"}});
    next.rememberIn(file);
    next.resize(900, 300);
    next.show();
    EXPECT_TRUE(next.isColumnHidden(StatusModel::GroupColumn));
    EXPECT_EQ(next.columnWidth(StatusModel::SlotColumn), 123);
    EXPECT_FALSE(entry(next, StatusModel::GroupColumn)->isChecked());
    entry(next, StatusModel::ColumnCount + 1)->trigger();
    EXPECT_FALSE(next.isColumnHidden(StatusModel::GroupColumn));
    EXPECT_NE(next.columnWidth(StatusModel::SlotColumn), 123);
}

TEST_F(StatusTableTest, CountsTheTimeInAStateWhileSequencesRun)
{
    std::chrono::steady_clock::time_point now{};
    StatusModel *model = table.statusModel();
    model->setClock([&] { return now; });
    const auto time = [&](int row) { return cell(row, StatusModel::TimeColumn).toString(); };
    EXPECT_FALSE(model->tick().isActive());
    EXPECT_EQ(time(0), "");
    model->setRunning(true);
    EXPECT_TRUE(model->tick().isActive());
    EXPECT_EQ(model->tick().interval(), 1000);
    model->setState(0, SystemState::Running, {});
    now += std::chrono::seconds(67);
    EXPECT_EQ(time(0), "1:07");
    model->setState(0, SystemState::Running, {});
    EXPECT_EQ(time(0), "1:07") << "it is the same state";
    model->setState(0, SystemState::Waiting, "the operator");
    EXPECT_EQ(time(0), "0:00");
    now += std::chrono::hours(1);
    model->setRunning(false);
    now += std::chrono::hours(1);
    EXPECT_EQ(time(0), "1:00:00") << "nothing runs any more";
    EXPECT_FALSE(model->tick().isActive());
    EXPECT_EQ(time(1), "") << "nothing has run for it";
    model->setRunning(true);
    EXPECT_EQ(time(0), "0:00");
}

TEST_F(StatusTableTest, ATickTellsOfTheTimesAndOfNothingElse)
{
    const QSignalSpy changes(table.model(), &QAbstractItemModel::dataChanged);
    table.statusModel()->setRunning(true);
    ASSERT_EQ(changes.count(), 1);
    const auto first = changes.first().at(0).toModelIndex();
    const auto last = changes.first().at(1).toModelIndex();
    EXPECT_EQ(first, table.model()->index(0, StatusModel::TimeColumn));
    EXPECT_EQ(last, table.model()->index(3, StatusModel::TimeColumn));
}

TEST_F(StatusTableTest, InTheDarkARowWithoutColoursIsDarkAndCanBeRead)
{
    const QPalette dark = station::windowPalette(true);
    table.setPalette(dark);
    EXPECT_EQ(picture().pixelColor(rectOf(0, StatusModel::GroupColumn).topLeft() + QPoint(2, 2)),
              dark.color(QPalette::Base));
    const QColor text = StatusDelegate::textColor(table.model()->index(0, 0), dark.color(QPalette::Base),
                                                  dark.color(QPalette::Text));
    EXPECT_GE(contrast(text, dark.color(QPalette::Base)), station::ReadableContrast);
    EXPECT_EQ(picture().pixelColor(rectOf(1, StatusModel::GroupColumn).topLeft() + QPoint(2, 2)),
              blue.toQColor());
}

TEST_F(StatusTableTest, RowsKeepTheirHeightWhileUsualStatesComeAndGo)
{
    table.resize(table.minimumSizeHint().width(), 400);
    const int before = rectOf(0, StatusModel::StateColumn).height();
    for (const SystemState state : {SystemState::Running, SystemState::Passed, SystemState::Stopped}) {
        table.statusModel()->setState(0, state, {});
        EXPECT_EQ(rectOf(0, StatusModel::StateColumn).height(), before);
    }
    table.statusModel()->setState(0, SystemState::Waiting, "the operator");
    EXPECT_EQ(rectOf(0, StatusModel::StateColumn).height(), before);
    EXPECT_LE(rectOf(0, StatusModel::StateColumn).right(), table.viewport()->rect().right());
}

TEST_F(StatusTableTest, ALongStateMakesItsRowHigherAndOnlyThat)
{
    table.resize(table.minimumSizeHint().width(), 400);
    const int before = rectOf(0, StatusModel::StateColumn).height();
    table.statusModel()->setState(0, SystemState::Erred, "ask.lua:3: the fixture is open");
    EXPECT_GT(rectOf(0, StatusModel::StateColumn).height(), before);
    EXPECT_EQ(rectOf(1, StatusModel::StateColumn).height(), before);
    table.statusModel()->setState(0, SystemState::Passed, {});
    EXPECT_EQ(rectOf(0, StatusModel::StateColumn).height(), before);
}

TEST_F(StatusTableTest, AStateOfAMegabyteTakesAFewLinesAndStandsWholeInItsTooltip)
{
    const QString text(1'000'000, 'x');
    table.statusModel()->setState(0, SystemState::Erred, text);
    EXPECT_LT(rectOf(0, StatusModel::StateColumn).height(), 120);
    EXPECT_EQ(cell(0, StatusModel::StateColumn, Qt::ToolTipRole), "Error: " + text);
}

TEST_F(StatusTableTest, AMessageThatLooksLikeMarkupIsShownAsItIsInItsTooltip)
{
    table.statusModel()->setState(0, SystemState::Erred, "ask.lua:1: unexpected symbol near <b>x</b>");
    const QString tip = cell(0, StatusModel::StateColumn, Qt::ToolTipRole).toString();
    EXPECT_EQ(QTextDocumentFragment::fromHtml(tip).toPlainText(),
              "Error: ask.lua:1: unexpected symbol near <b>x</b>");
}

TEST_F(StatusTableTest, ABadgeGivesEachOfItsLinesTheRoomItNeeds)
{
    const QString text = "Error: ask.lua:3: the fixture is open";
    const BadgeText badge(text, boldFont());
    EXPECT_EQ(badge.heightFor(badge.width()), QFontMetrics(boldFont()).height());
    EXPECT_GT(badge.heightFor(badge.width() / 3), badge.heightFor(badge.width()));
    // A word that is longer than the line is broken rather than cut.
    EXPECT_GT(BadgeText(QString(60, 'x'), boldFont()).heightFor(100), badge.heightFor(badge.width()));
}

TEST_F(StatusTableTest, LongNamesLeaveTheStateReachable)
{
    StatusTable wide({{0, QString(40, 'G'), QString(40, 'S')}});
    wide.resize(wide.minimumSizeHint().width(), 200);
    wide.show();
    EXPECT_GT(wide.horizontalScrollBar()->maximum(), 0);
    wide.horizontalScrollBar()->setValue(wide.horizontalScrollBar()->maximum());
    const QRect state = wide.visualRect(wide.model()->index(0, StatusModel::StateColumn));
    EXPECT_LE(state.right(), wide.viewport()->rect().right());
    EXPECT_LE(wide.minimumSizeHint().width(), 330);
}

TEST_F(StatusTableTest, EveryBadgesTextCanBeRead)
{
    for (const SystemState state : AllStates) {
        EXPECT_GE(contrast(StatusDelegate::badgeColor(state), StatusDelegate::badgeTextColor()),
                  station::ReadableContrast)
            << stateText(state).toStdString();
    }
}

TEST_F(StatusTableTest, ATextThatCouldNotBeReadOnItsRowIsBlackOrWhite)
{
    const struct
    {
        Color background;
        Color text;
        QColor shown;
    } cases[] = {{blue, yellow, yellow.toQColor()},
                 {yellow, {1.0, 1.0, 0.6, 1.0}, Qt::black},
                 {blue, {0.1, 0.2, 0.6, 1.0}, Qt::white},
                 // Nearly all of the white below a translucent colour shows.
                 {{0.0, 0.0, 0.0, 0.1}, {1.0, 1.0, 1.0, 1.0}, Qt::black},
                 {{0.5, 0.5, 0.5, 1.0}, {0.5, 0.5, 0.5, 1.0}, Qt::black}};
    for (const auto &each : cases) {
        KVKColorEngine::setProviders([&](const Value &index) { return onlyOne(index, each.background); },
                                     [&](const Value &index) { return onlyOne(index, each.text); });
        EXPECT_EQ(StatusDelegate::textColor(table.model()->index(1, 0)), each.shown);
    }
}

TEST_F(StatusTableTest, ContrastIsCountedAsTheGuidelinesDo)
{
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21.0, 1e-9);
    EXPECT_NEAR(contrast(Qt::white, Qt::white), 1.0, 1e-9);
    EXPECT_NEAR(contrast(QColor("#777777"), Qt::white), 4.478, 1e-3);
    EXPECT_NEAR(contrast(Qt::red, Qt::white), 3.998, 1e-3);
}

TEST_F(StatusTableTest, FindsRowsByIndexAlsoWhenTheyAreNotInOrder)
{
    StatusModel model({{5, "G", "A"}, {3, "G", "B"}});
    model.setState(3, SystemState::Passed, {});
    EXPECT_EQ(model.index(0, StatusModel::StateColumn).data(), "Idle");
    EXPECT_EQ(model.index(1, StatusModel::StateColumn).data(), "Passed");
}
