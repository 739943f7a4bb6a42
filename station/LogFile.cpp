#include "station/LogFile.h"

#include "station/base/StationError.h"
#include "station/look/LineBreaks.h"

#include <QTextStream>

#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <utility>

namespace station {

namespace {

const QString ContinuedLine(4, QLatin1Char(' '));

void showSystemErrors()
{
    auto logger =
        std::make_shared<spdlog::logger>("station", std::make_shared<spdlog::sinks::stderr_sink_mt>());
    logger->set_pattern("station: %v");
    // Errors of the plug-ins go to the log file and the pane; the terminal is for what the station itself
    // cannot go on with.
    logger->set_level(spdlog::level::critical);
    KVKLogGetAnchor()->setLogger(logger);
}

} // namespace

/// Writes batches of lines. Thread: the log's.
class LogFile::Writer
{
public:
    /// Errors: throws spdlog::spdlog_ex when the file cannot be opened.
    explicit Writer(const QString &path)
        : m_path(path)
        , m_file(path.toStdString(), true)
    {
        m_file.set_pattern("%Y-%m-%dT%H:%M:%S.%e %l [%t] %v");
    }

    void write(std::span<const KVKLogRecord> lines)
    {
        for (const KVKLogRecord &line : lines)
            tellFailure([&] { write(line); });
        // What was logged is to be there when the program is ended hard.
        tellFailure([this] { m_file.flush(); });
    }

private:
    void write(const KVKLogRecord &line)
    {
        // Whoever reads the file line by line sees by the indentation that no new entry begins.
        const std::string text =
            withoutLineBreaks(line.message, QStringLiteral("\n") + ContinuedLine).toStdString();
        spdlog::details::log_msg message(line.time, {}, {}, KVKLogSystemLevel(line.level), text);
        message.thread_id = line.thread;
        m_file.log(message);
    }

    template <class Work>
    void tellFailure(const Work &work)
    {
        try {
            work();
        } catch (const std::exception &problem) {
            if (!std::exchange(m_hasTold, true)) {
                QTextStream(stderr) << "station: the log cannot be written: " << m_path << ": "
                                    << QString::fromUtf8(problem.what()) << Qt::endl;
            }
        }
    }

    QString m_path;
    spdlog::sinks::basic_file_sink_st m_file;
    bool m_hasTold = false;
};

LogFile::LogFile(const QString &path)
{
    showSystemErrors();
    if (path.isEmpty())
        return;
    m_crashGuard.emplace();
    try {
        m_receiver =
            KVKLogGetProxy()->addReceiver([writer = std::make_shared<Writer>(path)](
                                              std::span<const KVKLogRecord> lines) { writer->write(lines); });
    } catch (const spdlog::spdlog_ex &problem) {
        throw StationError(QStringLiteral("--log: %1").arg(QString::fromUtf8(problem.what())));
    }
}

LogFile::~LogFile()
{
    if (m_receiver)
        KVKLogGetProxy()->removeReceiver(*m_receiver);
}

} // namespace station
