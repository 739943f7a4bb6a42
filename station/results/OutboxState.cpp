#include "station/results/OutboxState.h"

#include <QStringList>

#include <utility>

namespace station {

namespace {

/// Ends of sequences wait too, and nobody counts them.
QString sentence(qint64 letters, qint64 answers)
{
    if (letters <= 0)
        return {};
    if (answers == 0)
        return QStringLiteral("Results wait for the results server");
    if (answers == 1)
        return QStringLiteral("1 answer waits for the results server");
    return QStringLiteral("%1 answers wait for the results server").arg(answers);
}

QString refusalSentence(qint64 letters, qint64 answers)
{
    if (letters <= 0)
        return {};
    if (answers == 0)
        return QStringLiteral("Results were refused by the results server");
    if (answers == 1)
        return QStringLiteral("1 answer was refused by the results server");
    return QStringLiteral("%1 answers were refused by the results server").arg(answers);
}

} // namespace

void OutboxState::found(qint64 letters, qint64 answers)
{
    const std::lock_guard lock(m_mutex);
    m_letters += letters;
    m_answers += answers;
    m_isBehind = m_isBehind || letters > 0;
    tell();
}

void OutboxState::added(bool isAnswer)
{
    const std::lock_guard lock(m_mutex);
    ++m_letters;
    m_answers += isAnswer ? 1 : 0;
    tell();
}

void OutboxState::sent(qint64 letters, qint64 answers)
{
    const std::lock_guard lock(m_mutex);
    m_letters -= letters;
    m_answers -= answers;
    m_trouble.clear();
    tell();
}

void OutboxState::refused(bool isAnswer, const QString &why)
{
    const std::lock_guard lock(m_mutex);
    --m_letters;
    m_answers -= isAnswer ? 1 : 0;
    ++m_refused;
    m_refusedAnswers += isAnswer ? 1 : 0;
    m_refusal = why;
    m_trouble.clear();
    tell();
}

bool OutboxState::failed(const QString &why)
{
    const std::lock_guard lock(m_mutex);
    m_isBehind = true;
    const bool isNew = std::exchange(m_trouble, why) != why;
    tell();
    return isNew;
}

bool OutboxState::caughtUp()
{
    const std::lock_guard lock(m_mutex);
    m_trouble.clear();
    const bool wasBehind = std::exchange(m_isBehind, false);
    tell();
    return wasBehind;
}

void OutboxState::setListener(Listener listener)
{
    const std::lock_guard lock(m_mutex);
    m_listener = std::move(listener);
    if (m_listener)
        m_listener(text(), trouble());
}

QString OutboxState::waiting() const
{
    const std::lock_guard lock(m_mutex);
    return sentence(m_letters, m_answers);
}

QString OutboxState::refusals() const
{
    const std::lock_guard lock(m_mutex);
    return refusalSentence(m_refused, m_refusedAnswers);
}

/// An answer that is sent at once, as each is while all works, is nothing to blink about.
QString OutboxState::text() const
{
    QStringList parts{m_isBehind ? sentence(m_letters, m_answers) : QString(),
                      refusalSentence(m_refused, m_refusedAnswers)};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" \u00b7 "));
}

QString OutboxState::trouble() const
{
    return m_trouble.isEmpty() ? m_refusal : m_trouble;
}

void OutboxState::tell()
{
    const bool isOld = m_told == text() && m_toldTrouble == trouble();
    m_told = text();
    m_toldTrouble = trouble();
    if (m_listener && !isOld)
        m_listener(m_told, m_toldTrouble);
}

} // namespace station
