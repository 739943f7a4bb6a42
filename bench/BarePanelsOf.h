#pragma once

#include <algorithm>

#include "bench/BenchStation.h"
#include "bench/baseline/BarePanels.h"

namespace bench {

/// The bare panels that show what the station's show for a kind of question: hidden, in the document.
[[nodiscard]] inline std::vector<baseline::BarePanel> barePanelsOf(QWidget *document, PanelKind kind,
                                                                   int slotCount)
{
    if (kind == PanelKind::Slot)
        return baseline::slotPanels(document, slotCount);
    // Slots that are not asked for are not seen.
    const int seen = kind == PanelKind::Group ? std::min(slotCount, MostEntries) : slotCount;
    return baseline::groupPanels(document, seen, kind == PanelKind::Group);
}

} // namespace bench
