#pragma once

#include "tests/monkey/World.h"

#include <QPair>
#include <QSet>

namespace monkey {

/// Follows one scanned text: made before the keys are sent, asked when things have come to rest.
///
/// Thread: the main thread. Errors: BrokenPromise.
class Scan
{
public:
    /// `entry` is the whole scanned text, `mark` the part of it that no other text has.
    Scan(World &world, const QString &entry, const QString &mark);

    /// Drops the forecast: something else happens in the same moment.
    void forecastNothing()
    {
        m_forecast = Forecast::Open;
        m_isBehindPress = true;
    }
    /// Exactly one place has the text, the one that the operator saw; or it was refused.
    void judge();

private:
    /// A panel's key and a label.
    using Place = QPair<QString, QString>;
    enum class Forecast { Lands, Refused, Open };

    void forecast(const Focus &focus);
    void forecastRefusal(const QString &why);
    void forecastFor(const SeenPanel &panel, const Call &call, bool isInEntry);
    [[nodiscard]] bool isGivenElsewhere(const QString &entry, const Call &call) const;
    void forecastForGroup(const SeenPanel &panel, const Call &call, const QString &entry);
    [[nodiscard]] QSet<Place> placesOfText() const;
    void judgeLanding(const Place &place) const;
    void judgeReplacement(const Place &place) const;
    [[nodiscard]] bool isTakenByLoop() const;
    [[noreturn]] void broken(const QString &what) const;

    World &m_world;
    QString m_entry;
    QString m_mark;
    Focus m_focus;
    QString m_loopBefore;
    bool m_wasFocusChosen;
    QSet<Place> m_placesBefore;
    QMap<QString, platform::Dictionary> m_recordsBefore;
    Forecast m_forecast = Forecast::Open;
    bool m_isBehindPress = false; ///< Panels come and go before the scan is there.
    Place m_expected;
    QString m_reason; ///< Why the text should be refused.
};

} // namespace monkey
