#pragma once

#include <QString>

#include <stdexcept>

namespace station {

/// Why the simulated operator could not do what its script asked; becomes an error of the script.
class OperatorFailure : public std::runtime_error
{
public:
    /// A zero in the text, where what() would end, is made visible.
    explicit OperatorFailure(const QString &text)
        : std::runtime_error(QString(text).replace(QChar(0), QChar(0x2400)).toStdString())
    {}
};

} // namespace station
