#pragma once

#include <QString>

namespace platform {

/// An entry that its field could not take.
struct RefusedEntry
{
    /// What was typed or scanned, cut at the longest entry; a control character is shown by its picture.
    QString text;
    /// "longer than 4096 characters" or "control character U+0007".
    QString why;
};

} // namespace platform
