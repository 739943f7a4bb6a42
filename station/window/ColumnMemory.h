#pragma once

#include "station/look/MemoryFile.h"
#include "station/window/StatusModel.h"

#include <array>

namespace station {

/// What a person has chosen for the columns of the status table: which are hidden, and how wide some are.
///
/// Thread: the main thread.
class ColumnMemory
{
public:
    explicit ColumnMemory(const QString &file = {});

    [[nodiscard]] bool isHidden(StatusModel::Column column) const { return m_columns[at(column)].hidden; }
    void setHidden(StatusModel::Column column, bool hidden);
    /// In pixels; 0 for one that the table shares out.
    [[nodiscard]] int width(StatusModel::Column column) const { return m_columns[at(column)].width; }
    void setWidth(StatusModel::Column column, int width);
    /// All are shown, and shared out by the table.
    void clear();

    /// The state is what the table is for.
    [[nodiscard]] static bool canBeHidden(StatusModel::Column column)
    {
        return column != StatusModel::StateColumn;
    }

private:
    struct Choice
    {
        bool hidden = false;
        int width = 0;
    };

    [[nodiscard]] static std::size_t at(StatusModel::Column column)
    {
        return static_cast<std::size_t>(column);
    }

    MemoryFile m_file;
    std::array<Choice, StatusModel::ColumnCount> m_columns;
};

} // namespace station
