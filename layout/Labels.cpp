#include "layout/Labels.h"

namespace interactive {

platform::TextField *makeLabel(const platform::Rect &frame, const platform::Font &font, const QString &text)
{
    auto label = std::make_unique<platform::TextField>(frame);
    label->setBordered(false);
    label->setEditable(false);
    label->setDrawsBackground(false);
    label->setBackgroundColor(platform::Color::clear());
    label->setFont(font);
    label->setStringValue(text);
    return label.release();
}

} // namespace interactive
