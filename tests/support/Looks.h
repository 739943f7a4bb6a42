#pragma once

#include "platform/Button.h"
#include "platform/TextField.h"
#include "presentation/MouseTrackedTextField.h"
#include "tests/support/Printing.h"

#include <optional>
#include <ostream>

/// What views look like, as plain values: a test compares a whole view with one expectation, and a failure
/// prints both as text. What an expectation does not name has the value that a view has from the start.
///
/// Thread: the main thread.
namespace testsupport {

/// A label, or a field seen as one. A background that is not drawn is a clear one; a missing identifier is
/// "(null)".
struct TextLook
{
    platform::Rect frame;
    QString text{};
    platform::Font font{};
    platform::Color textColor = platform::Color::black();
    platform::Color background = platform::Color::clear();
    platform::TextAlignment alignment = platform::TextAlignment::Natural;
    unsigned mask = 0;
    bool bordered = false;
    bool editable = false;
    QString identifier = QStringLiteral("(null)");
};

/// An input field with what makes it one.
struct InputLook
{
    platform::Rect frame;
    QString identifier{};
    QString parentIdentifier{};
    platform::Font font{};
    platform::Color background = platform::Color::white();
    unsigned mask = 0;
    bool bordered = true;
    bool editable = true;
    QByteArray action = "checkInput:";
    QString text{};
    bool enabled = true;
    int lines = 1;
    bool centredVertically = true;
    bool squareBezel = true;
};

struct ButtonLook
{
    platform::Rect frame;
    QString title{};
    QString identifier{};
    platform::Font font{};
    unsigned mask = 0;
    QByteArray action = "confirmBtnClicked:";
    platform::Button::BezelStyle bezel = platform::Button::BezelStyle::RegularSquare;
    platform::Button::Type type = platform::Button::Type::MomentaryPush;
    platform::Button::State state = platform::Button::Off;
    bool bordered = true;
    bool enabled = true;
    std::optional<platform::Shadow> shadow{};
};

[[nodiscard]] TextLook lookOf(const platform::TextField *label);
[[nodiscard]] InputLook lookOf(const interactive::MouseTrackedTextField *field);
[[nodiscard]] ButtonLook lookOf(const platform::Button *button);

/// Every detail of a look in one line; equal looks have equal lines.
[[nodiscard]] QString inWords(const TextLook &look);
[[nodiscard]] QString inWords(const InputLook &look);
[[nodiscard]] QString inWords(const ButtonLook &look);
[[nodiscard]] QString inWords(const platform::Rect &rect);
[[nodiscard]] QString inWords(const platform::Color &color);
/// The identifier's text, "(null)" when there is none.
[[nodiscard]] QString identifierOf(const platform::View *view);

template <class Look>
concept SeenLook = requires(const Look &look)
{
    {
        look.frame
        } -> std::convertible_to<platform::Rect>;
    inWords(look);
};
template <SeenLook Look>
bool operator==(const Look &a, const Look &b)
{
    return inWords(a) == inWords(b);
}
template <SeenLook Look>
std::ostream &operator<<(std::ostream &stream, const Look &look)
{
    return stream << '\n' << inWords(look).toStdString();
}

} // namespace testsupport
