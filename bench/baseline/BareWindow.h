#pragma once

#include <QScrollArea>
#include <QWidget>

namespace baseline {

/// An open window of the toolkit alone, as large as the station's, with a document that scrolls.
///
/// Thread: the main thread.
class BareWindow
{
public:
    BareWindow();

    [[nodiscard]] QWidget *window() { return &m_window; }
    [[nodiscard]] QScrollArea *area() { return m_area; }
    /// What panels stand in.
    [[nodiscard]] QWidget *document() { return m_area->widget(); }

private:
    QWidget m_window;
    QScrollArea *m_area;
};

} // namespace baseline
