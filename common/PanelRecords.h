#pragma once

#include "platform/Value.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <mutex>
#include <optional>

#include "common/LoopRecord.h"

namespace interactive {

/// The answers that panels collect, and the loop record: what the system calls `savedData`.
///
/// A panel's record lies under its panel key: "length", the required length of an entry, from the drawing
/// until the answer; one entry a slot; "clickedButton", the identifier of the button that ended the panel.
/// The loop record lies under "Loop". Besides, an answer is kept for each question of a panel, so that loop
/// mode can give each question its own answer back.
///
/// What is handed out is a copy of its own, never written again, whichever thread still reads it. Thread:
/// any.
class PanelRecords
{
public:
    /// What loop mode gives back without asking again.
    struct Answer
    {
        platform::Value record;
        /// A switch panel's states at its end; nothing for other panels.
        platform::Value states;
    };

    /// As they stand now; what is handed out is not written again.
    [[nodiscard]] platform::Dictionary all() const;
    /// Replaces everything, the answers of former questions included.
    void restore(const platform::Dictionary &data);

    // A panel's record
    /// Nothing when there is none.
    [[nodiscard]] std::optional<platform::Dictionary> record(const QString &panelKey) const;
    [[nodiscard]] bool contains(const QString &panelKey) const;
    /// Which asking a panel's record belongs to; 0 where none was begun. A press notes it, so that what it
    /// writes cannot come into the record of a later asking.
    [[nodiscard]] quint64 asking(const QString &panelKey) const;
    /// Begins an asking, with a record that holds the required length alone, for a question, whose former
    /// answer is forgotten.
    void start(const QString &panelKey, qint64 length, const QString &question);
    void store(const QString &panelKey, const QString &slot, const platform::Value &entry);
    /// Takes a slot's entry out and returns the record as it stands then; an empty record is made where there
    /// is none.
    platform::Dictionary makeRoom(const QString &panelKey, const QString &slot);
    /// Takes a slot's entry out; false when the record, or the entry in it, does not exist.
    bool discard(const QString &panelKey, const QString &slot);
    /// Notes the button that ends the panel, in a new record where there is none; false, and nothing else,
    /// when the asking is over. So do the next two.
    bool press(const QString &panelKey, const QString &buttonIdentifier, quint64 asking);
    /// Leaves the required length alone, or no record when it has none.
    bool clear(const QString &panelKey, quint64 asking);
    bool forget(const QString &panelKey, quint64 asking);
    /// Takes "length" out, which the answer does not hold.
    void finish(const QString &panelKey);
    /// Ends the asking, and leaves no record.
    void forget(const QString &panelKey);

    // Answers of questions
    /// Keeps the record of a panel as the answer to its question.
    void keepAnswer(const QString &panelKey, const QString &question, const platform::Value &states);
    /// The kept answer to a question; also a record that was restored, of which no question is known. Nothing
    /// when the question was not answered yet.
    [[nodiscard]] std::optional<Answer> answer(const QString &panelKey, const QString &question) const;
    /// Makes a kept answer the panel's record again, for whoever reads single values of it.
    void giveAgain(const QString &panelKey, const QString &question, const Answer &answer);
    /// Forgets the kept answers of a panel, and its record unless it is being filled.
    void forgetAnswers(const QString &panelKey, bool isBeingFilled);
    /// Forgets the records and kept answers of all panels; the loop record stays.
    void forgetAllAnswers();

    /// How much is kept, for whoever looks whether it grows with the calls.
    struct Kept
    {
        qsizetype records = 0;
        qsizetype askings = 0;
        qsizetype answers = 0; ///< Of all panels.
    };
    [[nodiscard]] Kept kept() const;

    // The loop record
    /// Empty when there is none.
    [[nodiscard]] platform::Dictionary loopRecord() const;
    void setLoopMaximum(const platform::Value &maximum);
    /// Sets the number of passes and every group's count to 0, and loop mode on or off with it.
    void startLoop(qint64 maximum, quint64 groupCount);
    /// Counts a pass of a group; true when it was the last one.
    bool finishPass(const platform::Value &groupNumber);
    [[nodiscard]] bool isLoopEnabled() const;
    void setLoopEnabled(bool enabled);

private:
    template <class Change>
    void replace(Change change);
    template <class Change>
    void replaceRecord(const QString &panelKey, Change change);
    template <class Change>
    bool replaceAsked(const QString &panelKey, quint64 asking, Change change);

    mutable std::mutex m_mutex;
    /// Never handed out, and so changed in place: a copy for each change would cost more the more panels are
    /// open.
    platform::Dictionary m_data;
    /// What was handed out since the last change, for those that ask until the next one.
    mutable std::optional<platform::Dictionary> m_given;
    QHash<QString, quint64> m_askings; ///< By panel key.
    quint64 m_lastAsking = 0;
    QHash<QString, QHash<QString, Answer>> m_answers;
    /// Panels whose record was restored, so that nobody knows its question.
    QSet<QString> m_unasked;
    bool m_isLoopEnabled = false;
};

} // namespace interactive
