#pragma once

#include <QSplitter>

namespace station {

class InstructionPane;
class ViewArea;

/// The table, the plug-ins' views and the instruction pane side by side.
///
/// The pane takes its width from nobody: the window becomes wider by it where its screen has the room;
/// otherwise the views keep their size and are scrolled. Thread: the main thread. Ownership: takes the three.
class UpperRow : public QSplitter
{
    Q_OBJECT
public:
    UpperRow(QWidget *table, ViewArea *views, InstructionPane *instructions);

    /// How wide the views want to be: the table gives way to them first.
    void setWantedWidth(int width) { m_wanted = width; }
    /// Whether the window may become wider than its screen, since nobody looks at it there.
    void setStandsOnNoScreen() { m_isOnScreen = false; }
    /// Shares the width. The table keeps what a person has given it, as far as the views have the room that
    /// they cannot do without.
    void share() { shareNow(); }
    /// What a person has given the table; 0 where nobody has moved the bar.
    [[nodiscard]] int chosenTableWidth() const { return m_chosenTable; }
    void setChosenTableWidth(int width);
    /// By how much the window is wider for the instructions' sake.
    [[nodiscard]] int widened() const;

signals:
    /// A person has moved the bar beside the table.
    void tableWidthChosen(int width);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void moved(int handle);
    void placeInstructions();
    [[nodiscard]] int roomFor(int width) const;
    void widen(int pixels);
    void shareNow();

    QWidget *m_table;
    ViewArea *m_views;
    InstructionPane *m_instructions;
    int m_wanted = 0;
    int m_widenedBy = 0; ///< What the window was widened by for the pane.
    int m_widenedTo = 0; ///< How wide it was then: a person may have resized it since.
    bool m_isOnScreen = true;
    int m_chosenTable = 0;
};

} // namespace station
