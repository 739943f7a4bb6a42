#pragma once

#include "platform/Value.h"
#include "station/operator/ClickTarget.h"
#include "station/operator/LogRing.h"
#include "station/operator/OperatorHands.h"
#include "station/operator/OperatorStage.h"
#include "station/operator/OperatorWait.h"
#include "station/operator/PanelWatch.h"

#include <QSize>
#include <QStringList>

#include <functional>
#include <optional>

namespace station {

/// What a simulated operator can do, as its script's functions of the same names do it.
///
/// Thread: the script's thread, which blocks while the work is done on the main thread; stop() on any. Not
/// copyable. What it returns is the script's own and shares nothing with the main thread. Errors: throws
/// OperatorFailure with a text for the script's author.
class OperatorActions
{
public:
    explicit OperatorActions(const OperatorStage &stage);

    void waitForPanel(const QString &key, double seconds);
    void waitForPanelGone(const QString &key, double seconds);
    void type(const QString &text);
    /// What the station's scanner sends when it has read the text.
    void scan(const QString &text);
    void click(const ClickTarget &target);
    /// Puts a text into a field in the place of what it holds, and ends the entry; without a text, ends the
    /// entry of what it holds.
    void enter(const ClickTarget &target, const std::optional<QString> &text);
    /// Puts a text into a field, and leaves the entry begun.
    void fill(const ClickTarget &target, const QString &text);
    /// Puts a text into a field in one piece, as from the clipboard, in the place of what it holds, and
    /// leaves the entry begun.
    void paste(const ClickTarget &target, const QString &text);
    /// Scans one of the badges of the station's start, which counts from 1, in the place of the one that is
    /// logged in.
    void logIn(qint64 number);
    /// Until the first view with the identifier has the text.
    void waitForText(const QString &identifier, const QString &text, double seconds);
    void run();
    void stopRun();
    void waitForRunEnd(double seconds);
    /// The tree below the plug-in's view, or below the first view with the identifier; nothing when there is
    /// none.
    [[nodiscard]] platform::Value tree(const std::optional<QString> &identifier);
    [[nodiscard]] platform::Value property(const QString &name) const;
    [[nodiscard]] QStringList log(qint64 count) const { return m_log.last(count); }
    /// Of the whole window, or of the part of it that the first view with the identifier takes up.
    void screenshot(const QString &path, const std::optional<QString> &identifier);
    /// The size that the window then has, which is larger when its content needs more.
    QSize resize(const QSize &size);
    void sleep(double seconds) { m_wait.sleep(seconds); }

    void stop() { m_wait.stop(); }
    [[nodiscard]] bool isStopped() const { return m_wait.isStopped(); }

private:
    using Entry = OperatorHands::Entry;

    [[nodiscard]] platform::View *root() const;
    [[nodiscard]] QWidget *window() const;
    void takeWindow();
    void clickNow(const ClickTarget &target);
    void write(const ClickTarget &target, const Entry &entry);
    [[nodiscard]] bool writeNow(const ClickTarget &target, const Entry &entry);
    [[nodiscard]] QList<KeyStroke> scanned(const QString &text) const;
    [[nodiscard]] BadgeField &badgeField() const;
    [[nodiscard]] QAction *action(const QPointer<QAction> &action) const;

    OperatorStage m_stage;
    OperatorWait m_wait;
    PanelWatch m_panels; ///< Main thread.
    LogRing m_log;
};

} // namespace station
