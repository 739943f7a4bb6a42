#pragma once

#include "station/look/MemoryFile.h"

namespace station {

/// What a person has chosen for the instruction pane.
///
/// Thread: the main thread.
class PaneMemory
{
public:
    static constexpr int LeastWidth = 220;
    static constexpr int UsualWidth = 380;

    /// Remembers nothing over the end of the program without a file.
    explicit PaneMemory(const QString &file = {});

    /// In pixels, LeastWidth or more.
    [[nodiscard]] int width() const { return m_width; }
    void setWidth(int width);
    [[nodiscard]] bool isFolded() const { return m_folded; }
    void setFolded(bool folded);

private:
    MemoryFile m_file;
    int m_width = UsualWidth;
    bool m_folded = false;
};

} // namespace station
