#include "common/PanelRecords.h"

#include <utility>

#include "common/RecordKeys.h"

namespace interactive {

/// In place, since nobody shares what this holds. The container's own look at who shares it would be no order
/// between threads.
template <class Change>
void PanelRecords::replace(Change change)
{
    // Outlives the lock: to free a dictionary that nobody shares any more takes time, in which nobody should
    // have to wait.
    std::optional<platform::Dictionary> former;
    {
        const std::lock_guard lock(m_mutex);
        change(m_data);
        former = std::exchange(m_given, std::nullopt);
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

/// Within one lock: the asking cannot end between the question and the change.
template <class Change>
bool PanelRecords::replaceAsked(const QString &panelKey, quint64 asking, Change change)
{
    bool isAsked = false;
    replace([&](platform::Dictionary &data) {
        isAsked = m_askings.value(panelKey) == asking;
        if (isAsked)
            change(data);
    });
    return isAsked;
}

platform::Dictionary PanelRecords::all() const
{
    const std::lock_guard lock(m_mutex);
    if (!m_given) {
        m_given = m_data;
        m_given->detach();
    }
    return *m_given;
}

void PanelRecords::restore(const platform::Dictionary &data)
{
    const std::lock_guard lock(m_mutex);
    m_data = data;
    m_data.detach();
    m_given.reset();
    m_answers.clear();
    const QStringList panelKeys = data.keys();
    // To which question a restored record belongs is not known: it counts for any of its panel, until that is
    // asked.
    m_unasked = QSet<QString>(panelKeys.cbegin(), panelKeys.cend());
}

std::optional<platform::Dictionary> PanelRecords::record(const QString &panelKey) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_data.constFind(panelKey);
    // What was restored may hold anything under a key.
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
        m_askings.insert(panelKey, ++m_lastAsking);
        // Asked anew, the question has no answer: should this asking be interrupted, the former one must not
        // be given.
        m_answers[panelKey].remove(question);
        m_unasked.remove(panelKey);
    });
}

void PanelRecords::store(const QString &panelKey, const QString &slot, const platform::Value &entry)
{
    replaceRecord(panelKey, [&](platform::Dictionary &record) { record.insert(slot, entry); });
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
    // Not by replaceRecord(), which would leave an empty record where there was none.
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

bool PanelRecords::press(const QString &panelKey, const QString &buttonIdentifier, quint64 asking)
{
    return replaceAsked(panelKey, asking, [&](platform::Dictionary &data) {
        platform::Dictionary record = data.value(panelKey).toMap();
        record.insert(keys::ClickedButton, buttonIdentifier);
        data.insert(panelKey, record);
    });
}

bool PanelRecords::clear(const QString &panelKey, quint64 asking)
{
    return replaceAsked(panelKey, asking, [&](platform::Dictionary &data) {
        // Built anew and not emptied entry by entry, so that a button which was noted goes with the entries.
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
        // "Cancel" has taken the record away; an empty one must not come in its place.
        if (found == data.cend())
            return;
        platform::Dictionary record = found->toMap();
        record.remove(keys::Length);
        data.insert(panelKey, record);
    });
}

/// The kept answers stay: they belong to askings that came to their end.
bool PanelRecords::forget(const QString &panelKey, quint64 asking)
{
    return replaceAsked(panelKey, asking, [&](platform::Dictionary &data) { data.remove(panelKey); });
}

void PanelRecords::forget(const QString &panelKey)
{
    replace([&](platform::Dictionary &data) {
        data.remove(panelKey);
        m_askings.remove(panelKey);
    });
}

quint64 PanelRecords::asking(const QString &panelKey) const
{
    const std::lock_guard lock(m_mutex);
    return m_askings.value(panelKey);
}

void PanelRecords::keepAnswer(const QString &panelKey, const QString &question, const platform::Value &states)
{
    const std::lock_guard lock(m_mutex);
    const platform::Value record = m_data.value(panelKey);
    // A cancelled panel has no record, and its question is to be asked again in the next pass.
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
        // The pass may have ended, and its answers with it, since the caller looked: the next units must not
        // find the record of those before. A restored record, which has no question, stands here already.
        if (!m_answers.value(panelKey).contains(question))
            return;
        data.insert(panelKey, answer.record);
    });
}

void PanelRecords::forgetAnswers(const QString &panelKey, bool isBeingFilled)
{
    replace([&](platform::Dictionary &data) {
        m_answers.remove(panelKey);
        // What stands in the panel belongs to the next units already; only what was kept is old.
        if (!isBeingFilled)
            data.remove(panelKey);
    });
}

void PanelRecords::forgetAllAnswers()
{
    replace([&](platform::Dictionary &data) {
        // How many passes there are to be is set before a run and is no answer of one.
        const platform::Value loop = data.value(keys::Loop);
        data.clear();
        if (loop.isValid())
            data.insert(keys::Loop, loop);
        m_answers.clear();
    });
}

PanelRecords::Kept PanelRecords::kept() const
{
    const std::lock_guard lock(m_mutex);
    Kept kept{m_data.size(), m_askings.size(), 0};
    for (const QHash<QString, Answer> &answers : m_answers)
        kept.answers += answers.size();
    return kept;
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
        // Within the change, so that nobody sees the new number of passes without the mode that it means.
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
