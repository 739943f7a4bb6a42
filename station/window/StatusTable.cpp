#include "station/window/StatusTable.h"

#include "station/look/WindowLook.h"

#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace station {
namespace {

/// Of slot and state, the largest first.
constexpr std::array<int, 4> Letters{26, 23, 20, 18};
constexpr int HeaderPixels = 12;
constexpr int LeastRowHeight = 36;
constexpr double RowPerLetter = 1.9;
constexpr int WidestName = 140;
constexpr int WidestMinimum = 330;
constexpr int LeastColumn = 20;
constexpr int FirstCellMargin = 8;
constexpr int VisibleRows = 8;
/// Of a screen that shows sixty a second.
constexpr int MillisecondsOfAFrame = 16;
/// A station says the same few things again and again, but for what goes wrong.
constexpr qsizetype MostHeightsKept = 100;
constexpr qsizetype LongestHeightKept = 500; // characters
/// The longest wait of a run in which all goes well: rows keep their height while it comes and goes.
const QString LongestWait = QStringLiteral("the operator");
/// What an answer and a script's name usually take.
const QString UsualAnswer = QStringLiteral("SN26000001 \u00b7 OK");
const QString UsualScript = QStringLiteral("sequence.lua");
const QString FewLetters = QStringLiteral("SN260001");
const QString LongestUsualTime = QStringLiteral("88:88");

QFont withPixels(QFont font, int pixels)
{
    font.setPixelSize(pixels);
    return font;
}

int leastOf(const QList<ColumnWish> &wishes)
{
    return std::accumulate(wishes.cbegin(), wishes.cend(), 0,
                           [](int sum, const ColumnWish &wish) { return sum + wish.least; });
}

} // namespace

StatusTable::StatusTable(const QList<SystemRow> &systems, QWidget *parent)
    : QTableView(parent)
    , m_model(new StatusModel(systems, this))
    , m_delegate(new StatusDelegate(this))
{
    setModel(m_model);
    setItemDelegate(m_delegate);
    setAccessibleName(QStringLiteral("Systems"));
    setLook();
    follow();
}

void StatusTable::setLook()
{
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setFocusPolicy(Qt::TabFocus);
    nameScrollBars(*this);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);
    // What no row stands on is not to be looked at.
    viewport()->setBackgroundRole(QPalette::Window);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    QHeaderView *header = horizontalHeader();
    header->setFont(withPixels(font(), HeaderPixels));
    header->setSectionsClickable(false);
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignCenter);
    header->setMinimumSectionSize(LeastColumn);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    setLetters(Letters.back());
}

void StatusTable::follow()
{
    m_frame.setSingleShot(true);
    m_frame.setInterval(MillisecondsOfAFrame);
    connect(&m_frame, &QTimer::timeout, this, &StatusTable::showChanges);
    connect(m_model, &StatusModel::dataChanged, this,
            [this](const QModelIndex &first, const QModelIndex &last) {
                // Times change each second, and no row for them.
                if (first.column() <= StatusModel::AboutColumn)
                    fitRows(first.row(), last.row());
            });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int column, int, int width) { columnResized(column, width); });
    connect(horizontalHeader(), &QWidget::customContextMenuRequested, this, &StatusTable::showColumnMenu);
}

void StatusTable::rememberIn(const QString &file)
{
    m_columns = ColumnMemory(file);
    share();
}

void StatusTable::columnResized(int column, int width)
{
    if (m_isSharing || width == 0)
        return;
    m_columns.setWidth(static_cast<StatusModel::Column>(column), width);
    share();
}

void StatusTable::fillColumnMenu(QMenu *menu)
{
    menu->clear();
    for (int number = 0; number < StatusModel::ColumnCount; ++number) {
        const auto column = static_cast<StatusModel::Column>(number);
        QAction *action =
            menu->addAction(m_model->headerData(number, Qt::Horizontal, Qt::DisplayRole).toString());
        action->setCheckable(true);
        action->setChecked(!m_columns.isHidden(column));
        action->setEnabled(ColumnMemory::canBeHidden(column));
        connect(action, &QAction::toggled, this, [this, column](bool shown) {
            m_columns.setHidden(column, !shown);
            share();
        });
    }
    menu->addSeparator();
    connect(menu->addAction(QStringLiteral("Usual columns")), &QAction::triggered, this, [this] {
        m_columns.clear();
        share();
    });
}

