#include "station/QtMessages.h"

#include "kovan/KovanLogging/KVKLogging.h"

#include <QString>

#include <cstdio>
#include <cstdlib>

namespace station {

namespace {

/// As the command line's help says of a station that could not start.
constexpr int CannotStart = 2;

spdlog::level::level_enum levelOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return spdlog::level::debug;
    case QtInfoMsg:
        return spdlog::level::info;
    case QtWarningMsg:
        return spdlog::level::warn;
    case QtCriticalMsg:
    case QtFatalMsg:
        break;
    }
    return spdlog::level::err;
}

void routeMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    const std::string text = message.toStdString();
    if (type == QtFatalMsg) {
        // Qt would abort after this.
        const std::string firstLine = text.substr(0, text.find('\n'));
        std::fprintf(stderr, "station: %s\n", firstLine.c_str());
        static_cast<void>(KVKLogGetProxy()->flush(KVKLogProxy::EndLimit));
        // Without destructors: Qt calls this from within itself, and is in no state to be taken down.
        std::_Exit(CannotStart);
    }
    KVKLogGetAnchor()->logger()->log(levelOf(type), spdlog::string_view_t(text));
}

} // namespace

void routeQtMessages()
{
    qInstallMessageHandler(routeMessage);
}

} // namespace station
