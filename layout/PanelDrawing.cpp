#include "layout/PanelDrawing.h"

#include "layout/PanelParts.h"
#include "presentation/SlotColors.h"

#include "common/Identifiers.h"

namespace interactive {

namespace {

constexpr double StatusFontSize = 11.0;

} // namespace

void PanelDrawing::addStatusLine(platform::View &around)
{
    if (!plan.rules->hasStatusLine())
        return;
    statusLine = parts::add(
        around, parts::label(geometry.statusLine(), platform::Font::boldSystem(StatusFontSize), QString()));
    statusLine->setIdentifier(identifiers::named(plan.subject.panelKey.text(), identifiers::StatusLine));
    statusLine->setTextColor(SlotColors::refusalTextColor());
    statusLine->setBackgroundColor(platform::Color::white());
    statusLine->setDrawsBackground(false);
    statusLine->setSpokenRole(QAccessible::AlertMessage);
    parts::followWidth(around, *statusLine, 0.0, platform::LargestCoordinate);
}

} // namespace interactive
