#include "station/window/LogPane.h"

#include "platform/MainQueue.h"
#include "station/window/LineBreaks.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QTextBlock>
#include <QTime>

#include <deque>
#include <mutex>

namespace station {
namespace {

/// Lines that come in a burst are laid out once, and nobody sees the delay.
constexpr int FlushMilliseconds = 30;
constexpr int TextPixels = 12;
/// A whole dictionary in one line would make the pane's layout slow and tell nobody more.
constexpr int MaximumLineLength = 1000;

QTextCharFormat formatOf(KVKLogLevel level)
{
    QTextCharFormat format;
    switch (level) {
    case KVKLogLevel::Debug:
        format.setForeground(QColor(105, 105, 112));
        break;
    case KVKLogLevel::Error:
        format.setForeground(QColor(190, 0, 20));
        format.setFontWeight(QFont::Bold);
        break;
    case KVKLogLevel::Default:
        format.setForeground(QColor(20, 20, 24));
        break;
    }
    return format;
}

/// One log line is one line of the pane, whatever it holds.
QString oneLine(const QString &message)
{
    const QString text =
        message.size() > MaximumLineLength ? message.left(MaximumLineLength) + QChar(0x2026) : message;
    return withoutLineBreaks(text, QString(QChar(0x23ce)));
}

} // namespace

struct LogPane::Entry
{
    KVKLogLevel level;
    QTime time;
    QString text;
};

/// What was logged and is not in the pane yet. Thread: any.
class LogPane::Backlog
{
public:
    /// True when the pane has to be told that there is something.
    bool add(Entry entry)
    {
        const std::scoped_lock lock(m_mutex);
        m_lines.push_back(std::move(entry));
        if (m_lines.size() > static_cast<std::size_t>(MaximumLines)) {
            m_lines.pop_front();
            ++m_leftOut;
        }
        // Told once until the lines are fetched, however many come.
        return !std::exchange(m_told, true);
    }

    /// Takes the oldest lines and how many were left out before them; `more` tells whether lines remain.
    QList<Entry> take(qsizetype &leftOut, bool &more)
    {
        const std::scoped_lock lock(m_mutex);
        QList<Entry> lines;
        // A share at a time: keys and paint have their turn in between.
        while (!m_lines.empty() && lines.size() < LinesAtOnce) {
            lines.append(std::move(m_lines.front()));
            m_lines.pop_front();
        }
        leftOut = std::exchange(m_leftOut, 0);
        more = !m_lines.empty();
        m_told = more;
        return lines;
    }

private:
    std::mutex m_mutex;
    std::deque<Entry> m_lines;
    qsizetype m_leftOut = 0;
    bool m_told = false;
};

LogPane::LogPane(QWidget *parent)
    : QPlainTextEdit(parent)
    , m_backlog(std::make_shared<Backlog>())
    , m_self(this)
{
    setLook();
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(FlushMilliseconds);
    connect(&m_flushTimer, &QTimer::timeout, this, &LogPane::flush);
    followNewest();
    m_sink = KVKLogGetProxy()->addSink([this](const KVKLogProxy::Line &line) { take(line); });
}

LogPane::~LogPane()
{
    KVKLogGetProxy()->removeSink(m_sink);
}

void LogPane::setLook()
{
    QFont text = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    text.setPixelSize(TextPixels);
    setFont(text);
    setReadOnly(true);
    setAccessibleName(QStringLiteral("Log"));
    setUndoRedoEnabled(false);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setMaximumBlockCount(MaximumLines);
    setFrameShape(QFrame::NoFrame);
    // A click into the log must not take the focus from the field that is being scanned into.
    setFocusPolicy(Qt::NoFocus);
}

/// The bar's range changes when lines come, and once more when a long one brings the other scroll bar, which
/// takes a line of the pane's height: the pane follows whichever it is, until the reader moves the bar.
void LogPane::followNewest()
{
    QScrollBar *bar = verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this,
            [this, bar](int value) { m_follows = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int newest) {
        if (m_follows)
            bar->setValue(newest);
    });
}

QSize LogPane::sizeHint() const
{
    return {600, 130};
}

QSize LogPane::minimumSizeHint() const
{
    return {200, 60};
}

void LogPane::take(const KVKLogProxy::Line &line)
{
    if (!m_backlog->add({line.level, QTime::currentTime(), oneLine(line.message)}))
        return;
    platform::MainQueue::async([pane = m_self] {
        if (pane)
            pane->m_flushTimer.start();
    });
}

void LogPane::flush()
{
    qsizetype leftOut = 0;
    bool more = false;
    const QList<Entry> lines = m_backlog->take(leftOut, more);
    write(lines, leftOut);
    if (more)
        m_flushTimer.start();
}

void LogPane::write(const QList<Entry> &lines, qsizetype leftOut)
{
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    const auto writeLine = [&](KVKLogLevel level, const QString &text) {
        if (!document()->isEmpty())
            cursor.insertBlock();
        cursor.insertText(text, formatOf(level));
    };
    if (leftOut > 0)
        writeLine(KVKLogLevel::Default, QStringLiteral("… %1 lines left out here …").arg(leftOut));
    for (const Entry &line : lines)
        writeLine(line.level, line.time.toString(QStringLiteral("HH:mm:ss.zzz  ")) + line.text);
    cursor.endEditBlock();
}

} // namespace station
