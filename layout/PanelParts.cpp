#include "layout/PanelParts.h"

#include "input/Entries.h"
#include "presentation/VerticallyCenteredTextFieldCell.h"

#include <algorithm>

#include "common/AskRules.h"
#include "common/Identifiers.h"
#include "common/Selectors.h"

namespace interactive::parts {

std::unique_ptr<platform::TextField> label(const platform::Rect &frame, const platform::Font &font,
                                           const QString &text)
{
    auto label = std::make_unique<platform::TextField>(frame);
    label->setBordered(false);
    label->setEditable(false);
    label->setDrawsBackground(false);
    label->setBackgroundColor(platform::Color::clear());
    label->setFont(font);
    label->setStringValue(text);
    return label;
}

std::unique_ptr<MouseTrackedTextField>
inputField(const platform::Rect &frame, const platform::Identifier &parentIdentifier, double fontSize)
{
    auto field = std::make_unique<MouseTrackedTextField>(frame);
    auto cell = std::make_unique<VerticallyCenteredTextFieldCell>();
    cell->setBezeled(true);
    cell->setBezelStyle(platform::TextFieldCell::BezelStyle::Square);
    field->setCell(std::move(cell));
    field->setParentIdentifier(parentIdentifier);
    field->setFont(platform::Font::system(fontSize));
    field->setDrawsBackground(true);
    field->setMaximumNumberOfLines(1);
    return field;
}

std::unique_ptr<MouseTrackedTextField> entryField(const platform::Rect &frame,
                                                  const platform::Identifier &panelKey, const QString &name,
                                                  double fontSize, const EntryAction &action)
{
    auto field = inputField(frame, panelKey, fontSize);
    field->setBordered(true);
    field->setEditable(true);
    field->setAutoresizingMask(platform::MinYMargin);
    field->setIdentifier(identifiers::named(panelKey.text(), name));
    field->setTarget(action.target, selectors::CheckInput,
                     [&entries = action.entries](platform::View *sender) { entries.endEntry(sender); });
    // What the field cannot hold never becomes an entry that could be checked, and is told all the same.
    field->setRefusalHandler([&entries = action.entries](const platform::TextField *refusing,
                                                         const platform::RefusedEntry &refused) {
        entries.refuseIn(refusing, refused);
    });
    return field;
}

void ask(MouseTrackedTextField &field, const AskRules &rules, const QString &name, const QString &description)
{
    field.setPlaceholder(rules.placeholder);
    field.setSpokenName(name);
    field.setSpokenDescription(description);
    // All labels of a panel have the same choices.
    field.setChoices(rules.entries.isEmpty() ? QStringList() : rules.entries.cbegin()->choices);
}

std::unique_ptr<platform::View> separator(const platform::Rect &frame, const platform::Identifier &identifier)
{
    auto line = std::make_unique<platform::View>(frame);
    line->setLayerBackgroundColor(platform::Color::lightGray());
    line->setAutoresizingMask(platform::MinXMargin | platform::WidthSizable);
    line->setIdentifier(identifier);
    return line;
}

std::unique_ptr<platform::Button> confirmButton(const platform::Rect &frame, const QString &title,
                                                const platform::Identifier &identifier, double fontSize,
                                                const ButtonAction &action)
{
    auto button = std::make_unique<platform::Button>(frame);
    button->setTitle(title);
    button->setBezelStyle(platform::Button::BezelStyle::RegularSquare);
    button->setIdentifier(identifier);
    button->setFont(platform::Font::system(fontSize));
    button->setTarget(action.target, selectors::ConfirmBtnClicked, action.pressed);
    return button;
}

void followWidth(const platform::View &around, platform::View &view, double least, double most)
{
    // The difference, so that the view keeps its distance from the edge that it was drawn with.
    const double difference = view.frame().width() - around.frame().width();
    // Between these two, so that the connection ends with whichever goes first: both are captured by
    // reference.
    QObject::connect(&around, &platform::View::frameChanged, &view,
                     [&around, &view, difference, least, most] {
                         const platform::Rect frame = view.frame();
                         const double width = std::clamp(around.frame().width() + difference, least, most);
                         view.setFrame({frame.x(), frame.y(), width, frame.height()});
                     });
}

} // namespace interactive::parts
