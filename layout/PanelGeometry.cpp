#include "layout/PanelGeometry.h"

#include "platform/LogFormat.h"

#include <algorithm>

#include "common/Messages.h"

namespace interactive {

namespace {

/// A button of 80 points and 16 to the next one.
constexpr double ButtonPitch = 96.0;
constexpr double ButtonRowMargin = 4.0;
constexpr double RowSpacing = 16.0;

/// Rows of slots, rounded up.
quint64 rowsFor(quint64 slotCount, quint64 columns)
{
    return (slotCount + columns - 1) / columns;
}

} // namespace

PanelGeometry::PanelGeometry(PanelKind kind, quint64 slotCount, quint64 columns, double splitViewWidth)
    : m_kind(kind)
    , m_columns(columns)
    , m_rows(rowsFor(slotCount, columns))
    , m_splitViewWidth(splitViewWidth)
{}

QString PanelGeometry::whyNotDrawable(quint64 groupCount, quint64 slotCount, quint64 columns,
                                      const QString &columnText)
{
    constexpr auto Largest = platform::LargestCoordinate;
    constexpr auto MostColumns = static_cast<quint64>(Largest / ColumnWidth);
    if (slotCount == 0)
        return QLatin1String(messages::NoSlots);
    if (columns == 0 || columns > MostColumns)
        return platform::formatMessage(messages::ColumnsDoNotFit, {columnText, MostColumns});
    const double height = static_cast<double>(rowsFor(slotCount, columns)) * RowHeight + AreaMargin;
    // All groups' bands count, since each band begins where those of the groups before it end.
    if (height * static_cast<double>(groupCount) > Largest)
        return platform::formatMessage(messages::RowsDoNotFit, {groupCount, slotCount, columns});
    return {};
}

double PanelGeometry::areaHeight() const
{
    return RowHeight * static_cast<double>(m_rows) + AreaMargin;
}

double PanelGeometry::minimumWidth() const
{
    return static_cast<double>(m_columns) * ColumnWidth;
}

void PanelGeometry::makeRoomForRow(qsizetype buttons, bool hasField)
{
    const double field = hasField ? sharedInput().x() + sharedInput().width() : 0.0;
    const double row = ButtonPitch * static_cast<double>(buttons) + ButtonRowMargin;
    m_rowWidth = buttons > 0 || hasField ? field + RowSpacing + row : 0.0;
}

void PanelGeometry::makeRoomForStatusLine()
{
    if (m_kind == PanelKind::Slot)
        m_lift = 10.0;
}

platform::Size PanelGeometry::needed() const
{
    return {std::max(minimumWidth(), m_rowWidth), areaHeight()};
}

double PanelGeometry::containerWidth() const
{
    return std::max(m_splitViewWidth, needed().width());
}

platform::Rect PanelGeometry::container(double bandBegin) const
{
    return {0.0, bandBegin, containerWidth(), areaHeight()};
}

platform::Rect PanelGeometry::header() const
{
    // Its upper edge is where the separator lies.
    return {8.0, areaHeight() - 27.0, m_splitViewWidth, 25.0};
}

platform::Rect PanelGeometry::separator() const
{
    return {0.0, areaHeight() - 2.0, containerWidth(), 1.0};
}

platform::Rect PanelGeometry::message() const
{
    // 16 points are left free at the left and 4 at the right.
    return {16.0, 16.0, containerWidth() - 20.0, 78.0};
}

platform::Size PanelGeometry::tile() const
{
    return {ColumnWidth, m_kind == PanelKind::Slot ? 110.0 : 64.0};
}

platform::Rect PanelGeometry::overview() const
{
    return {0.0, 0.0, minimumWidth(), static_cast<double>(m_rows) * tile().height() + AreaMargin};
}

platform::Rect PanelGeometry::overviewScroll() const
{
    double y = 0.0;
    // Tiles of a group's panel are lower than the rows of its band. The overview is lifted by part of what
    // they leave, clear of the bottom row; its own margin of 16 points lies below the tiles.
    if (m_kind == PanelKind::Group)
        y = m_rows == 1 ? 30.0 : static_cast<double>(m_rows - 1) * 16.0 + 38.0;
    return {platform::Point(0.0, y), overview().size()};
}

platform::Rect PanelGeometry::sharedInput() const
{
    return {8.0, 8.0, 250.0 * scale() * 1.5, 25.0};
}

platform::Rect PanelGeometry::bottomButton(qsizetype i, qsizetype n) const
{
    // Counted from the right edge, so that the last button, which passes, is always in the same place.
    return {containerWidth() - ButtonRowMargin - ButtonPitch * static_cast<double>(n - i), 4.0, 80.0, 30.0};
}

platform::Rect PanelGeometry::statusLine() const
{
    // What is free in both kinds: below the buttons of a box, and between the bottom row and the tiles.
    if (m_kind == PanelKind::Slot)
        return {4.0, 0.0, ColumnWidth - 8.0, slotButton(0, 1).y()};
    const platform::Rect button = bottomButton(0, 1);
    return {8.0, button.y() + button.height(), containerWidth() - 16.0, 12.0};
}

platform::Rect PanelGeometry::timeBar() const
{
    constexpr double Height = 3.0;
    if (m_kind == PanelKind::Group)
        return {0.0, areaHeight() - Height, containerWidth(), Height};
    // Inside the frame that the box draws, and clear of its round corners.
    constexpr double Inset = 6.0;
    constexpr double Side = 10.0;
    return {Side, tile().height() - Inset - Height, tile().width() - 2.0 * Side, Height};
}

platform::Rect PanelGeometry::box() const
{
    return {platform::Point(0.0, 0.0), tile()};
}

platform::Rect PanelGeometry::caption() const
{
    return {4.0, tile().height() - 40.0 + m_lift, 230.0, 20.0};
}

platform::Rect PanelGeometry::groupName(double captionTextWidth) const
{
    constexpr double Least = 40.0;
    constexpr double Gap = 6.0;
    const platform::Rect row = caption();
    // The caption is centred: half of what its text leaves is free at either side.
    const double beside = (row.width() - captionTextWidth) / 2.0 - Gap;
    if (beside >= Least)
        return {row.x(), row.y(), beside, row.height()};
    const platform::Rect above = row.translated(0.0, row.height());
    return {above.x(), above.y(), above.width(), tile().height() - above.y()};
}

double PanelGeometry::switchRowY(bool hasSwitches) const
{
    return caption().y() - (hasSwitches ? 12.5 : 0.0);
}

platform::Rect PanelGeometry::captionBesideSwitch(double y, double height) const
{
    return {halfWidth(), y, 50.0, height};
}

platform::Rect PanelGeometry::slotSwitch(double y) const
{
    // The caption's 50 points and 8 between the two.
    return {halfWidth() + 58.0, y - 4.0, 30.0, 30.0};
}

platform::Rect PanelGeometry::slotLabel() const
{
    return {4.0, rowY() + m_lift, 50.0, fieldHeight()};
}

platform::Rect PanelGeometry::slotMessage() const
{
    return {4.0, rowY(), 230.0, 40.0};
}

platform::Rect PanelGeometry::displayField() const
{
    // Directly behind the label, which ends there.
    return {54.0, 2.0, fieldWidth(), 25.0};
}

platform::Rect PanelGeometry::entryField() const
{
    // 8 points behind the label.
    return {62.0, metricA() + 16.0 + m_lift, fieldWidth(), fieldHeight()};
}

platform::Rect PanelGeometry::unit() const
{
    const platform::Rect field = m_kind == PanelKind::Slot ? entryField() : displayField();
    const double x = field.x() + field.width() + 4.0;
    return {x, field.y(), ColumnWidth - 4.0 - x, field.height()};
}

platform::Rect PanelGeometry::slotButton(qsizetype j, qsizetype n) const
{
    return {230.0 - ButtonPitch * static_cast<double>(n - j), 16.0 + m_lift, 80.0 * scale(), 30.0};
}

} // namespace interactive
