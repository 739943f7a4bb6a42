#include "platform/Button.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"
#include "plugin/InteractiveView.h"

namespace interactive {

platform::View *InteractiveView::rootView() const
{
    return m_rootView;
}

platform::SplitView *InteractiveView::splitView() const
{
    return m_splitView;
}

platform::ScrollView *InteractiveView::scrollView() const
{
    return m_scrollView;
}

platform::TextField *InteractiveView::loopNumberField() const
{
    return m_loopNumberField;
}

platform::Dictionary InteractiveView::savedData()
{
    return m_savedData.copy();
}

void InteractiveView::setSavedData(const platform::Dictionary &data)
{
    *m_savedData.lock() = data;
}

platform::Dictionary InteractiveView::enableStatus()
{
    return m_enableStatus.copy();
}

void InteractiveView::setEnableStatus(const platform::Dictionary &status)
{
    *m_enableStatus.lock() = status;
}

InteractiveView::Responders InteractiveView::responders(const QString &key)
{
    return m_responders.lock()->value(key);
}

void InteractiveView::setResponders(const QString &key, const Responders &fields)
{
    m_responders.lock()->insert(key, fields);
}

bool InteractiveView::hasResponders(const QString &key)
{
    return m_responders.lock()->contains(key);
}

QList<platform::Button *> InteractiveView::groupButtons()
{
    QList<platform::Button *> buttons;
    const auto guard = m_groupButtons.lock();
    for (const QPointer<platform::Button> &button : *guard) {
        if (button)
            buttons.append(button);
    }
    return buttons;
}

platform::CollectionView *InteractiveView::collection(const QString &groupName)
{
    return m_collections.lock()->value(groupName);
}

platform::Array InteractiveView::systemIndexToGroupMapping() const
{
    return m_systemIndexToGroupMapping;
}

platform::Array InteractiveView::systemIndexToSlotMapping() const
{
    return m_systemIndexToSlotMapping;
}

quint64 InteractiveView::groupCount() const
{
    return m_groupCount;
}

quint64 InteractiveView::slotCount() const
{
    return m_slotCount;
}

bool InteractiveView::customColorEnabled() const
{
    return m_customColorEnabled;
}

void InteractiveView::setCustomColorEnabled(bool enabled)
{
    m_customColorEnabled = enabled;
}

bool InteractiveView::drawShadow() const
{
    return m_drawShadow;
}

void InteractiveView::setDrawShadow(bool draw)
{
    m_drawShadow = draw;
}

double InteractiveView::backgroundAlpha() const
{
    return m_backgroundAlpha;
}

void InteractiveView::setBackgroundAlpha(double alpha)
{
    m_backgroundAlpha = alpha;
}

quint64 InteractiveView::columns() const
{
    return m_columns;
}

void InteractiveView::setColumns(quint64 columns)
{
    m_columns = columns;
}

bool InteractiveView::isLoopEnabled() const
{
    return m_isLoopEnabled;
}

void InteractiveView::setIsLoopEnabled(bool enabled)
{
    m_isLoopEnabled = enabled;
}

} // namespace interactive
