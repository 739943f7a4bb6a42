#pragma once

#include "input/Confirmation.h"
#include "input/Defaults.h"
#include "input/Entries.h"
#include "input/Focus.h"
#include "input/Guidance.h"
#include "layout/Document.h"
#include "layout/ErrorPanel.h"
#include "layout/PanelPlan.h"
#include "layout/SlotBoxes.h"
#include "platform/CollectionView.h"
#include "presentation/PanelViews.h"

#include <chrono>
#include <functional>
#include <optional>

#include "common/PanelRecords.h"
#include "common/PanelSettings.h"
#include "common/SlotStates.h"
#include "common/StationMap.h"

namespace interactive {

struct PanelDrawing;

/// Turns a configuration that was found good into the operator's panel, in its group's band of the split
/// view.
///
/// Thread: as stated; the view work runs on the main thread.
class PanelBuilder
{
public:
    /// What the builder reads, and whom the controls of a panel tell.
    struct House
    {
        const StationMap &station;
        const PanelRecords &records;
        SlotStates &slotStates;
        PanelSettings &settings;
        PanelViews &views;
        Focus &focus;
        Defaults &defaults;
        Guidance &guidance;
        /// Named as the target by every control, and the delegate of the overviews.
        QObject *controller;
        platform::CollectionViewDelegate *delegate;
        /// A panel's time limit has come. Called on the main thread.
        std::function<void(const QString &panelKey)> timeIsOver;
    };

    PanelBuilder(const House &house, SlotBoxes &boxes, Document &document, ErrorPanel &errors,
                 Entries &entries, Confirmation &confirmation);

    /// Draws a panel and returns when it is on the screen: when its time limit ends, if it has one. Thread:
    /// any. Requires: slotCount and the column count are not 0 (see panelProblem).
    std::optional<std::chrono::steady_clock::time_point> drawUI(const PanelRequest &request);
    /// The two steps of that: what is to be drawn, which puts settings into force (thread: any), and the
    /// drawing (thread: the main thread).
    [[nodiscard]] PanelPlan planned(const PanelRequest &request);
    std::optional<std::chrono::steady_clock::time_point> draw(PanelPlan &plan);
    /// Why no panel can be drawn for this configuration on this station; empty when one can. Thread: any.
    [[nodiscard]] QString panelProblem(const platform::Dictionary &config) const;

private:
    void drawPanel(PanelPlan &plan);
    void prepareContainer(PanelDrawing &drawing);
    void dropEmptyContainer(const QString &identifier);
    void drawGroupHeader(PanelDrawing &drawing);
    void drawMessage(PanelDrawing &drawing);
    void buildOverview(PanelDrawing &drawing);
    void drawSharedInput(PanelDrawing &drawing);
    void drawButtonRow(PanelDrawing &drawing);
    void finishPanel(PanelDrawing &drawing);
    void drawTimeBar(PanelDrawing &drawing);
    void revealPanel(const PanelDrawing &drawing);
    [[nodiscard]] static platform::View *panelView(const PanelDrawing &drawing);

    House m_house;
    SlotBoxes &m_boxes;
    Document &m_document;
    ErrorPanel &m_errors;
    Entries &m_entries;
    Confirmation &m_confirmation;
};

} // namespace interactive
