#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "kovan/KovanUIExtension/KVKExtensionInteractiveView.h"
#include "platform/Error.h"
#include "platform/ViewController.h"

/// A plug-in of another maker: an empty view and one function.
class Square : public platform::ViewController, public KVKExtensionInteractiveView
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
public:
    QObject *pluginContext() override { return this; }
    platform::Dictionary pluginConstants() override { return {{QStringLiteral("SEVEN"), 7}}; }
    platform::Dictionary pluginFunctionTable() override
    {
        return {{QStringLiteral("square"), platform::Array{__kviGetSelectorLabel("square:error:"),
                                                           __kviArgTypeLabel(KVKArgType::NSNumber)}}};
    }
    double minHeightHint() override { return 0.0; }
    double minWidthHint() override { return 0.0; }

    Q_INVOKABLE platform::Value square(const platform::Value &number, platform::Error *)
    {
        KVKLogEvent(KVKLogLevel::Default, "square of %@", {number});
        return number.toLongLong() * number.toLongLong();
    }

protected:
    platform::View *loadView() override { return new platform::View(platform::Rect(0.0, 0.0, 200.0, 100.0)); }
};

#include "Square.moc"
