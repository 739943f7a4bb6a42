#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "tests/end_to_end/plugins/FixturePlugin.h"

/// Offers a function to Lua that it does not have.
class MissingFunction : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
public:
    platform::Dictionary pluginFunctionTable() override
    {
        return {{QStringLiteral("measure"), platform::Array{__kviGetSelectorLabel("measure:error:"),
                                                            __kviArgTypeLabel(KVKArgType::NSNumber)}}};
    }
};

#include "MissingFunction.moc"
