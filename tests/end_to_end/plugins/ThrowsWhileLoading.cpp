#include "tests/end_to_end/plugins/FixturePlugin.h"

#include <stdexcept>

/// Finds something amiss when it is made.
class ThrowsWhileLoading : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
public:
    ThrowsWhileLoading() { throw std::runtime_error("no licence for this station"); }
};

#include "ThrowsWhileLoading.moc"
