#include "tests/support/Looks.h"

#include "presentation/VerticallyCenteredTextFieldCell.h"

#include <QStringList>

using platform::Button;
using platform::Color;
using platform::Font;
using platform::Rect;
using platform::Shadow;
using platform::TextField;
using platform::TextFieldCell;
using platform::View;

namespace testsupport {
namespace {

/// Twelve digits tell apart everything that a panel could mean, and no rounding of a product.
QString number(double value)
{
    return QString::number(value, 'g', 12);
}

QString yesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

QString fontInWords(const Font &font)
{
    return number(font.size) + (font.bold ? QStringLiteral(" bold") : QString());
}

QString shadowInWords(const std::optional<Shadow> &shadow)
{
    if (!shadow)
        return QStringLiteral("none");
    return QStringLiteral("%1 radius %2 offset %3, %4")
        .arg(testsupport::inWords(shadow->color), number(shadow->radius), number(shadow->offset.width()),
             number(shadow->offset.height()));
}

Color backgroundOf(const TextField *field)
{
    return field->drawsBackground() ? field->backgroundColor() : Color::clear();
}

} // namespace

QString inWords(const Rect &rect)
{
    return QStringLiteral("(%1, %2, %3, %4)")
        .arg(number(rect.x()), number(rect.y()), number(rect.width()), number(rect.height()));
}

QString inWords(const Color &color)
{
    return QStringLiteral("rgba(%1, %2, %3, %4)")
        .arg(number(color.red), number(color.green), number(color.blue), number(color.alpha));
}

QString identifierOf(const View *view)
{
    return view->identifier().isNull() ? QStringLiteral("(null)") : view->identifier().text();
}

TextLook lookOf(const TextField *label)
{
    return {.frame = label->frame(),
            .text = label->stringValue(),
            .font = label->font(),
            .textColor = label->textColor(),
            .background = backgroundOf(label),
            .alignment = label->alignment(),
            .mask = label->autoresizingMask(),
            .bordered = label->isBordered(),
            .editable = label->isEditable(),
            .identifier = identifierOf(label)};
}

InputLook lookOf(const interactive::MouseTrackedTextField *field)
{
    const TextFieldCell &cell = field->cell();
    const platform::Identifier parent = field->parentIdentifier();
    return {.frame = field->frame(),
            .identifier = identifierOf(field),
            .parentIdentifier = parent.isNull() ? QStringLiteral("(null)") : parent.text(),
            .font = field->font(),
            .background = backgroundOf(field),
            .mask = field->autoresizingMask(),
            .bordered = field->isBordered(),
            .editable = field->isEditable(),
            .action = field->actionSelector(),
            .text = field->stringValue(),
            .enabled = field->isEnabled(),
            .lines = field->maximumNumberOfLines(),
            .centredVertically =
                dynamic_cast<const interactive::VerticallyCenteredTextFieldCell *>(&cell) != nullptr,
            .squareBezel = cell.isBezeled() && cell.bezelStyle() == TextFieldCell::BezelStyle::Square};
}

ButtonLook lookOf(const Button *button)
{
    return {.frame = button->frame(),
            .title = button->title(),
            .identifier = identifierOf(button),
            .font = button->font(),
            .mask = button->autoresizingMask(),
            .action = button->actionSelector(),
            .bezel = button->bezelStyle(),
            .type = button->buttonType(),
            .state = button->state(),
            .bordered = button->isBordered(),
            .enabled = button->isEnabled(),
            .shadow = button->shadow()};
}

QString inWords(const TextLook &look)
{
    return QStringList{"frame " + inWords(look.frame),
                       "text '" + look.text + '\'',
                       "font " + fontInWords(look.font),
                       "text colour " + inWords(look.textColor),
                       "background " + inWords(look.background),
                       "alignment " + QString::number(static_cast<int>(look.alignment)),
                       "mask " + QString::number(look.mask),
                       "bordered " + yesNo(look.bordered),
                       "editable " + yesNo(look.editable),
                       "identifier " + look.identifier}
        .join("; ");
}

QString inWords(const InputLook &look)
{
    return QStringList{"frame " + inWords(look.frame),
                       "identifier " + look.identifier,
                       "parent " + look.parentIdentifier,
                       "font " + fontInWords(look.font),
                       "background " + inWords(look.background),
                       "mask " + QString::number(look.mask),
                       "bordered " + yesNo(look.bordered),
                       "editable " + yesNo(look.editable),
                       "action '" + QString::fromLatin1(look.action) + '\'',
                       "text '" + look.text + '\'',
                       "enabled " + yesNo(look.enabled),
                       "lines " + QString::number(look.lines),
                       "centred vertically " + yesNo(look.centredVertically),
                       "square bezel " + yesNo(look.squareBezel)}
        .join("; ");
}

QString inWords(const ButtonLook &look)
{
    return QStringList{"frame " + inWords(look.frame),
                       "title '" + look.title + '\'',
                       "identifier " + look.identifier,
                       "font " + fontInWords(look.font),
                       "mask " + QString::number(look.mask),
                       "action " + QString::fromLatin1(look.action),
                       "bezel " + QString::number(static_cast<int>(look.bezel)),
                       "type " + QString::number(static_cast<int>(look.type)),
                       "state " + QString::number(look.state),
                       "bordered " + yesNo(look.bordered),
                       "enabled " + yesNo(look.enabled),
                       "shadow " + shadowInWords(look.shadow)}
        .join("; ");
}

} // namespace testsupport
