#pragma once

#include <QString>
#include <QStringList>

#include <toml++/toml.h>

#include <functional>
#include <optional>

namespace station {

/// One table of a configuration file, read key by key with checked types.
///
/// Errors: each reader throws StationError with "file:line: key 'name': what is wrong". Thread: any.
class ConfigTable
{
public:
    /// `prefix` stands before the table's keys in messages ("station.").
    ConfigTable(const toml::table &table, QString file, QString prefix);

    [[nodiscard]] bool has(const char *key) const { return m_table.contains(key); }
    /// Whether there is a text under the key.
    [[nodiscard]] bool isText(const char *key) const { return m_table[key].is_string(); }
    /// Refuses every key that is not named.
    void allowOnly(const QStringList &keys) const;

    [[nodiscard]] std::optional<QString> text(const char *key) const;
    [[nodiscard]] std::optional<bool> truth(const char *key) const;
    [[nodiscard]] std::optional<qint64> integer(const char *key) const;
    [[nodiscard]] std::optional<QStringList> texts(const char *key) const;
    /// The table under the key.
    [[nodiscard]] std::optional<ConfigTable> table(const char *key) const;
    /// Calls the function for each table of the array of tables under the key; none when the key is absent.
    void forEachTable(const char *key, const std::function<void(const ConfigTable &)> &function) const;

    /// Refuses the value of a key.
    [[noreturn]] void fail(const char *key, const QString &why) const;
    /// Refuses one element of the list under the key, whose line is named. Requires: there is such an
    /// element.
    [[noreturn]] void failElement(const char *key, qsizetype element, const QString &why) const;
    /// Refuses the table itself, where a key is missing.
    [[noreturn]] void failMissing(const char *key) const;

private:
    [[noreturn]] void failAt(const toml::node &node, const QString &key, const QString &why) const;

    const toml::table &m_table;
    QString m_file;
    QString m_prefix;
};

} // namespace station
