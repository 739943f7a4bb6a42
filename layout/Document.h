#pragma once

#include "layout/PanelGeometry.h"
#include "platform/Box.h"
#include "presentation/PanelViews.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <optional>

namespace interactive {

/// The document that the panels stand in: as large as the open panels need, and no larger than that or the
/// window, so that whatever does not fit the window can be scrolled to.
///
/// Each group has a band, stacked upwards by group number; all bands are as high as the tallest open panel,
/// so that panels of different heights never lie on one another. Thread: the main thread.
class Document
{
public:
    Document(const StationMap &station, PanelViews &views)
        : m_station(station)
        , m_views(views)
    {}

    /// Keeps bands and the field that has the focus in place when the window is resized, as long as the
    /// context lives. Requires: the views were set.
    void followWindow(QObject *context);

    /// Where the band of a group begins when a panel of this height stands in one.
    [[nodiscard]] double bandBegin(quint64 group, double height) const;
    /// Makes room for a panel of this geometry that is about to open, and shows the first panel from its top.
    void makeRoom(const PanelGeometry &geometry);
    /// A panel stands in the split view: gives it its band.
    void add(platform::View *container, quint64 group, const PanelGeometry &geometry);
    /// Asks for what the panels that are open now need, and stacks their bands. To be called when one has
    /// gone.
    void fit();

private:
    struct Band
    {
        QPointer<platform::View> container;
        quint64 group;
        platform::Size needed;  ///< By the panel that was drawn last.
        platform::Size largest; ///< By any that was drawn.
        /// The box that was found shown last: as long as it is, no other one is looked for.
        mutable QPointer<platform::Box> shown = {};
    };

    [[nodiscard]] static bool isUsed(const Band &band);
    /// What the places of the bands follow from, besides what each of them needs.
    struct Stack
    {
        QList<bool> used;
        double height = 0.0;
        double width = 0.0;

        friend bool operator==(const Stack &, const Stack &) = default;
    };

    /// Which bands have an open panel, in the order of the bands. To find out is what a change of the
    /// document costs most: it is asked for once for each.
    [[nodiscard]] QList<bool> usedBands() const;
    /// What the open panels need of each band: its width, and the height that all bands share.
    [[nodiscard]] platform::Size neededBy(const QList<bool> &used) const;
    [[nodiscard]] platform::Size neededByEach() const;
    /// The document that holds bands of this size.
    [[nodiscard]] platform::Size sizeFor(const platform::Size &band) const;
    [[nodiscard]] Stack stackOf(const QList<bool> &used, double height) const;
    void placeBands(const Stack &stack);

    const StationMap &m_station;
    PanelViews &m_views;
    QList<Band> m_bands;
    /// As the bands stand; none when one of them may stand elsewhere.
    std::optional<Stack> m_stacked;
};

} // namespace interactive
