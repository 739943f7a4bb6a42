#pragma once

#include <QString>

namespace station {

/// What a person has chosen for the instruction pane, kept in a file from one start of the station to the
/// next.
///
/// Thread: the main thread. Errors: a file that cannot be read or written, or holds something else, counts as
/// nothing that was chosen.
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

    /// The file beside the user's other configurations.
    [[nodiscard]] static QString usualFile();

private:
    void write(const char *key, const QVariant &value) const;

    QString m_file;
    int m_width = UsualWidth;
    bool m_folded = false;
};

} // namespace station
