#pragma once

#include "kovan/KovanLogging/KVKLogging.h"

#include <QPlainTextEdit>
#include <QPointer>
#include <QTimer>

#include <memory>

namespace station {

/// The last lines of the log proxy, coloured by level, the newest below and in sight, unless the reader has
/// scrolled away from it.
///
/// Lines are collected on the threads that log and put into the pane some at a time, so that the window stays
/// responsive however much is logged; lines that would have scrolled out of the pane before they were seen
/// are left out, with a line that says how many. Thread: the main thread; lines come from any. Requires:
/// platform::MainQueue is attached.
class LogPane : public QPlainTextEdit
{
    Q_OBJECT
public:
    /// How many lines the pane keeps, and how many it takes in one go.
    static constexpr int MaximumLines = 3000;
    static constexpr int LinesAtOnce = 300;

    explicit LogPane(QWidget *parent = nullptr);
    ~LogPane() override;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    class Backlog;
    struct Entry;

    void setLook();
    void followNewest();
    void take(const KVKLogProxy::Line &line);
    void flush();
    void write(const QList<Entry> &lines, qsizetype leftOut);

    std::shared_ptr<Backlog> m_backlog;
    QPointer<LogPane> m_self; ///< Made here once; the logging threads copy it.
    QTimer m_flushTimer;
    bool m_follows = true; ///< Whether the newest line is kept in sight.
    KVKLogProxy::SinkId m_sink = 0;
};

} // namespace station
