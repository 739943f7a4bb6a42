#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaSharedValue.h"

#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>

/// A value that the table does not take. The text names the key.
class KVKLuaSharedTableError : public std::runtime_error
{
public:
    explicit KVKLuaSharedTableError(const QString &text)
        : std::runtime_error(text.toStdString())
    {}
};

/// The table of values that the sequences of a run share. Nothing is null.
///
/// No verb waits. An update is a read and a write with a function in between; that there is one of a key at a
/// time is seen to by KVKLuaRun. What others read meanwhile is the former value. What others write meanwhile
/// stays: it counts as written after the update, whose value nobody has seen.
///
/// Thread: any. Sequences are numbered as in KVKLuaRun.
class KVKLuaSharedTable
{
public:
    using Value = std::shared_ptr<const KVKLuaSharedValue>;
    using Entries = std::map<KVKLuaSharedKey, Value>;

    /// What all values may hold together, in bytes.
    static constexpr std::size_t MostMemory = std::size_t{64} * 1024 * 1024;

    [[nodiscard]] Value read(const KVKLuaSharedKey &key) const;
    /// Errors: throws KVKLuaSharedTableError, and changes nothing, when there is no room.
    void write(const KVKLuaSharedKey &key, const Value &value, std::size_t who);
    /// All of it, at one moment.
    [[nodiscard]] Entries all() const;
    /// How many keys follow each other from 1 on.
    [[nodiscard]] qint64 length() const;

    /// Begins an update and returns what it begins from. Requires: none of the key is under way.
    [[nodiscard]] Value beginUpdate(const KVKLuaSharedKey &key, std::size_t who);
    /// Ends it with a value. Errors: as write().
    void endUpdate(const KVKLuaSharedKey &key, const Value &value);
    /// Ends it, where one is under way, and leaves the value.
    void dropUpdate(const KVKLuaSharedKey &key);

private:
    struct Update
    {
        std::size_t who;
        bool isOvertaken = false; ///< Whether another one has written the key meanwhile.
    };

    Value put(const KVKLuaSharedKey &key, const Value &value);

    mutable std::mutex m_mutex;
    Entries m_entries;
    std::map<KVKLuaSharedKey, Update> m_updates;
    std::size_t m_size = 0;
};
