#pragma once

#include "station/StationConfig.h"

#include <QObject>

#include <memory>

namespace station {

class BadgeField;
class ScannerFilter;
class SoundDesk;
class SoundSink;
class StationWindow;

/// What the station has for the person at its window besides the window itself: sounds, the scanner's keys
/// and the badge.
///
/// Thread: the main thread. Ownership: refers to the window.
class Senses : public QObject
{
    Q_OBJECT
public:
    /// `badges` are those that were given at the start; the first one is taken. Errors: throws StationError
    /// when one of them is none, or when one is asked for and nobody could be.
    Senses(const StationConfig &config, StationWindow &window, const QStringList &badges, bool hasPerson);
    ~Senses() override;

    /// Whether a run may start; says to the operator why it may not, and puts the focus to where that
    /// changes.
    [[nodiscard]] bool mayRun();
    /// Tells that a run starts or has ended.
    void setRunning(bool running);
    /// The badge of who works at the station; empty when that is not known.
    [[nodiscard]] QString badge() const;
    /// Where a badge is written; null where none is asked for. The window owns it.
    [[nodiscard]] BadgeField *field() const { return m_field; }

private:
    void makeBadgeField(const BadgeRule &rule);
    void takeBadge(const BadgeRule &rule, const QStringList &badges, bool hasPerson);
    void refuse(const QString &text, const QString &why);
    void showOperator(const QString &badge);

    StationWindow &m_window;
    std::unique_ptr<SoundSink> m_sink;
    std::unique_ptr<SoundDesk> m_sounds;
    std::unique_ptr<ScannerFilter> m_scanner;
    BadgeField *m_field = nullptr; ///< The window owns it; null where no badge is asked for.
    QString m_badge;               ///< Where there is no field.
};

} // namespace station
