#pragma once

#include <QListView>
#include <QStringList>
#include <QStringListModel>
#include <QTimer>

#include <optional>

class QKeyEvent;

namespace platform {

/// The list that drops down from a field whose entry is one of several texts.
///
/// It lies over the views of the field's window, below the field or above it, where there is more room, and
/// never has the focus: the keys stay with the field, which hands on those that walk through the list. It
/// folds when somebody presses elsewhere or scrolls, and follows a field that is moved. Thousands of choices
/// are laid out as fast as ten.
/// Thread: the main thread. Ownership: the field's window owns it; the field deletes it when it goes before.
class ChoiceList : public QListView
{
    Q_OBJECT
public:
    /// Requires: the field is in its window, and there is a choice.
    ChoiceList(QWidget &field, QStringList choices);
    ~ChoiceList() override;

    /// Opens the list on all choices; one that is the text already is the row to start from.
    void dropDown(const QString &text);
    void fold();
    /// Somebody has typed: shows the choices that hold the text, whatever its case, and forgets the row that
    /// somebody had gone to. A list that is not open opens when nothing more is typed for a moment, so that a
    /// scan does not let it flash up.
    void narrow(const QString &text);
    /// Opens, walks or folds by a key; false when the key is none of the list's.
    bool takesKey(const QKeyEvent &event, const QString &text);
    /// The row that somebody went to, while the list is open.
    [[nodiscard]] std::optional<QString> chosen() const;

signals:
    /// A row was clicked.
    void picked(const QString &choice);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void show(const QStringList &choices);
    void showNarrowed();
    void place();
    void walk(int rows, const QString &text);
    [[nodiscard]] bool isOutside(const QObject *watched) const;

    QWidget &m_field;
    QStringList m_choices;
    QStringListModel m_shown;
    int m_longest = 0; ///< The width of the longest choice, in pixels.
    QString m_typed;
    QTimer m_pause;
};

} // namespace platform
