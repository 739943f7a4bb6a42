#pragma once

#include "station/window/LogBacklog.h"
#include "station/window/LogLine.h"
#include "station/window/SystemRow.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>
#include <memory>
#include <span>

class QComboBox;
class QLineEdit;
class QToolButton;

namespace station {

class ErrorButton;
class LogView;

/// The last lines of the log proxy, which can be filtered by level, system and text, and folded to one line;
/// that line shows the errors until somebody has acknowledged them or the next run begins.
///
/// Lines are collected on the log's thread and put into the pane some at a time, so that the window stays
/// responsive however much is logged; lines that would have scrolled out of the pane before they were seen
/// are left out, with a line that says how many. Filters choose among the lines that the pane keeps; while it
/// is folded it only keeps them. Thread: the main thread; lines come from any. Requires: platform::MainQueue
/// is attached.
class LogPane : public QWidget
{
    Q_OBJECT
public:
    /// How many lines the pane keeps, and how many it takes in one go.
    static constexpr int MaximumLines = 3000;
    static constexpr int LinesAtOnce = 300;

    explicit LogPane(const QList<SystemRow> &systems = {}, QWidget *parent = nullptr);
    ~LogPane() override;

    /// What tells the systems that a logging thread works for; it is the process's, until the pane goes. See
    /// KVKLogProxy::setOwners.
    void setOwners(std::function<QList<int>()> owners);
    /// The errors so far are those of an earlier run.
    void forgetErrors();

    [[nodiscard]] bool isFolded() const { return m_folded; }
    void setFolded(bool folded);
    /// The height of the one line that is left when it is folded.
    [[nodiscard]] int foldedHeight() const;
    [[nodiscard]] const LogFilter &filter() const { return m_filter; }

    [[nodiscard]] LogView *view() const { return m_view; }
    [[nodiscard]] ErrorButton *errorButton() const { return m_errors; }
    [[nodiscard]] QToolButton *foldButton() const { return m_fold; }
    [[nodiscard]] QComboBox *levelBox() const { return m_level; }
    [[nodiscard]] QComboBox *systemBox() const { return m_system; }
    [[nodiscard]] QLineEdit *textField() const { return m_text; }

signals:
    /// Somebody has folded or unfolded it.
    void foldChanged(bool folded);

protected:
    void changeEvent(QEvent *event) override;

private:
    void makeLine(const QList<SystemRow> &systems);
    void makeFilters(const QList<SystemRow> &systems);
    void acknowledge();
    void applyFilter();
    void writeAnew();
    void writeMissed();
    void take(std::span<const KVKLogRecord> records);
    void flush();
    void takeShare();
    void keep(LogLine line);

    std::shared_ptr<LogBacklog> m_backlog;
    QPointer<LogPane> m_self; ///< Made here once; the log's thread copies it.
    std::deque<LogLine> m_kept;
    std::deque<LogLine> m_toWrite; ///< Kept ones that the view has to show anew.
    std::size_t m_missed = 0;      ///< How many of the last kept ones came while it was folded.
    LogFilter m_filter;
    QTimer m_flushTimer;
    bool m_folded = true;
    bool m_hasOwners = false;
    KVKLogProxy::ReceiverId m_receiver = 0;

    LogView *m_view = nullptr;
    QToolButton *m_fold = nullptr;
    ErrorButton *m_errors = nullptr;
    QWidget *m_filters = nullptr;
    QComboBox *m_level = nullptr;
    QComboBox *m_system = nullptr;
    QLineEdit *m_text = nullptr;
};

} // namespace station
