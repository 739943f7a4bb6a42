#include "common/GivenAnswers.h"

#include "common/RecordKeys.h"

namespace interactive {

void GivenAnswers::add(const platform::Dictionary &record)
{
    const std::lock_guard lock(m_mutex);
    for (auto entry = record.cbegin(); entry != record.cend(); ++entry) {
        if (entry.key() != keys::Length && entry.key() != keys::ClickedButton)
            m_texts.insert(platform::description(entry.value()));
    }
}

bool GivenAnswers::contains(const QString &text) const
{
    const std::lock_guard lock(m_mutex);
    return m_texts.contains(text);
}

void GivenAnswers::forget()
{
    const std::lock_guard lock(m_mutex);
    m_texts.clear();
}

} // namespace interactive
