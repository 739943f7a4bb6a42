#pragma once

#include "platform/NotificationCenter.h"
#include "presentation/PanelViews.h"

#include <QHash>
#include <QMap>

#include "common/PanelRecords.h"
#include "common/PanelSettings.h"
#include "common/SlotStates.h"
#include "common/StationMap.h"

namespace interactive {

/// Who takes the keys: how the fields of a panel follow one another, which slot waits for input next, and
/// where the focus goes when an entry was accepted, a panel opened or a panel went.
///
/// A field whose entry was begun and not ended keeps the focus when a panel opens. When nothing more is to be
/// entered where the focus is, it goes on to the open panel that has waited longest for an entry and still
/// needs one. Thread: the main thread, except nextEnabledSlot().
class Focus
{
public:
    Focus(const StationMap &station, const PanelRecords &records, const SlotStates &slotStates,
          PanelViews &views, const PanelSettings &settings);

    static void setupResponderChain(const Responders &fields);
    /// Puts the focus on the first usable input field at or after this one along the chain.
    static void activateResponder(platform::View *responder);
    /// The first slot of a panel, in the mapping's order, that takes input and is not among the filled ones;
    /// nothing when there is none. Thread: any.
    [[nodiscard]] platform::Value nextEnabledSlot(const platform::Array &filled,
                                                  const platform::Identifier &panelKey) const;
    /// Shows a panel and puts the focus back into it.
    void unhideUI(const platform::Identifier &identifier);

    /// A field was clicked: an editable one takes the focus, a filled one that is read-only is opened again.
    void textFieldMouseDown(const platform::Notification &notification, PanelRecords &records);
    /// Forgets the value of the sender's slot; true when its panel waits for another one.
    bool modifyInput(platform::View *sender, PanelRecords &records);

    /// A panel was drawn: its field takes the focus, unless an entry was begun elsewhere.
    void panelOpened(const platform::Identifier &panelKey);
    /// A panel was taken away.
    void panelGone(const platform::Identifier &panelKey);
    /// Leaves the focus where it is as long as that panel needs an entry; otherwise goes on.
    void entryAccepted(const platform::Identifier &panelKey);
    /// A field of the panel takes no input any more: its next one takes the focus, or whoever else waits.
    void handOn(const platform::Identifier &panelKey);
    /// Puts the focus where work waits; false, and the focus stays, where nothing does.
    bool goOn();
    /// Whether the panel is open and waits for an entry in a field that can be seen.
    [[nodiscard]] bool needsEntry(const QString &panelKey);
    /// The field whose entry was begun and not ended; null when there is none.
    [[nodiscard]] platform::TextField *begunEntry() const;
    /// The field that the next entry goes to where work waits; null when nothing waits.
    [[nodiscard]] platform::TextField *waitingField();

private:
    void reopenSlot(platform::TextField &field, const QString &panelKey, const QString &slot,
                    PanelRecords &records) const;
    [[nodiscard]] platform::TextField *entryField(const QString &panelKey);
    void forget(const QString &panelKey);

    const StationMap &m_station;
    const PanelRecords &m_records;
    const SlotStates &m_slotStates;
    PanelViews &m_views;
    const PanelSettings &m_settings;
    /// The panels that were drawn and not taken away, by when they were drawn: many may go at once.
    QMap<quint64, QString> m_open;
    QHash<QString, quint64> m_drawnAt;
    quint64 m_drawn = 0;
};

} // namespace interactive
