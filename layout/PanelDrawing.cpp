#include "layout/PanelDrawing.h"

#include "layout/PanelParts.h"

#include "common/Identifiers.h"

namespace interactive {

namespace {

constexpr double StatusFontSize = 11.0;
// Dark enough to be read in small type on white.
constexpr platform::Color StatusColor{0.69, 0.0, 0.13, 1.0};

} // namespace

void PanelDrawing::addStatusLine(platform::View &around)
{
    if (!plan.rules->hasStatusLine())
        return;
    statusLine = parts::add(
        around, parts::label(geometry.statusLine(), platform::Font::boldSystem(StatusFontSize), QString()));
    statusLine->setIdentifier(identifiers::named(plan.subject.panelKey.text(), identifiers::StatusLine));
    statusLine->setTextColor(StatusColor);
    statusLine->setBackgroundColor(platform::Color::white());
    statusLine->setDrawsBackground(false);
    parts::followWidth(around, *statusLine, 0.0, platform::LargestCoordinate);
}

} // namespace interactive
