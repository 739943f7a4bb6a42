#include "input/Identifiers.h"
#include "input/SlotLabels.h"
#include "plugin/Configuration.h"
#include "plugin/InteractiveView.h"

namespace interactive {

platform::Identifier InteractiveView::getSubStringBefore(const QString &separator,
                                                         const platform::Identifier &from) const
{
    return identifiers::before(separator, from);
}

platform::Identifier InteractiveView::getSubStringAfter(const QString &separator,
                                                        const platform::Identifier &from) const
{
    return identifiers::after(separator, from);
}

QString InteractiveView::getString(const QString &key, const platform::Dictionary &from) const
{
    return config::text(key, from);
}

platform::Value InteractiveView::tagToSystemIndex(int tag) const
{
    return static_cast<qlonglong>(tag) - identifiers::TagOffset;
}

int InteractiveView::systemIndexToTag(const platform::Value &systemIndex) const
{
    return static_cast<int>(platform::integerValue(systemIndex) + identifiers::TagOffset);
}

platform::View *InteractiveView::subView(platform::View *parent, const platform::Identifier &identifier) const
{
    if (!parent)
        return nullptr;
    for (platform::View *view : parent->subviews()) {
        if (view->identifier().isSameInstance(identifier))
            return view;
    }
    return nullptr;
}

platform::Array InteractiveView::uniqueArray(const platform::Array &array) const
{
    return labels::unique(array);
}

platform::Array InteractiveView::orderedArray(const platform::Array &slotLabels) const
{
    return labels::ordered(slotLabels, m_systemIndexToSlotMapping, m_slotCount);
}

bool InteractiveView::hasDuplication(const platform::Array &array) const
{
    return labels::hasDuplication(array);
}

bool InteractiveView::hasInvalidLabel(const platform::Array &slotLabels) const
{
    return labels::hasInvalidLabel(slotLabels, m_systemIndexToSlotMapping);
}

} // namespace interactive
