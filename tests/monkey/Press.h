#pragma once

#include "tests/monkey/World.h"

namespace monkey {

/// Follows one press of a panel's button: made before the mouse is pressed, asked when things have come to
/// rest.
///
/// Thread: the main thread. Errors: BrokenPromise.
class Press
{
public:
    Press(World &world, const SeenPanel &panel, platform::Button *button);

    /// Serves events until the call that is to end has ended, and everything is at rest again; then judges.
    void settle();
    /// Whether the panel may go by itself.
    [[nodiscard]] bool isLimited() const { return m_call && m_call->isLimited(); }

private:
    enum class Forecast {
        Ends,
        Stays,
        Open,  ///< Ends its call, or says why not.
        Unsure ///< What will be is not known from outside.
    };

    [[nodiscard]] bool asksNothing() const;
    [[nodiscard]] Forecast forecastOf(const SeenPanel &panel) const;
    [[nodiscard]] Forecast forecastOfOk(const SeenPanel &panel) const;
    [[nodiscard]] bool mayEndByItself() const;
    [[nodiscard]] bool cameTooEarly() const;
    [[nodiscard]] Forecast forecastOfGroupsOk(const SeenPanel &panel) const;
    void judgeStaying(const QString &press);

    World &m_world;
    QString m_panelKey;
    QString m_title;
    Call *m_call; ///< Null when no call waits on the panel.
    int m_number = 0;
    Forecast m_forecast = Forecast::Open;
    bool m_mayBeEarly = false;  ///< Its panel's entries are judged, and what is scanned behind it with them.
    bool m_isAutomatic = false; ///< Its panel ends when all is entered.
    bool m_needsReason = false; ///< When the call stays the operator is told why.
};

} // namespace monkey
