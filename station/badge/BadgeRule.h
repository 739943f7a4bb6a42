#pragma once

#include <QString>

#include <optional>

namespace station {

/// What an operator's badge has to be.
///
/// Thread: a plain value.
struct BadgeRule
{
    bool isAsked = false; ///< Whether a run needs a badge.
    QString pattern;      ///< A regular expression that the whole badge matches; any text when empty.

    /// Longer than any badge, shorter than what somebody has scanned by mistake and nobody could read.
    static constexpr qsizetype LongestBadge = 256;

    /// Why the text is no badge, in words for the operator; nothing when it is one.
    [[nodiscard]] std::optional<QString> whyNot(const QString &text) const;
    /// Whether a badge can be told from a serial number by its form.
    [[nodiscard]] bool hasForm() const { return !pattern.isEmpty(); }
    /// Why the pattern is none; nothing when it is one.
    [[nodiscard]] static std::optional<QString> whyNoPattern(const QString &pattern);
};

} // namespace station
