#pragma once

#include "station/operator/Panels.h"
#include "station/record/PanelWait.h"

#include <QList>

namespace station {

/// Which showings of panels a person has seen and worked in, and what a script has to wait for so that it
/// works in the same ones, in whatever order and however fast they come when it is replayed.
///
/// Before something is done in a panel, its showing is waited for once, and before that the going of an
/// earlier one of the same key; a showing that went with nothing done in it is waited for as well, so that
/// the next one of its key is not taken for it. What is done beside the panels (Stop, a group's button) may
/// concern all of them, so everything that a person saw is waited for: those that are there, and the going
/// of those that were answered.
///
/// Copies are independent. Thread: the main thread.
class PanelDiary
{
public:
    /// Notes which panels have come and gone. Requires: root is not null. Called whenever something may have
    /// changed, and before each of the two below.
    [[nodiscard]] QList<PanelWait> look(platform::View *root);
    [[nodiscard]] QList<PanelWait> actIn(const PanelShowing &showing);
    [[nodiscard]] QList<PanelWait> actBeside();
    /// Nothing that was there counts any more.
    void forget() { m_pages.clear(); }

private:
    struct Page
    {
        PanelShowing showing;
        bool isWaitedFor = false;
        bool isGone = false;
    };

    [[nodiscard]] Page &pageOf(const PanelShowing &showing);

    QList<Page> m_pages;
};

} // namespace station
