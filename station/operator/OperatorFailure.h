#pragma once

#include <QString>

#include <stdexcept>

namespace station {

/// Why the simulated operator could not do what its script asked; becomes an error of the script.
class OperatorFailure : public std::runtime_error
{
public:
    explicit OperatorFailure(const QString &text)
        : std::runtime_error(text.toStdString())
    {}
};

} // namespace station
