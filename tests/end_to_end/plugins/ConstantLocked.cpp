#include "tests/end_to_end/plugins/FixturePlugin.h"

/// Offers a constant of a name that the sequencer gives.
class ConstantLocked : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
public:
    platform::Dictionary pluginConstants() override { return {{QStringLiteral("locked"), 1}}; }
};

#include "ConstantLocked.moc"
