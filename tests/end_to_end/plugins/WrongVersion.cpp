#include "tests/end_to_end/plugins/FixturePlugin.h"

/// Built against another version of the host's interface than the host has.
class WrongVersion : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.kovan.UIExtension.InteractiveView/9.0")
    Q_INTERFACES(KVKExtensionInteractiveView)
};

#include "WrongVersion.moc"
