#pragma once

#include "platform/Button.h"
#include "platform/Geometry.h"
#include "platform/TextField.h"
#include "presentation/MouseTrackedTextField.h"

#include <memory>

namespace interactive {
class Entries;
struct AskRules;
} // namespace interactive

/// The views that panels are made of. Thread: the main thread.
namespace interactive::parts {

/// Puts a view into another one, which owns it from then on.
template <class Kind>
Kind *add(platform::View &around, std::unique_ptr<Kind> view)
{
    Kind *added = view.get();
    around.addSubview(view.release());
    return added;
}

/// A label: not bordered, not editable, on a clear background.
[[nodiscard]] std::unique_ptr<platform::TextField> label(const platform::Rect &frame,
                                                         const platform::Font &font, const QString &text);

/// An input field as all panels have it: square bezel, text centred vertically, one line, drawing its
/// background.
[[nodiscard]] std::unique_ptr<MouseTrackedTextField>
inputField(const platform::Rect &frame, const platform::Identifier &parentIdentifier, double fontSize);

/// What a panel asks for in a field that takes entries: its placeholder, its choices, how it is called and
/// what is said about it.
void ask(MouseTrackedTextField &field, const AskRules &rules, const QString &name,
         const QString &description);

/// Where what is entered in a field goes.
struct EntryAction
{
    QObject *target;
    Entries &entries;
};
/// An input field that takes entries; `name` tells the panel's fields apart.
[[nodiscard]] std::unique_ptr<MouseTrackedTextField> entryField(const platform::Rect &frame,
                                                                const platform::Identifier &panelKey,
                                                                const QString &name, double fontSize,
                                                                const EntryAction &action);

/// The line above a group's band; a null identifier leaves it without a name.
[[nodiscard]] std::unique_ptr<platform::View> separator(const platform::Rect &frame,
                                                        const platform::Identifier &identifier);

/// What a panel's buttons tell when they are pressed.
struct ButtonAction
{
    QObject *target;
    platform::Control::Action pressed;
};
/// A button that ends, clears or confirms its panel.
[[nodiscard]] std::unique_ptr<platform::Button> confirmButton(const platform::Rect &frame,
                                                              const QString &title,
                                                              const platform::Identifier &identifier,
                                                              double fontSize, const ButtonAction &action);

/// Lets a view get wider and narrower with the one around it, within limits: what its mask alone would let
/// shrink away, or stay and reach outside, when the window gets narrower. Requires: both have their first
/// frames.
void followWidth(const platform::View &around, platform::View &view, double least, double most);

} // namespace interactive::parts
