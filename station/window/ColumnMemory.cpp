#include "station/window/ColumnMemory.h"

namespace station {
namespace {

constexpr int LeastWidth = 20;
constexpr int LargestWidth = 5000;

QString keyOf(StatusModel::Column column, const char *what)
{
    static const std::array<const char *, StatusModel::ColumnCount> names{
        "number", "group", "slot", "state", "about", "time", "answer", "sequence"};
    return QStringLiteral("columns/%1.%2")
        .arg(QLatin1String(names[static_cast<std::size_t>(column)]), QLatin1String(what));
}

} // namespace

ColumnMemory::ColumnMemory(const QString &file)
    : m_file(file)
{
    for (int number = 0; number < StatusModel::ColumnCount; ++number) {
        const auto column = static_cast<StatusModel::Column>(number);
        Choice &choice = m_columns[at(column)];
        choice.hidden = canBeHidden(column) && m_file.value(keyOf(column, "hidden")).toBool();
        choice.width = m_file.number(keyOf(column, "width"), LeastWidth, LargestWidth, 0);
    }
}

void ColumnMemory::setHidden(StatusModel::Column column, bool hidden)
{
    if (!canBeHidden(column) || isHidden(column) == hidden)
        return;
    m_columns[at(column)].hidden = hidden;
    m_file.keep(keyOf(column, "hidden"), hidden ? QVariant(true) : QVariant());
}

void ColumnMemory::setWidth(StatusModel::Column column, int width)
{
    const int bounded = qBound(LeastWidth, width, LargestWidth);
    if (m_columns[at(column)].width == bounded)
        return;
    m_columns[at(column)].width = bounded;
    m_file.keep(keyOf(column, "width"), bounded);
}

void ColumnMemory::clear()
{
    for (int number = 0; number < StatusModel::ColumnCount; ++number) {
        const auto column = static_cast<StatusModel::Column>(number);
        m_columns[at(column)] = {};
        m_file.keep(keyOf(column, "hidden"), {});
        m_file.keep(keyOf(column, "width"), {});
    }
}

} // namespace station
