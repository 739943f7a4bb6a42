#pragma once

#include "presentation/MouseTrackedTextField.h"

#include <memory>

namespace interactive {

/// An input field as all panels have it: square bezel, text centred vertically, one line, drawing its
/// background. Thread: the main thread.
[[nodiscard]] std::unique_ptr<MouseTrackedTextField>
makeInputField(const platform::Rect &frame, const platform::Identifier &parentIdentifier, double fontSize);

} // namespace interactive
