#pragma once

namespace platform {

/// The platform's text alignments, with its numbers.
enum class TextAlignment { Left = 0, Right = 1, Center = 2, Justified = 3, Natural = 4 };

} // namespace platform
