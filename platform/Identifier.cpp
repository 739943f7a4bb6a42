#include "platform/Identifier.h"

namespace platform {

Identifier::Identifier(const QString &text)
    : m_text(std::make_shared<const QString>(text))
{}

bool Identifier::isNull() const
{
    return !m_text;
}

QString Identifier::text() const
{
    return m_text ? *m_text : QString();
}

bool Identifier::isSameInstance(const Identifier &other) const
{
    return m_text && m_text == other.m_text;
}

bool operator==(const Identifier &a, const Identifier &b)
{
    return a.isNull() == b.isNull() && a.text() == b.text();
}

} // namespace platform
