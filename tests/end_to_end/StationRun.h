#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace testsupport {

/// One run of the station program, seen from outside: what is written here is a configuration, sequences and
/// an operator's script in a folder of their own; what is looked at is the exit status, the error stream, the
/// results file and the log file.
///
/// Without a configuration of its own a run has one made of groups(), slotNames() and the sequences. A run
/// that does not end within its limit is killed, and fails the test with all that it wrote.
class StationRun
{
public:
    StationRun();

    StationRun &groups(const QStringList &names);
    StationRun &slotNames(const QStringList &names);
    /// Adds a sequence that runs once per "system", "group" or "station".
    StationRun &sequence(const QString &per, const QString &lua);
    StationRun &perSystem(const QString &lua) { return sequence(QStringLiteral("system"), lua); }
    StationRun &perGroup(const QString &lua) { return sequence(QStringLiteral("group"), lua); }
    StationRun &perStation(const QString &lua) { return sequence(QStringLiteral("station"), lua); }
    /// The operator's script; it may use `eventually(condition, what)`, which waits for a condition.
    StationRun &operatorDoes(const QString &lua);
    /// Adds a table to the configuration that is made.
    StationRun &table(const QString &toml);
    /// Takes the whole configuration as it is given.
    StationRun &config(const QString &toml);
    /// Takes configuration and operator's script from a folder of examples/.
    StationRun &example(const QString &folder);
    /// Adds an argument of the command line.
    StationRun &argument(const QString &text);
    /// Uses another plug-in; an empty path for none.
    StationRun &plugin(const QString &path);
    /// Writes a further file into the run's folder and returns its path.
    QString file(const QString &name, const QString &content) const;

    /// Runs the station to its end.
    void run();
    /// The same in two steps, for what happens in between.
    void start();
    void finish();
    /// Calls run() and expects that every sequence and the operator's script passed.
    void passes();

    [[nodiscard]] QProcess &process() { return m_process; }
    [[nodiscard]] int status() const { return m_status; }
    [[nodiscard]] QString errors() const { return m_errors; }
    /// What stands in the error stream when it is one line; otherwise the test fails.
    [[nodiscard]] QString errorLine() const;
    /// What the station has printed: its answers.
    [[nodiscard]] QString output() const { return m_output; }
    [[nodiscard]] QString log() const;
    [[nodiscard]] QString path(const QString &name) const;

    /// The lines of the results file, in their order.
    [[nodiscard]] QList<QJsonObject> results() const;
    /// The calls of the function that the sequence of a system, a group or the station ("") has made.
    [[nodiscard]] QList<QJsonObject> calls(const QString &function, const QString &subject) const;
    /// The result of the only such call; fails the test when there is another number of them.
    [[nodiscard]] QJsonValue answer(const QString &function, const QString &subject) const;
    /// How the sequence of a system, a group or the station ("") ended.
    [[nodiscard]] QJsonObject end(const QString &subject) const;
    [[nodiscard]] QString outcome(const QString &subject) const;
    [[nodiscard]] QString outcome(int system) const { return outcome(QString::number(system)); }

    /// All that the run has written, for a test's message.
    [[nodiscard]] QString everything() const;

private:
    [[nodiscard]] QString madeConfig() const;
    [[nodiscard]] QStringList commandLine();

    QTemporaryDir m_folder;
    QStringList m_groups{QStringLiteral("G1")};
    QStringList m_slotNames{QStringLiteral("S1")};
    QString m_sequences;
    QString m_tables;
    int m_sequenceCount = 0;
    QString m_config;
    QString m_configPath;
    QString m_operatorPath;
    QString m_plugin;
    QStringList m_arguments;
    QProcess m_process;
    int m_status = -1;
    QString m_errors;
    QString m_output;
};

} // namespace testsupport
