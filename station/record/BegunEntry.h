#pragma once

#include "platform/TextField.h"
#include "station/operator/ClickTarget.h"

#include <QKeyEvent>
#include <QPointer>

#include <optional>

namespace station {

/// An entry that somebody has begun and not ended: in which field, what it has become by now.
///
/// The text is kept, since a field may go with its panel. Corrections leave no trace in it; the keys
/// themselves are kept for an entry that the field refuses, which holds none of it.
/// Thread: the main thread.
class BegunEntry
{
public:
    [[nodiscard]] bool isIn(const platform::TextField *field) const { return field && m_field == field; }
    /// Somebody is about to change the field's text. The target is how a script names the field; nothing when
    /// it cannot.
    void begin(platform::TextField *field, const std::optional<ClickTarget> &target);
    /// A key on its way to the field.
    void addKey(const QKeyEvent &key);
    /// A text on its way to the field in one piece: pasted, dropped or composed.
    void addPiece(const QString &text);
    /// Takes what the field holds by now, where it is still there.
    void settle();
    void forget();

    [[nodiscard]] const std::optional<ClickTarget> &target() const { return m_target; }
    [[nodiscard]] const QString &text() const { return m_text; }
    /// Whether there is anything to be told: the text was changed, or written anew.
    [[nodiscard]] bool isChanged() const { return m_isBegun || m_text != m_before; }
    /// Whether the field refuses what is being written into it.
    [[nodiscard]] bool isRefused() const { return m_isRefused; }
    /// What keys and pieces so far would write.
    [[nodiscard]] const QString &keys() const { return m_keys; }
    [[nodiscard]] bool hasPieces() const { return m_hasPieces; }

private:
    QPointer<platform::TextField> m_field;
    std::optional<ClickTarget> m_target;
    QString m_before;
    QString m_text;
    QString m_keys;
    bool m_hasPieces = false;
    bool m_isBegun = false;
    bool m_isRefused = false;
};

} // namespace station
