#pragma once

#include "platform/View.h"
#include "station/record/BegunEntry.h"
#include "station/record/PanelDiary.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <optional>

class QAbstractButton;
class QKeyEvent;

namespace platform {
class Button;
class ChoiceList;
} // namespace platform

namespace station {

/// Watches what a person (or a script in a person's place) does at the station's window and tells it line by
/// line as an operator's script, each line as soon as it is known.
///
/// It sees keys and clicks where they arrive, and changes none of them. What counts is what came of them: the
/// text that an entry was ended with, the button that was worked by whatever means. Whoever replays needs no
/// pause and no focus: each line names its target, and what the person had seen before is waited for.
///
/// Thread: the main thread. Requires: made before a plug-in is loaded, which may hold keys back and deliver
/// them later: only what was delivered has been done.
class Recorder : public QObject
{
    Q_OBJECT
public:
    /// Receives each line, without its end.
    using Write = std::function<void(const QString &line)>;

    explicit Recorder(Write write);

    /// Begins the script. The panels are looked for below the root.
    void start(const QString &station, platform::View *root);

public slots:
    /// `badge` is that of who works at the station; empty where nobody is asked for one. It is told nowhere:
    /// whoever replays is told to log in the same person, by a number.
    void runBegins(const QString &badge = {});
    /// Somebody wants the sequences to end. Called before they are told.
    void stopPressed();
    /// The sequences are told to end, by whomever.
    void runStops();
    void runEnds();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// A button or a row of a list that is perhaps being pressed, as things stood before.
    struct Press
    {
        QPointer<QObject> pressed;
        std::optional<ClickTarget> target;
        QString panel;
        QString description;
        PanelDiary diary;
        QList<PanelWait> waits;
    };

    void see(QWidget &widget, QEvent &event);
    void keyPressed(QWidget &widget, const QKeyEvent &key);
    void openSlot(QWidget &widget);
    void mouseReleased(QWidget &widget, const QMouseEvent &release);
    void pieceComes(QWidget &widget, const QString &text);
    void logsIn(const QString &badge);
    void lookLater();
    void catchUp();

    void beginEntry(platform::TextField *field);
    void endEntry(platform::TextField *field);
    void leaveEntry();
    void entryEnded();
    void aboutToPress(platform::Button *button, QAbstractButton *inner);
    void pressed();
    void aboutToPick(platform::ChoiceList *list, const QPoint &position);
    void picked(const QString &choice);

    void waitBefore(platform::View *view);
    void putWaits(const QList<PanelWait> &waits);
    void putToldBefore(const QString &panel);
    void put(const QString &line);
    [[nodiscard]] QString limit() const;
    [[nodiscard]] std::optional<QString> told(const QString &panel) const;
    void noteTold(const QString &panel);
    [[nodiscard]] platform::TextField *fieldAround(const QWidget &widget) const;
    [[nodiscard]] platform::Button *buttonAround(const QWidget &widget) const;

    Write m_write;
    QString
        m_beginning; ///< Until the first line, so that a station which cannot start leaves the file empty.
    QPointer<platform::View> m_root;
    PanelDiary m_diary;
    BegunEntry m_begun;
    Press m_press;
    QHash<QString, QString> m_told; ///< By panel: what it said after the last thing that was done in it.
    QElapsedTimer m_sinceLine;
    QStringList m_badges; ///< In the order in which they came.
    QString m_badge;      ///< Of the latest run.
    int m_run = 0;
    bool m_isRunning = false; ///< And was not stopped.
    bool m_isStopping = false;
    bool m_runEnded = false; ///< And no line says so yet.
    bool m_looksLater = false;
};

} // namespace station
