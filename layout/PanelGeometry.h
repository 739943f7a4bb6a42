#pragma once

#include "platform/Geometry.h"

#include <QString>

namespace interactive {

/// The two kinds of panel.
enum class PanelKind {
    Group, ///< One panel for all slots of a group.
    Slot,  ///< One panel for the slot of one system, inside its group's band.
};

/// The frames of a panel and of what stands in it, in points with a bottom-left origin.
///
/// Requires: slotCount and columns are not 0 (see whyNotDrawable). Thread: any; a plain value.
class PanelGeometry
{
public:
    static constexpr double ColumnWidth = 250.0;
    static constexpr double RowHeight = 110.0;
    static constexpr double AreaMargin = 16.0;

    PanelGeometry(PanelKind kind, quint64 slotCount, quint64 columns, double splitViewWidth);

    /// Why a station of groups and slots has no panel in these columns that a window could hold; empty when
    /// it has one.
    [[nodiscard]] static QString whyNotDrawable(quint64 groupCount, quint64 slotCount, quint64 columns,
                                                const QString &columnText);

    [[nodiscard]] quint64 columns() const { return m_columns; }
    [[nodiscard]] quint64 rows() const { return m_rows; }
    [[nodiscard]] double areaHeight() const;
    [[nodiscard]] double minimumWidth() const;
    /// The panel has so many buttons in its bottom row, and the shared field or not: it is never so narrow
    /// that one would lie on another or outside.
    void makeRoomForRow(qsizetype buttons, bool hasField);
    /// The panel tells why an entry is refused: in a slot's box, what stands above the line makes room for
    /// two lines of text, since the usual reasons do not fit into one.
    void makeRoomForStatusLine();
    /// What the panel needs: the width of its columns and of its bottom row, and the band's height.
    [[nodiscard]] platform::Size needed() const;
    /// The panel in its band, which begins there: as wide as the split view, or as it needs.
    [[nodiscard]] platform::Rect container(double bandBegin) const;
    [[nodiscard]] double containerWidth() const;

    [[nodiscard]] platform::Rect header() const;
    [[nodiscard]] platform::Rect separator() const;
    [[nodiscard]] platform::Rect message() const;
    /// The overview's scroll view in the container, and the overview in its content view.
    [[nodiscard]] platform::Rect overviewScroll() const;
    [[nodiscard]] platform::Rect overview() const;
    [[nodiscard]] platform::Size tile() const;
    [[nodiscard]] platform::Rect sharedInput() const;
    /// The i-th of n buttons of the bottom row, which is aligned to the right.
    [[nodiscard]] platform::Rect bottomButton(qsizetype i, qsizetype n) const;

    /// Where the panel tells why an entry was refused: in the container of a group's panel, in the box of a
    /// slot's.
    [[nodiscard]] platform::Rect statusLine() const;

    /// Where the bar of a time limit runs down: along the upper edge of a group's panel, or of the box of a
    /// slot's.
    [[nodiscard]] platform::Rect timeBar() const;

    // Inside a slot's box
    [[nodiscard]] double scale() const { return m_kind == PanelKind::Slot ? 0.8 : 1.0; }
    [[nodiscard]] double fieldFontSize() const { return (scale() + 0.2) * 12.0; }
    [[nodiscard]] double slotButtonFontSize() const { return 16.0 * scale(); }
    [[nodiscard]] platform::Rect box() const;
    [[nodiscard]] platform::Rect caption() const;
    /// Where a slot panel names its group: left of a caption whose text is so wide, above it where there is
    /// no room.
    [[nodiscard]] platform::Rect groupName(double captionTextWidth) const;
    /// Where the caption moves when a switch stands beside it; without a caption the y counts from 0.
    [[nodiscard]] double switchRowY(bool hasSwitches) const;
    [[nodiscard]] platform::Rect captionBesideSwitch(double y, double height) const;
    [[nodiscard]] platform::Rect slotSwitch(double y) const;
    [[nodiscard]] platform::Rect slotLabel() const;
    [[nodiscard]] platform::Rect slotMessage() const;
    /// The field that shows a slot's value on a group panel, and the one that takes it on a slot panel.
    [[nodiscard]] platform::Rect displayField() const;
    [[nodiscard]] platform::Rect entryField() const;
    /// Where a number's unit stands, behind the field that shows or takes it.
    [[nodiscard]] platform::Rect unit() const;
    [[nodiscard]] platform::Rect slotButton(qsizetype j, qsizetype n) const;

private:
    [[nodiscard]] double metricA() const { return m_kind == PanelKind::Slot ? 34.0 : 4.0; }
    [[nodiscard]] double metricB() const { return m_kind == PanelKind::Slot ? 180.0 : 162.0; }
    [[nodiscard]] double rowY() const { return metricA() - 4.0; }
    [[nodiscard]] double halfWidth() const { return metricB() * 0.5; }
    [[nodiscard]] double fieldWidth() const { return metricB() - 16.0; }
    [[nodiscard]] double fieldHeight() const { return 25.0 * scale(); }

    PanelKind m_kind;
    quint64 m_columns;
    quint64 m_rows;
    double m_splitViewWidth;
    double m_rowWidth = 0.0;
    double m_lift = 0.0; ///< How far the content of a slot's box is moved up.
};

} // namespace interactive
