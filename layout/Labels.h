#pragma once

#include "platform/TextField.h"

namespace interactive {

/// A label: not bordered, not editable, on a clear background. The caller owns it. Thread: the main thread.
[[nodiscard]] platform::TextField *makeLabel(const platform::Rect &frame, const platform::Font &font,
                                             const QString &text);

} // namespace interactive
