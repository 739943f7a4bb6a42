#pragma once

/// What assistive technology is told of views. Thread: the main thread.
namespace platform::accessible {

/// Sees to it that views are told as what they are: one that groups others by its name, a label by its text,
/// a field with choices as a combo box that opens and folds. Called by each view, as often as it likes.
void describeViews();

} // namespace platform::accessible