void StatusTable::showColumnMenu(const QPoint &position)
{
    QMenu menu(this);
    fillColumnMenu(&menu);
    menu.exec(horizontalHeader()->mapToGlobal(position));
}

int StatusTable::letters() const
{
    return font().pixelSize();
}

void StatusTable::setLetters(int pixels)
{
    const QFont wanted = withPixels(font(), pixels);
    if (wanted != font())
        setFont(wanted);
}

int StatusTable::widestText(StatusModel::Column column, const QFont &font) const
{
    int widest = 0;
    for (int row = 0; row < m_model->rowCount(); ++row)
        widest = qMax(widest,
                      StatusDelegate::textWidth(m_model->index(row, column).data().toString(), font, column));
    return qMin(widest, WidestName);
}

/// Kept: to measure so many texts is half of what it takes to open the window, and layouts ask often.
ColumnWish StatusTable::knownWishOf(StatusModel::Column column, const QFont &font) const
{
    const QPair<int, QFont> key(column, font);
    if (const auto known = m_wishes.constFind(key); known != m_wishes.cend())
        return *known;
    return *m_wishes.insert(key, wishOf(column, font));
}

ColumnWish StatusTable::wishOf(StatusModel::Column column, const QFont &font) const
{
    const int header = horizontalHeader()->sectionSizeHint(column);
    const auto widthOf = [&](const QString &text) {
        return qMax(header, StatusDelegate::textWidth(text, font, column));
    };
    const int few = widthOf(FewLetters);
    const auto names = [&] { return qMax(header, widestText(column, font)); };
    switch (column) {
    case StatusModel::AnswerColumn:
        return {widthOf(UsualAnswer), few, 1, 3, true};
    case StatusModel::SequenceColumn:
        return {widthOf(UsualScript), few, 2, 1, false};
    case StatusModel::AboutColumn:
        // Nothing is lost when it goes: the state says it then.
        return {widthOf(LongestWait), widthOf(LongestWait), 0, 2, true};
    case StatusModel::StateColumn:
        return {StatusDelegate::badgeWidth(font), StatusDelegate::badgeWidth(font), 0, 0, true};
    case StatusModel::TimeColumn:
        return {widthOf(LongestUsualTime), widthOf(LongestUsualTime), 0, 5, false};
    case StatusModel::IndexColumn:
        // The frame of a row is twice as wide before its first cell.
        return {names() + FirstCellMargin, names() + FirstCellMargin, 0, 4, false};
    default:
        return {names(), names(), 0, 0, false};
    }
}

QList<ColumnWish> StatusTable::wishes(const QFont &font) const
{
    QList<ColumnWish> all;
    for (int number = 0; number < StatusModel::ColumnCount; ++number) {
        const auto column = static_cast<StatusModel::Column>(number);
        if (m_columns.isHidden(column))
            all.append(ColumnWish{});
        else if (const int chosen = m_columns.width(column); chosen > 0)
            all.append({chosen, chosen, 0, 0, false});
        else
            all.append(knownWishOf(column, font));
    }
    return all;
}

/// A row with nothing longer than usual in it.
int StatusTable::rowHeightFor(const QFont &font, int stateWidth, bool stateSaysAll) const
{
    RowHeight &known = m_rowHeight;
    if (known.height > 0 && known.font == font && known.stateWidth == stateWidth &&
        known.stateSaysAll == stateSaysAll)
        return known.height;
    const int badge = StatusDelegate::badgeHeight(stateSaysAll ? LongestWait : QString(), font, stateWidth);
    const int height = std::max({LeastRowHeight, static_cast<int>(font.pixelSize() * RowPerLetter), badge});
    known = {font, stateWidth, stateSaysAll, height};
    return height;
}

/// As large as all rows have room for below one another and the columns side by side: letters that can be
/// read from afar are worth more than a column of their own for what the state can say as well.
int StatusTable::lettersThatFit() const
{
    for (const int pixels : Letters) {
        const QFont font = withPixels(this->font(), pixels);
        QList<ColumnWish> needed = wishes(font);
        needed[StatusModel::AboutColumn] = needed[StatusModel::SequenceColumn] = ColumnWish{};
        const int height =
            rowHeightFor(font, needed[StatusModel::StateColumn].wanted, true) * m_model->rowCount();
        if (leastOf(needed) <= viewport()->width() && height <= viewport()->height())
            return pixels;
    }
    return Letters.back();
}

