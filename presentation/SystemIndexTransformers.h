#pragma once

#include "platform/ValueTransformer.h"

#include <QString>

namespace interactive {

/// Turns a system index into the background colour that the host shows the system in, at 30 % opacity;
/// nothing when there is no index or the host has no colour. Colours travel as values of platform::Color.
///
/// Thread: any. Views name it by the class's name.
class SystemIndexToBackgroundColorValueTransformer : public platform::ValueTransformer
{
public:
    inline static const QString Name = QStringLiteral("SystemIndexToBackgroundColorValueTransformer");

    [[nodiscard]] QMetaType transformedValueClass() const override;
    [[nodiscard]] platform::Value transformedValue(const platform::Value &systemIndex) const override;
};

/// Turns a system index into the text colour that the host shows the system in, unchanged; nothing when there
/// is no index or the host has no colour.
///
/// Thread: any. Views name it by the class's name.
class SystemIndexToTextColorValueTransformer : public platform::ValueTransformer
{
public:
    inline static const QString Name = QStringLiteral("SystemIndexToTextColorValueTransformer");

    [[nodiscard]] QMetaType transformedValueClass() const override;
    [[nodiscard]] platform::Value transformedValue(const platform::Value &systemIndex) const override;
};

/// Puts one instance of each into the process's registry, under its class's name. Called before any tile is
/// made; a second call changes nothing.
void registerSystemIndexTransformers();

} // namespace interactive
