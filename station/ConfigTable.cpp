#include "station/ConfigTable.h"

#include "station/base/StationError.h"
#include "station/base/VisibleText.h"

#include <utility>

namespace station {

ConfigTable::ConfigTable(const toml::table &table, QString file, QString prefix)
    : m_table(table)
    , m_file(std::move(file))
    , m_prefix(std::move(prefix))
{}

void ConfigTable::failAt(const toml::node &node, const QString &key, const QString &why) const
{
    // All at once: a name that holds "%2" is no place for anything.
    throw StationError(QStringLiteral("%1:%2: key '%3%4': %5")
                           .arg(m_file, QString::number(node.source().begin.line), m_prefix, visibleText(key),
                                visibleText(why)));
}

void ConfigTable::fail(const char *key, const QString &why) const
{
    const toml::node *node = m_table.get(key);
    failAt(node ? *node : static_cast<const toml::node &>(m_table), QString::fromUtf8(key), why);
}

void ConfigTable::failElement(const char *key, qsizetype element, const QString &why) const
{
    failAt(m_table.at(key).as_array()->at(static_cast<std::size_t>(element)), QString::fromUtf8(key), why);
}

void ConfigTable::failMissing(const char *key) const
{
    failAt(m_table, QString::fromUtf8(key), QStringLiteral("is missing"));
}

void ConfigTable::allowOnly(const QStringList &keys, const Refusals &refusals) const
{
    for (const auto &entry : m_table) {
        // Not a structured binding, which a lambda cannot name.
        const toml::key &key = entry.first;
        const toml::node &node = entry.second;
        const QString name = QString::fromUtf8(key.data(), static_cast<qsizetype>(key.length()));
        if (keys.contains(name))
            continue;
        refusals.attempt([&] {
            failAt(node, name,
                   QStringLiteral("is not known here (known: %1)").arg(keys.join(QStringLiteral(", "))));
        });
    }
}

std::optional<QString> ConfigTable::text(const char *key) const
{
    const toml::node *node = m_table.get(key);
    if (!node)
        return std::nullopt;
    // Exactly, here as below: a number in quotes or a 1 for true is a slip that is better told than guessed
    // at.
    const auto value = node->value_exact<std::string>();
    if (!value)
        fail(key, QStringLiteral("must be a text"));
    return QString::fromStdString(*value);
}

std::optional<bool> ConfigTable::truth(const char *key) const
{
    const toml::node *node = m_table.get(key);
    if (!node)
        return std::nullopt;
    const auto value = node->value_exact<bool>();
    if (!value)
        fail(key, QStringLiteral("must be true or false"));
    return *value;
}

std::optional<qint64> ConfigTable::integer(const char *key) const
{
    const toml::node *node = m_table.get(key);
    if (!node)
        return std::nullopt;
    const auto value = node->value_exact<std::int64_t>();
    if (!value)
        fail(key, QStringLiteral("must be a whole number"));
    return *value;
}

std::optional<QStringList> ConfigTable::texts(const char *key) const
{
    const toml::node *node = m_table.get(key);
    if (!node)
        return std::nullopt;
    const toml::array *array = node->as_array();
    if (!array)
        fail(key, QStringLiteral("must be a list of texts"));
    QStringList texts;
    for (const toml::node &element : *array) {
        const auto value = element.value_exact<std::string>();
        if (!value)
            failAt(element, QString::fromUtf8(key), QStringLiteral("must be a list of texts"));
        texts.append(QString::fromStdString(*value));
    }
    return texts;
}

std::optional<ConfigTable> ConfigTable::table(const char *key) const
{
    const toml::node *node = m_table.get(key);
    if (!node)
        return std::nullopt;
    if (!node->is_table())
        fail(key, QStringLiteral("must be a table, [%1]").arg(QString::fromUtf8(key)));
    return ConfigTable(*node->as_table(), m_file, m_prefix + QString::fromUtf8(key) + QLatin1Char('.'));
}

void ConfigTable::forEachTable(const char *key,
                               const std::function<void(const ConfigTable &)> &function) const
{
    const toml::node *node = m_table.get(key);
    if (!node)
        return;
    const QString name = QString::fromUtf8(key);
    const toml::array *array = node->as_array();
    if (!array)
        fail(key, QStringLiteral("must be written as [[%1]]").arg(name));
    for (const toml::node &element : *array) {
        if (!element.is_table())
            failAt(element, name, QStringLiteral("must be written as [[%1]]").arg(name));
        function(ConfigTable(*element.as_table(), m_file, m_prefix + name + QLatin1Char('.')));
    }
}

} // namespace station
