#pragma once

#include "station/window/LogLine.h"

#include <QPlainTextEdit>

namespace station {

/// Lines of the log, coloured by level, the newest below and in sight, unless the reader has scrolled away
/// from it.
///
/// Thread: the main thread.
class LogView : public QPlainTextEdit
{
    Q_OBJECT
public:
    /// The oldest line goes when there are more than so many.
    explicit LogView(int mostLines, QWidget *parent = nullptr);

    void write(const QList<LogLine> &lines);
    /// Takes all lines out; the next ones are followed.
    void empty();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    void setLook();
    void followNewest();

    bool m_follows = true; ///< Whether the newest line is kept in sight.
};

} // namespace station
