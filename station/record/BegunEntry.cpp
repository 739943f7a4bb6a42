#include "station/record/BegunEntry.h"

namespace station {

void BegunEntry::begin(platform::TextField *field, const std::optional<ClickTarget> &target)
{
    forget();
    m_field = field;
    m_target = target;
    m_before = field->stringValue();
    settle();
}

void BegunEntry::addKey(const QKeyEvent &key)
{
    if (key.matches(QKeySequence::Paste))
        m_isPasted = true;
    else
        m_keys += key.text();
}

void BegunEntry::settle()
{
    if (!m_field || !m_field->isEditable())
        return;
    m_text = m_field->stringValue();
    m_isBegun = m_field->hasBegunEntry() && !m_field->isListOpen();
    // A begun entry without a text is one that the field takes nothing of.
    m_isRefused = m_isBegun && m_text.isEmpty();
}

void BegunEntry::forget()
{
    *this = BegunEntry();
}

std::optional<QString> BegunEntry::keys() const
{
    return m_isPasted ? std::nullopt : std::optional(m_keys);
}

} // namespace station
