#pragma once

#include "platform/Value.h"

#include <QMetaType>
#include <QString>

namespace platform {

/// Why an operation gave no answer. Operations that can fail take an `Error *` as their last argument, which
/// may be null when the caller does not want to know; it is written on failure only and otherwise left as it
/// was. Callers test for presence (isPresent), never for a code.
///
/// Thread: a plain value.
struct Error
{
    QString domain;
    int code = 0;
    QString localizedDescription;
    /// What else the operation has to say, by name; empty for most errors.
    Dictionary additions = {};

    [[nodiscard]] bool isPresent() const { return !domain.isEmpty(); }
    friend bool operator==(const Error &, const Error &) = default;
};

/// Writes an error where the caller asked for one.
/// Requires: domain is not empty.
inline void storeError(Error *error, const QString &domain, int code, const QString &description,
                       const Dictionary &additions = {})
{
    if (error)
        *error = Error{domain, code, description, additions};
}

} // namespace platform

Q_DECLARE_METATYPE(platform::Error *)
