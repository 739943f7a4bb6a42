#include "station/LogFile.h"

#include "station/base/StationError.h"
#include "station/look/LineBreaks.h"

#include <QTextStream>

#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <mutex>

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

LogFile::LogFile(const QString &path)
{
    showSystemErrors();
    if (path.isEmpty())
        return;
    try {
        auto sink = std::make_shared<spdlog::sinks::basic_file_sink_mt>(path.toStdString(), true);
        m_file = std::make_shared<spdlog::logger>("log", sink);
    } catch (const spdlog::spdlog_ex &problem) {
        throw StationError(QStringLiteral("--log: %1").arg(QString::fromUtf8(problem.what())));
    }
    m_file->set_pattern("%Y-%m-%dT%H:%M:%S.%e %l [%t] %v");
    m_file->set_level(spdlog::level::trace);
    m_file->set_error_handler([path, said = std::make_shared<std::once_flag>()](const std::string &why) {
        std::call_once(*said, [&] {
            QTextStream(stderr) << "station: the log cannot be written: " << path << ": "
                                << QString::fromStdString(why) << Qt::endl;
        });
    });
    // Line by line: what was logged is to be there when the program is ended hard.
    m_file->flush_on(spdlog::level::trace);
    m_sink = KVKLogGetProxy()->addSink([file = m_file](const KVKLogProxy::Line &line) {
        // Whoever reads the file line by line sees by the indentation that no new entry begins.
        const std::string text =
            withoutLineBreaks(line.message, QStringLiteral("\n") + ContinuedLine).toStdString();
        file->log(KVKLogSystemLevel(line.level), spdlog::string_view_t(text));
    });
}

LogFile::~LogFile()
{
    if (m_file)
        KVKLogGetProxy()->removeSink(m_sink);
}

} // namespace station
