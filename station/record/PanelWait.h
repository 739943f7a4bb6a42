#pragma once

#include <QString>

namespace station {

/// That a panel is waited for, or its going.
struct PanelWait
{
    enum class Until { Shown, Gone };

    Until until = Until::Shown;
    QString key;

    friend bool operator==(const PanelWait &, const PanelWait &) = default;
};

} // namespace station
