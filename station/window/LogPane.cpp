#include "station/window/LogPane.h"

#include "platform/MainQueue.h"
#include "station/look/WindowLook.h"
#include "station/window/ErrorButton.h"
#include "station/window/LogView.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace station {
namespace {

/// Lines that come in a burst are laid out once, and nobody sees the delay.
constexpr int FlushMilliseconds = 30;
constexpr int Letters = 13;
constexpr int LineHeight = 30;
constexpr int Margin = 4;
constexpr int TextWidth = 150;

} // namespace

LogPane::LogPane(const QList<SystemRow> &systems, QWidget *parent)
    : QWidget(parent)
    , m_backlog(std::make_shared<LogBacklog>(MaximumLines, LinesAtOnce))
    , m_self(this)
{
    setAccessibleName(QStringLiteral("Log"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    makeLine(systems);
    m_view = new LogView(MaximumLines);
    column->addWidget(m_view, 1);
    setTabOrder(m_text, m_view);
    setFolded(true);
    m_flushTimer.setSingleShot(true);
    connect(&m_flushTimer, &QTimer::timeout, this, &LogPane::flush);
    m_receiver =
        KVKLogGetProxy()->addReceiver([this](std::span<const KVKLogRecord> records) { take(records); });
}

LogPane::~LogPane()
{
    if (m_hasOwners)
        KVKLogGetProxy()->setOwners(nullptr);
    KVKLogGetProxy()->removeReceiver(m_receiver);
}

void LogPane::setOwners(std::function<QList<int>()> owners)
{
    m_hasOwners = true;
    KVKLogGetProxy()->setOwners(std::move(owners));
}

void LogPane::makeLine(const QList<SystemRow> &systems)
{
    auto *line = new QWidget;
    line->setFixedHeight(LineHeight);
    auto *row = new QHBoxLayout(line);
    row->setContentsMargins(Margin, 0, Margin, 0);
    row->setSpacing(Margin);
    m_fold = new QToolButton;
    m_fold->setObjectName(QStringLiteral("foldLog"));
    m_fold->setFont(windowFont(Letters));
    m_fold->setAutoRaise(true);
    // A click must not take the focus from the field that is being scanned into.
    m_fold->setFocusPolicy(Qt::TabFocus);
    connect(m_fold, &QToolButton::clicked, this, [this] { setFolded(!m_folded); });
    m_errors = new ErrorButton;
    connect(m_errors, &ErrorButton::clicked, this, &LogPane::acknowledge);
    makeFilters(systems);
    row->addWidget(m_fold);
    row->addWidget(m_errors, 1);
    row->addStretch(0);
    row->addWidget(m_filters);
    layout()->addWidget(line);
}

void LogPane::makeFilters(const QList<SystemRow> &systems)
{
    m_filters = new QWidget;
    auto *row = new QHBoxLayout(m_filters);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Margin);
    m_level = new QComboBox;
    m_level->addItem(QStringLiteral("All levels"), static_cast<int>(KVKLogLevel::Debug));
    m_level->addItem(QStringLiteral("Without debug"), static_cast<int>(KVKLogLevel::Default));
    m_level->addItem(QStringLiteral("Errors"), static_cast<int>(KVKLogLevel::Error));
    m_system = new QComboBox;
    m_system->addItem(QStringLiteral("All systems"), LogFilter::AllSystems);
    for (const SystemRow &system : systems)
        m_system->addItem(
            QStringLiteral("System %1 (%2 %3)").arg(system.index).arg(system.group, system.slotName),
            system.index);
    m_text = new QLineEdit;
    m_text->setPlaceholderText(QStringLiteral("Text to look for"));
    m_text->setClearButtonEnabled(true);
    m_text->setFixedWidth(TextWidth);
    m_level->setAccessibleName(QStringLiteral("Level of the log's lines"));
    m_system->setAccessibleName(QStringLiteral("System of the log's lines"));
    m_text->setAccessibleName(QStringLiteral("Text in the log's lines"));
    for (QComboBox *box : {m_level, m_system}) {
        box->setFocusPolicy(Qt::TabFocus);
        connect(box, &QComboBox::currentIndexChanged, this, &LogPane::applyFilter);
    }
    connect(m_text, &QLineEdit::textChanged, this, &LogPane::applyFilter);
    for (QWidget *widget : {static_cast<QWidget *>(m_level), static_cast<QWidget *>(m_system),
                            static_cast<QWidget *>(m_text)}) {
        widget->setFont(windowFont(Letters));
        row->addWidget(widget);
    }
}

void LogPane::setFolded(bool folded)
{
    const bool isNew = std::exchange(m_folded, folded) != folded;
    m_fold->setText(folded ? QStringLiteral("\u25b8 Log") : QStringLiteral("\u25be Log"));
    const QString name = folded ? QStringLiteral("Show the log") : QStringLiteral("Fold the log");
    m_fold->setAccessibleName(name);
    m_fold->setToolTip(name + QStringLiteral(" (Ctrl+L)"));
    m_filters->setVisible(!folded);
    m_view->setVisible(!folded);
    setMinimumHeight(folded ? LineHeight : LineHeight + m_view->minimumSizeHint().height());
    setMaximumHeight(folded ? LineHeight : QWIDGETSIZE_MAX);
    if (!folded)
        writeMissed();
    if (isNew)
        Q_EMIT foldChanged(folded);
}

/// To lay lines out that nobody sees is most of what a busy station would do.
void LogPane::writeMissed()
{
    for (auto line = m_kept.cend() - static_cast<std::ptrdiff_t>(std::exchange(m_missed, 0));
         line != m_kept.cend(); ++line) {
        if (m_filter.passes(*line))
            m_toWrite.push_back(*line);
    }
    if (!m_toWrite.empty())
        flush();
}

int LogPane::foldedHeight() const
{
    return LineHeight;
}

void LogPane::forgetErrors()
{
    // Also those that are on their way.
    static_cast<void>(KVKLogGetProxy()->flush());
    m_backlog->forgetErrors();
    m_errors->forget();
}

/// Whoever wants to know more of an error finds it in the lines.
void LogPane::acknowledge()
{
    m_errors->forget();
    setFolded(false);
}

void LogPane::applyFilter()
{
    const LogFilter filter{static_cast<KVKLogLevel>(m_level->currentData().toInt()),
                           m_system->currentData().toInt(), m_text->text()};
    if (std::exchange(m_filter, filter) != filter)
        writeAnew();
}

void LogPane::writeAnew()
{
    m_view->empty();
    m_toWrite.clear();
    m_missed = 0;
    for (const LogLine &line : m_kept) {
        if (m_filter.passes(line))
            m_toWrite.push_back(line);
    }
    flush();
}

void LogPane::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    // Lines have the colours of the palette that they were written in.
    if (event->type() == QEvent::PaletteChange && m_view)
        QMetaObject::invokeMethod(this, &LogPane::writeAnew, Qt::QueuedConnection);
}

