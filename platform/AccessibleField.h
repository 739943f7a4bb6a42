#pragma once

/// What assistive technology is told of fields. Thread: the main thread.
namespace platform::accessible {

/// Sees to it that text fields are told as what they are: a label by its text, a field with choices as a
/// combo box that opens and folds. Called by each field, as often as it likes.
void describeFields();

} // namespace platform::accessible