void StatusTable::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    share();
}

void StatusTable::changeEvent(QEvent *event)
{
    // The style says what goes beside a header's text.
    if (event->type() == QEvent::StyleChange)
        m_wishes.clear();
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange)
        m_aboutHeights.clear();
    QTableView::changeEvent(event);
}

void StatusTable::share()
{
    if (std::exchange(m_isSharing, true))
        return;
    setLetters(lettersThatFit());
    const QList<int> widths = fitColumns(wishes(font()), viewport()->width());
    int first = -1;
    int last = 0;
    for (int column = 0; column < widths.size(); ++column) {
        setColumnHidden(column, widths[column] == 0);
        if (widths[column] == 0)
            continue;
        setColumnWidth(column, widths[column]);
        first = first < 0 ? column : first;
        last = column;
    }
    m_delegate->setEdges(first, last);
    m_delegate->setStateSaysAll(widths[StatusModel::AboutColumn] == 0);
    m_isSharing = false;
    m_aboutHeights.clear();
    fitRows(0, m_model->rowCount() - 1);
    viewport()->update();
}

/// A text that does not fit into its column gets a higher row.
void StatusTable::fitRows(int first, int last)
{
    const int usual = rowHeightFor(font(), columnWidth(StatusModel::StateColumn), m_delegate->stateSaysAll());
    for (int row = first; row <= last; ++row) {
        const QString about = m_model->index(row, StatusModel::AboutColumn).data().toString();
        if (const int height = qMax(usual, heightNeededBy(about)); rowHeight(row) != height)
            setRowHeight(row, height);
    }
}

/// Kept: a group's panel changes all its rows, and what they wait for is the same.
int StatusTable::heightNeededBy(const QString &about)
{
    if (const auto known = m_aboutHeights.constFind(about); known != m_aboutHeights.cend())
        return *known;
    if (m_aboutHeights.size() >= MostHeightsKept)
        m_aboutHeights.clear();
    const int needed = m_delegate->stateSaysAll()
                           ? StatusDelegate::badgeHeight(about, font(), columnWidth(StatusModel::StateColumn))
                           : StatusDelegate::textHeight(about, font(), StatusModel::AboutColumn,
                                                        columnWidth(StatusModel::AboutColumn));
    // What a script says when it errs may be a megabyte.
    if (about.size() <= LongestHeightKept)
        m_aboutHeights.insert(about, needed);
    return needed;
}

/// Each call of a sequence changes its row some times in a row; nobody sees more than the last of a frame.
void StatusTable::dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &)
{
    for (int row = first.row(); row <= last.row(); ++row) {
        const auto known = m_changed.find(row);
        if (known == m_changed.end()) {
            m_changed.insert(row, {first.column(), last.column()});
            continue;
        }
        known->first = qMin(known->first, first.column());
        known->last = qMax(known->last, last.column());
    }
    if (!m_frame.isActive())
        m_frame.start();
}

void StatusTable::showChanges()
{
    const QMap<int, Columns> rows = std::exchange(m_changed, {});
    for (auto row = rows.cbegin(); row != rows.cend(); ++row)
        QTableView::dataChanged(m_model->index(row.key(), row->first), m_model->index(row.key(), row->last),
                                {});
}

/// What the scroll bar takes where not all rows can be expected to be seen.
int StatusTable::barWidth() const
{
    return m_model->rowCount() > VisibleRows ? verticalScrollBar()->sizeHint().width() : 0;
}

QSize StatusTable::sizeHint() const
{
    const QList<ColumnWish> all = wishes(withPixels(font(), Letters.back()));
    const int width = std::accumulate(all.cbegin(), all.cend(), 0,
                                      [](int sum, const ColumnWish &wish) { return sum + wish.wanted; });
    return {width + barWidth(), horizontalHeader()->height() + VisibleRows * LeastRowHeight};
}

QSize StatusTable::minimumSizeHint() const
{
    QList<ColumnWish> all = wishes(withPixels(font(), Letters.back()));
    for (const auto column :
         {StatusModel::AboutColumn, StatusModel::AnswerColumn, StatusModel::SequenceColumn})
        all[column] = {};
    return {qMin(leastOf(all) + barWidth(), WidestMinimum), horizontalHeader()->height() + LeastRowHeight};
}

} // namespace station
