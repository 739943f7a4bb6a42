#pragma once

#include "station/results/ResultRows.h"
#include "station/results/RowWriter.h"
#include "station/results/SqliteFile.h"

#include <optional>

namespace station {

/// What waits for a results server, in a SQLite file: one letter an event, in their order; and apart from
/// these (in the table "refused") the letters that the server has refused for what they are.
///
/// Several connections may use a file at once, each on a thread of its own: one that adds and one that takes
/// away. Errors: throws SqlError.
class Outbox
{
public:
    struct Letter
    {
        qint64 number; ///< Grows, and is never used again.
        bool isAnswer;
        ResultRows rows;
    };
    struct Count
    {
        qint64 letters;
        qint64 answers; ///< So many of the letters are calls.
    };

    /// Makes the file's tables where there are none.
    explicit Outbox(const QString &path, std::chrono::milliseconds patience = UsualPatience);

    /// Names the station, made when the file was.
    [[nodiscard]] QString stationId();
    /// Returns when the letter is safe.
    void add(const ResultRows &rows);
    /// The oldest letters: so many at most, and not many bytes more than a few millions.
    [[nodiscard]] QList<Letter> oldest(int most);
    /// Takes away all up to this number.
    void removeUpTo(qint64 number);
    /// Sets a letter apart, with the server's words and the time.
    void refuse(qint64 number, const QString &why);
    /// Puts the refused ones back to where they were among the letters. Returns how many there were.
    qint64 retryRefused();
    /// Of the letters that wait.
    [[nodiscard]] Count count();

private:
    void makeTables();
    void makeFirstTables();

    SqliteConnection m_connection;
};

/// Whether rows are about a call, which people count.
[[nodiscard]] bool isAnswer(const ResultRows &rows);

/// The outbox of a configuration that names none: in the user's folder for state, a file for each
/// configuration.
[[nodiscard]] QString usualOutbox(const QString &configuration);

} // namespace station
