#include "common/PanelRecords.h"

#include <utility>

#include "common/RecordKeys.h"

namespace interactive {

/// Changes a copy while the dictionary that others may share is still there, so that the change cannot happen
/// in place: the container's own look at who shares it is no order between threads.
template <class Change>
void PanelRecords::replace(Change change)
{
    platform::Dictionary former;
    {
        const std::lock_guard lock(m_mutex);
        platform::Dictionary next = m_data;
        change(next);
        former = std::exchange(m_data, std::move(next));
    }
}

template <class Change>
void PanelRecords::replaceRecord(const QString &panelKey, Change change)
{
    replace([&](platform::Dictionary &data) {
        platform::Dictionary record = data.value(panelKey).toMap();
        change(record);
        data.insert(panelKey, record);
    });
}

platform::Dictionary PanelRecords::all() const
{
    const std::lock_guard lock(m_mutex);
    return m_data;
}

void PanelRecords::restore(const platform::Dictionary &data)
{
    const std::lock_guard lock(m_mutex);
    m_data = data;
    m_questions.clear();
    m_answers.clear();
    const QStringList panelKeys = data.keys();
    m_unasked = QSet<QString>(panelKeys.cbegin(), panelKeys.cend());
}

std::optional<platform::Dictionary> PanelRecords::record(const QString &panelKey) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_data.constFind(panelKey);
    if (found == m_data.cend() || !platform::isDictionary(*found))
        return std::nullopt;
    return found->toMap();
}

bool PanelRecords::contains(const QString &panelKey) const
{
    const std::lock_guard lock(m_mutex);
    return m_data.contains(panelKey);
}

void PanelRecords::start(const QString &panelKey, qint64 length, const QString &question)
{
    replace([&](platform::Dictionary &data) {
        data.insert(panelKey, platform::Dictionary{{keys::Length, static_cast<qlonglong>(length)}});
        m_questions.insert(panelKey, question);
        m_answers[panelKey].remove(question);
        m_unasked.remove(panelKey);
    });
}

void PanelRecords::store(const QString &panelKey, const QString &slot, const QString &text)
{
    replaceRecord(panelKey, [&](platform::Dictionary &record) { record.insert(slot, text); });
}

platform::Dictionary PanelRecords::makeRoom(const QString &panelKey, const QString &slot)
{
    platform::Dictionary left;
    replaceRecord(panelKey, [&](platform::Dictionary &record) {
        record.remove(slot);
        left = record;
    });
    return left;
}

bool PanelRecords::discard(const QString &panelKey, const QString &slot)
{
    bool existed = false;
    replace([&](platform::Dictionary &data) {
        const auto found = data.constFind(panelKey);
        if (found == data.cend())
            return;
        platform::Dictionary record = found->toMap();
        existed = record.remove(slot) > 0;
        data.insert(panelKey, record);
    });
    return existed;
}

void PanelRecords::press(const QString &panelKey, const QString &buttonIdentifier)
{
    replaceRecord(panelKey, [&](platform::Dictionary &record) {
        record.insert(keys::ClickedButton, buttonIdentifier);
    });
}

void PanelRecords::clear(const QString &panelKey)
{
    replace([&](platform::Dictionary &data) {
        const platform::Value length = data.value(panelKey).toMap().value(keys::Length);
        if (length.isValid())
            data.insert(panelKey, platform::Dictionary{{keys::Length, length}});
        else
            data.remove(panelKey);
    });
}

void PanelRecords::finish(const QString &panelKey)
{
    replace([&](platform::Dictionary &data) {
        const auto found = data.constFind(panelKey);
        if (found == data.cend())
            return;
        platform::Dictionary record = found->toMap();
        record.remove(keys::Length);
        data.insert(panelKey, record);
    });
}

void PanelRecords::forget(const QString &panelKey)
{
    replace([&](platform::Dictionary &data) {
        data.remove(panelKey);
        m_questions.remove(panelKey);
    });
}

void PanelRecords::keepAnswer(const QString &panelKey, const QString &question, const platform::Value &states)
{
    const std::lock_guard lock(m_mutex);
    const platform::Value record = m_data.value(panelKey);
    if (record.isValid())
        m_answers[panelKey].insert(question, {record, states});
}

std::optional<PanelRecords::Answer> PanelRecords::answer(const QString &panelKey,
                                                         const QString &question) const
{
    const std::lock_guard lock(m_mutex);
    const QHash<QString, Answer> answers = m_answers.value(panelKey);
    if (const auto found = answers.constFind(question); found != answers.cend())
        return *found;
    if (m_data.contains(panelKey) && m_unasked.contains(panelKey))
        return Answer{m_data.value(panelKey), {}};
    return std::nullopt;
}

void PanelRecords::giveAgain(const QString &panelKey, const QString &question, const Answer &answer)
{
    replace([&](platform::Dictionary &data) {
        if (!m_answers.value(panelKey).contains(question))
            return;
        data.insert(panelKey, answer.record);
        m_questions.insert(panelKey, question);
    });
}

void PanelRecords::forgetAnswers(const QString &panelKey, bool isBeingFilled)
{
    replace([&](platform::Dictionary &data) {
        m_answers.remove(panelKey);
        if (isBeingFilled)
            return;
        data.remove(panelKey);
        m_questions.remove(panelKey);
    });
}

void PanelRecords::forgetAllAnswers()
{
    replace([&](platform::Dictionary &data) {
        const platform::Value loop = data.value(keys::Loop);
        data.clear();
        if (loop.isValid())
            data.insert(keys::Loop, loop);
        m_questions.clear();
        m_answers.clear();
    });
}

platform::Dictionary PanelRecords::loopRecord() const
{
    const std::lock_guard lock(m_mutex);
    return m_data.value(keys::Loop).toMap();
}

void PanelRecords::setLoopMaximum(const platform::Value &maximum)
{
    replaceRecord(keys::Loop, [&](platform::Dictionary &record) { record.insert(keys::LoopMax, maximum); });
}

void PanelRecords::startLoop(qint64 maximum, quint64 groupCount)
{
    replace([&](platform::Dictionary &data) {
        data.insert(keys::Loop, loop::restarted(data.value(keys::Loop).toMap(), maximum, groupCount));
        m_isLoopEnabled = loop::isLoop(maximum);
    });
}

bool PanelRecords::finishPass(const platform::Value &groupNumber)
{
    bool finished = false;
    replace([&](platform::Dictionary &data) {
        // One lock over reading, counting and storing: no count is lost when groups ask at the same moment.
        const loop::Pass pass = loop::reported(data.value(keys::Loop).toMap(), groupNumber);
        if (pass.counted)
            data.insert(keys::Loop, pass.record);
        finished = pass.finished;
    });
    return finished;
}

bool PanelRecords::isLoopEnabled() const
{
    const std::lock_guard lock(m_mutex);
    return m_isLoopEnabled;
}

void PanelRecords::setLoopEnabled(bool enabled)
{
    const std::lock_guard lock(m_mutex);
    m_isLoopEnabled = enabled;
}

} // namespace interactive
