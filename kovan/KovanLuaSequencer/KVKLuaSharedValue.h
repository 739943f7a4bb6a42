#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <map>
#include <memory>
#include <variant>

class KVKLuaSharedValue;

/// A key of a table that sequences share: a whole number or a text. Whole numbers come first in order.
using KVKLuaSharedKey = std::variant<qint64, QByteArray>;
using KVKLuaSharedEntries = std::map<KVKLuaSharedKey, KVKLuaSharedValue>;

/// For people: "shared.name" or "shared[3]".
[[nodiscard]] QString KVKTextOfSharedKey(const KVKLuaSharedKey &key);

/// A value that sequences share, as Lua has it: texts are bytes, whole and other numbers stay what they are.
/// It never changes, so that several threads may read one.
///
/// Thread: any.
class KVKLuaSharedValue
{
public:
    using Table = std::shared_ptr<const KVKLuaSharedEntries>;
    using Content = std::variant<bool, qint64, double, QByteArray, Table>;

    /// `size` is what the entries of a table hold, in bytes; for anything else it is worked out.
    explicit KVKLuaSharedValue(Content content, std::size_t size = 0);

    [[nodiscard]] const Content &content() const { return m_content; }
    /// About what it holds, in bytes.
    [[nodiscard]] std::size_t size() const { return m_size; }

private:
    Content m_content;
    std::size_t m_size;
};
