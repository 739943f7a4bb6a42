#pragma once

#include <QString>

#include <stdexcept>

namespace station {

/// Why the station cannot start, in one line for the person who started it.
class StationError : public std::runtime_error
{
public:
    explicit StationError(const QString &text)
        : std::runtime_error(text.toStdString())
    {}
    [[nodiscard]] QString text() const { return QString::fromUtf8(what()); }
};

} // namespace station
