#include "kovan/KovanLuaSequencer/KVKLuaSharedValue.h"

#include <utility>

namespace {

/// What a place in a table takes beside a text's bytes.
constexpr std::size_t SizeOfOne = 64;

std::size_t sizeOf(const KVKLuaSharedValue::Content &content)
{
    const QByteArray *text = std::get_if<QByteArray>(&content);
    return SizeOfOne + (text ? static_cast<std::size_t>(text->size()) : 0);
}

} // namespace

QString KVKTextOfSharedKey(const KVKLuaSharedKey &key)
{
    if (const qint64 *number = std::get_if<qint64>(&key))
        return QStringLiteral("shared[%1]").arg(*number);
    return QStringLiteral("shared.") + QString::fromUtf8(std::get<QByteArray>(key).left(80));
}

KVKLuaSharedValue::KVKLuaSharedValue(Content content, std::size_t size)
    : m_content(std::move(content))
    , m_size(size + sizeOf(m_content))
{}
