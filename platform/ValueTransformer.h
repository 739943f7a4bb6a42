#pragma once

#include "platform/Value.h"

#include <QMetaType>
#include <QString>

#include <memory>

namespace platform {

/// Turns a value into another one, for views that name the transformer they want by a word.
///
/// Thread: transformers keep no state; any. The registry is filled before any view that names a transformer
/// is made, and locked within.
class ValueTransformer
{
public:
    virtual ~ValueTransformer() = default;

    /// The type of the transformed values; an invalid one when they may be of any type.
    [[nodiscard]] virtual QMetaType transformedValueClass() const;
    /// The transformed value, or nothing.
    [[nodiscard]] virtual Value transformedValue(const Value &value) const = 0;
    /// Whether reverseTransformedValue() may be called; false unless a transformer says otherwise.
    [[nodiscard]] virtual bool allowsReverseTransformation() const;
    /// Errors: throws std::logic_error when reverse transformation is not allowed.
    [[nodiscard]] virtual Value reverseTransformedValue(const Value &value) const;

    /// Registers a transformer under a name for the whole process; a later one of the same name replaces it.
    static void setValueTransformer(const std::shared_ptr<const ValueTransformer> &transformer,
                                    const QString &name);
    /// The transformer of that name, or null.
    [[nodiscard]] static std::shared_ptr<const ValueTransformer> forName(const QString &name);
};

} // namespace platform
