#pragma once

#include "station/window/ColumnFit.h"
#include "station/window/ColumnMemory.h"
#include "station/window/StatusDelegate.h"
#include "station/window/StatusModel.h"

#include <QFont>
#include <QHash>
#include <QMap>
#include <QPair>
#include <QTableView>
#include <QTimer>

class QMenu;

namespace station {

/// The status table: a row for each system, painted in the system's colours, its state as a coloured badge
/// with a sign, and a frame around the rows that are highlighted.
///
/// It shares its room out: letters are as large as all rows, and the columns that matter, have room for;
/// columns that do not fit narrow or go, the last answer and the sequence first, and where no column says any
/// more what a state is about, the state's own does. A text that does not fit makes its row higher. A person
/// may resize and hide columns; those keep what was chosen. A click on it takes the focus from nobody, so
/// that it loses no scan. What changes is painted with the next frame of the screen.
/// Thread: the main thread.
class StatusTable : public QTableView
{
    Q_OBJECT
public:
    explicit StatusTable(const QList<SystemRow> &systems, QWidget *parent = nullptr);

    /// Takes what a person has chosen for the columns from a file, and keeps it there.
    void rememberIn(const QString &file);
    /// What the header offers where it is clicked with the right button, and the window in its menu.
    void fillColumnMenu(QMenu *menu);

    [[nodiscard]] StatusModel *statusModel() const { return m_model; }
    /// The height of the letters of slot and state, in pixels.
    [[nodiscard]] int letters() const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void setLook();
    void setLetters(int pixels);
    void follow();
    void columnResized(int column, int width);
    void showColumnMenu(const QPoint &position);
    void share();
    [[nodiscard]] int lettersThatFit() const;
    [[nodiscard]] QList<ColumnWish> wishes(const QFont &font) const;
    [[nodiscard]] ColumnWish knownWishOf(StatusModel::Column column, const QFont &font) const;
    [[nodiscard]] ColumnWish wishOf(StatusModel::Column column, const QFont &font) const;
    [[nodiscard]] int widestText(StatusModel::Column column, const QFont &font) const;
    [[nodiscard]] int rowHeightFor(const QFont &font, int stateWidth, bool stateSaysAll) const;
    void fitRows(int first, int last);
    [[nodiscard]] int heightNeededBy(const QString &about);
    void showChanges();
    [[nodiscard]] int barWidth() const;

    StatusModel *m_model;
    StatusDelegate *m_delegate;
    ColumnMemory m_columns;
    /// By column and font: names stay as they are.
    mutable QHash<QPair<int, QFont>, ColumnWish> m_wishes;
    struct RowHeight
    {
        QFont font;
        int stateWidth = 0;
        bool stateSaysAll = false;
        int height = 0; ///< 0 while none is known.
    };
    /// The latest one: each change of a row asks for it.
    mutable RowHeight m_rowHeight;
    /// By what a state is about, for the latest letters and columns.
    QHash<QString, int> m_aboutHeights;
    struct Columns
    {
        int first = 0;
        int last = 0;
    };
    QMap<int, Columns> m_changed; ///< By row: what has changed since rows were last painted.
    QTimer m_frame;               ///< Runs until they are painted.
    bool m_isSharing = false;     ///< Columns change by the table's own doing.
};

} // namespace station