void LogPane::take(std::span<const KVKLogRecord> records)
{
    if (!m_backlog->add(records))
        return;
    platform::MainQueue::async([pane = m_self] {
        if (pane)
            pane->m_flushTimer.start(FlushMilliseconds);
    });
}

void LogPane::keep(LogLine line)
{
    m_kept.push_back(std::move(line));
    if (m_kept.size() > static_cast<std::size_t>(MaximumLines))
        m_kept.pop_front();
}

/// What the view has to show anew goes before what is new.
void LogPane::flush()
{
    if (m_toWrite.empty()) {
        takeShare();
        return;
    }
    QList<LogLine> lines;
    while (!m_toWrite.empty() && lines.size() < LinesAtOnce) {
        lines.append(std::move(m_toWrite.front()));
        m_toWrite.pop_front();
    }
    m_view->write(lines);
    m_flushTimer.start(m_toWrite.empty() ? FlushMilliseconds : 0);
}

void LogPane::takeShare()
{
    LogBacklog::Share share = m_backlog->take();
    m_errors->add(share.errors, share.newestError);
    if (share.leftOut > 0)
        share.lines.prepend({KVKLogLevel::Default,
                             {},
                             QStringLiteral("\u2026 %1 lines left out here \u2026").arg(share.leftOut),
                             {}});
    QList<LogLine> seen;
    for (const LogLine &line : std::as_const(share.lines)) {
        keep(line);
        if (!m_folded && m_filter.passes(line))
            seen.append(line);
    }
    if (m_folded)
        m_missed = std::min(m_missed + static_cast<std::size_t>(share.lines.size()), m_kept.size());
    else
        m_view->write(seen);
    if (share.more)
        m_flushTimer.start(FlushMilliseconds);
}

} // namespace station
