#pragma once

#include <QString>

namespace station {

/// What an operator can hear.
enum class Sound {
    Accepted, ///< An entry counts.
    Refused,  ///< An entry does not.
    Finished, ///< A panel was answered.
    Error,    ///< Something is to be read.
};

/// The name of its file.
[[nodiscard]] inline QString nameOf(Sound sound)
{
    switch (sound) {
    case Sound::Accepted:
        return QStringLiteral("accepted");
    case Sound::Refused:
        return QStringLiteral("refused");
    case Sound::Finished:
        return QStringLiteral("finished");
    case Sound::Error:
        break;
    }
    return QStringLiteral("error");
}

} // namespace station
