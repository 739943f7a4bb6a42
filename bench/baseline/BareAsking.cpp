#include "bench/baseline/BareAsking.h"

#include <QMetaObject>

namespace baseline {

BareAsking::BareAsking(BareWindow &window, int threads, int callsPerThread)
    : m_window(window)
{
    // As many rows as the threads need; all panels are made one by one.
    m_window.document()->resize(m_window.document()->width(), threads * 20 + 1000);
    for (int thread = 0; thread < threads; ++thread) {
        m_threads.emplace_back([this, thread, callsPerThread] {
            for (int call = 0; call < callsPerThread; ++call)
                ask(thread);
        });
    }
}

BareAsking::~BareAsking() = default;

void BareAsking::ask(int thread)
{
    Call call;
    QMetaObject::invokeMethod(
        &m_context, [this, thread, &call] { put(thread, call); }, Qt::QueuedConnection);
    std::unique_lock lock(m_mutex);
    call.answered.wait(lock, [&] { return call.isAnswered; });
}

void BareAsking::put(int thread, Call &call)
{
    const Open open{slotPanel(m_window.document(), thread), &call};
    QObject::connect(
        open.panel.ok, &QPushButton::clicked, &m_context, [this] { answer(); }, Qt::QueuedConnection);
    open.panel.frame->show();
    m_open.push_back(open);
    if (m_open.size() == 1) {
        open.panel.field->setFocus();
        m_window.area()->ensureWidgetVisible(open.panel.frame);
    }
}

/// The panel goes, the next one takes the focus, the call returns.
void BareAsking::answer()
{
    const Open open = m_open.front();
    m_open.pop_front();
    const QString text = open.panel.field->text();
    delete open.panel.frame;
    if (!m_open.empty()) {
        m_open.front().panel.field->setFocus();
        m_window.area()->ensureWidgetVisible(m_open.front().panel.frame);
    }
    ++m_answered;
    const std::scoped_lock lock(m_mutex);
    open.call->text = text;
    open.call->isAnswered = true;
    open.call->answered.notify_one();
}

} // namespace baseline
