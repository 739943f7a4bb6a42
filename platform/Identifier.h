#pragma once

#include <QHashFunctions>
#include <QString>

#include <memory>

namespace platform {

/// The name that a view bears, with the identity of the string it was made from.
///
/// Copies of an Identifier share one text instance; `==` compares the text, isSameInstance() asks whether
/// two identifiers are copies of the same one. Constructing from text always makes a new instance, even for
/// a text that is in use elsewhere: most look-ups compare text, but a few compare the instance and must not
/// match a text that happens to be equal.
///
/// A default-constructed Identifier is null: "no identifier", the same instance as no other, itself included.
///
/// Thread: immutable after construction; may be copied and compared from any thread.
class Identifier
{
public:
    Identifier() = default;
    explicit Identifier(const QString &text);

    /// True when there is no identifier at all (not: an identifier with an empty text).
    [[nodiscard]] bool isNull() const;
    /// The text; empty when null.
    [[nodiscard]] QString text() const;
    /// True when both are copies of one instance.
    [[nodiscard]] bool isSameInstance(const Identifier &other) const;

    /// Compares the texts; two null identifiers are equal, a null and an empty one are not.
    friend bool operator==(const Identifier &a, const Identifier &b);
    friend size_t qHash(const Identifier &identifier, size_t seed = 0)
    {
        return qHash(identifier.text(), seed);
    }

private:
    std::shared_ptr<const QString> m_text;
};

} // namespace platform
