#pragma once

#include "platform/Box.h"
#include "platform/CollectionView.h"
#include "platform/Identifier.h"
#include "platform/Monitored.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"

#include <QHash>
#include <QList>
#include <QPointer>

#include "common/PanelRecords.h"
#include "common/PanelSettings.h"
#include "common/StationMap.h"

namespace interactive {

/// A panel's input fields in the order in which they follow one another. A field may be gone.
using Responders = QList<QPointer<platform::TextField>>;

/// The panels that stand in the split view: their fields, the groups' overviews, and how a panel is taken
/// away, hidden and found.
///
/// Two ways of comparing identifiers are used: by text, and by instance where that is said; a text that was
/// made afresh is another instance. Thread: the main thread, except where stated. Ownership: the view tree
/// owns the views; what is remembered of them may be gone.
class PanelViews
{
public:
    explicit PanelViews(const StationMap &station)
        : m_station(station)
    {}

    void setViews(platform::View *root, platform::ScrollView *scrollView, platform::SplitView *splitView);
    [[nodiscard]] platform::View *rootView() const { return m_rootView; }
    [[nodiscard]] platform::ScrollView *scrollView() const { return m_scrollView; }
    [[nodiscard]] platform::SplitView *splitView() const { return m_splitView; }
    /// The split view's children, lowest first.
    [[nodiscard]] QList<platform::View *> panels() const;

    /// The field that takes the keys of the window; null when none does.
    [[nodiscard]] platform::TextField *focusedField() const;

    // The panels' fields. Thread: any.
    [[nodiscard]] Responders responders(const QString &panelKey);
    /// The field that takes a panel's entries: a group panel's shared one, a slot panel's own. Null when
    /// there is none, or it has left the window. Thread: the main thread.
    [[nodiscard]] platform::TextField *entryField(const QString &panelKey);
    [[nodiscard]] bool hasResponders(const QString &panelKey);
    void setResponders(const QString &panelKey, const Responders &fields);
    void dropResponders(const QString &panelKey);
    /// For the log, as they are called now; so is describeCollections().
    [[nodiscard]] platform::Dictionary describeResponders();

    /// The look that a panel was drawn with; the fallback for a panel that was not drawn.
    [[nodiscard]] PanelLook lookOf(const QString &panelKey, const PanelLook &fallback) const;
    void setLook(const QString &panelKey, const PanelLook &look);

    /// The line on a panel that tells its operator why an entry was refused; null takes it back.
    void setStatusLine(const QString &panelKey, platform::TextField *line);
    /// How what is told looks: a refusal asks the operator to do something, a note does not.
    enum class Tone { Refusal, Note };
    /// Writes into that line, where the panel has one, and has assistive technology say the text with the
    /// field that takes the entries; an empty text takes both back. A text that the line has no room for is
    /// shown by the host, too.
    void tell(const QString &panelKey, const QString &text, Tone tone = Tone::Refusal);
    /// What stands there; empty where the panel has no such line.
    [[nodiscard]] QString told(const QString &panelKey) const;

    /// The box that a slot's panel stands in, whose content view bears the panel key.
    void setBox(const QString &panelKey, platform::Box *box);

    /// A group's overview of tiles, or null.
    [[nodiscard]] platform::CollectionView *collection(const QString &groupName) const;
    void setCollection(const QString &groupName, platform::CollectionView *overview);
    [[nodiscard]] platform::Dictionary describeCollections() const;

    /// Whether the identifier is a group's name. Thread: any.
    [[nodiscard]] bool isGroupView(const platform::Identifier &identifier) const;
    /// The identifier of the view's superview, or a null one.
    [[nodiscard]] static platform::Identifier getParentIdentifier(const platform::View *view);
    /// The first direct subview that bears this very identifier instance, or null.
    [[nodiscard]] static platform::View *subView(const platform::View *parent,
                                                 const platform::Identifier &identifier);

    /// Whether a child of the split view is the container of slot panels: the group's tiles and nothing else,
    /// or nothing.
    [[nodiscard]] static bool isTileContainer(const platform::View *panel);
    /// Whether a child of the split view shows anything: a container of slot panels does as long as one of
    /// its tiles is used. Not one that is gone.
    [[nodiscard]] static bool isInUse(const platform::View *panel);
    /// The first box of the tiles in a panel that is shown, or null.
    [[nodiscard]] static platform::Box *shownBox(const platform::View &panel);

    /// Removes the panel that bears this very identifier instance, or empties the tile that does and hides
    /// it; for a group, all its panels.
    void resetUI(const platform::Identifier &identifier);
    /// Hides the first panel that bears this very identifier instance. Thread: any, because a show call asks
    /// for it before it draws.
    void hideFirst(const platform::Identifier &identifier);
    /// Hides every panel that bears this very identifier instance.
    void hideUI(const platform::Identifier &identifier);
    /// Makes every panel visible whose identifier has this text; true when there was one.
    bool show(const platform::Identifier &identifier);

private:
    [[nodiscard]] platform::Box *knownBox(const platform::Identifier &identifier) const;
    static void empty(platform::Box &box);

    const StationMap &m_station;
    QPointer<platform::View> m_rootView;
    QPointer<platform::ScrollView> m_scrollView;
    QPointer<platform::SplitView> m_splitView;
    platform::Monitored<QHash<QString, Responders>> m_responders;
    QHash<QString, PanelLook> m_looks;
    QHash<QString, QPointer<platform::TextField>> m_statusLines;
    QHash<QString, QPointer<platform::Box>> m_boxes;
    QHash<QString, QPointer<platform::CollectionView>> m_collections;
};

/// Forgets what was entered on a panel, unless loop mode is on, and the order of its fields. Thread: any.
void resetData(PanelRecords &records, PanelViews &views, const platform::Identifier &identifier);

} // namespace interactive
