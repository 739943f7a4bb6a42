#pragma once

#include "station/scanner/ScanReader.h"
#include "station/scanner/ScannerSettings.h"

#include <QHash>
#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <memory>

namespace station {

/// Makes of what a scanner types the text that it has read, and Return: prefix and suffix never reach a
/// field, and the terminator works as Return does.
///
/// It looks at the keys before the window hands them to whoever has the focus, so that every plug-in's panels
/// have it. A scan goes where the focus was when it began: it goes back there when something that opened
/// meanwhile has taken it; where it cannot, the scan is refused as a whole, on the window's status line, in
/// the log and to KVKExtensionEntryRelay. Thread: the main thread. Ownership: the filter does not outlive the
/// application.
class ScannerFilter : public QObject
{
    Q_OBJECT
public:
    ScannerFilter(QWidget *window, const ScannerSettings &settings);
    ~ScannerFilter() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool isInside(const QObject *watched) const;
    [[nodiscard]] bool takesPress(QKeyEvent &key);
    [[nodiscard]] bool takesText(const QKeyEvent &key, const QString &text);
    [[nodiscard]] bool takesTerminator(const QKeyEvent &key);
    [[nodiscard]] bool takesRefused(const QKeyEvent &key, const QString &text);
    [[nodiscard]] bool isTerminator(const QKeyEvent &key) const;
    [[nodiscard]] bool writesBlankToControl(const QString &text) const;
    void begin();
    void giveBack(qsizetype count);
    void giveUp();
    void send(const QKeyEvent &key);
    void keepRelease(const QKeyEvent &key) { ++m_keptReleases[key.key()]; }
    void refuse();
    void tellRefused(const QString &text, const QString &why) const;

    QPointer<QWidget> m_window;
    ScannerSettings m_settings;
    ScanReader m_reader;
    std::deque<std::unique_ptr<QKeyEvent>> m_held;
    QHash<int, int> m_keptReleases; ///< Keys whose press was kept, so that their release is, too.
    QPointer<QWidget> m_aim;        ///< Who had the focus when the first key came that may begin a scan.
    bool m_hadAim = false;          ///< Whether anybody had.
    bool m_giving = false;          ///< A key that was held is on its way.
    bool m_refuses = false;         ///< The scan that is coming in has lost its field.
    QString m_refused;
    QTimer m_refusedEnds; ///< Runs out when a refused scan comes without its terminator.
};

} // namespace station
