#pragma once

#include "platform/Value.h"

#include <QtPlugin>

class QObject;

/// What the host asks of a plug-in that shows a view and offers functions to Lua. The plug-in's root object
/// is a platform::ViewController, whose view the host puts into its window, and implements this interface.
///
/// Thread: the main thread.
class KVKExtensionInteractiveView
{
public:
    virtual ~KVKExtensionInteractiveView() = default;

    /// The object that the functions of the table are called on. Owned by the plug-in.
    [[nodiscard]] virtual QObject *pluginContext() = 0;
    /// Constants for Lua, name to value.
    [[nodiscard]] virtual platform::Dictionary pluginConstants() = 0;
    /// Lua name to an array: the label of the method (__kviGetSelectorLabel), then the label of each argument
    /// that Lua gives (__kviArgTypeLabel). The methods are invokable methods of the context, named by the
    /// first word of their selector; they take the arguments in order and an `Error *` last.
    [[nodiscard]] virtual platform::Dictionary pluginFunctionTable() = 0;
    /// Height and width, in points, that the plug-in's view currently has; 0.0 before it was loaded.
    [[nodiscard]] virtual double minHeightHint() = 0;
    [[nodiscard]] virtual double minWidthHint() = 0;
};

#define KVKExtensionInteractiveView_iid "org.kovan.UIExtension.InteractiveView/1.0"
Q_DECLARE_INTERFACE(KVKExtensionInteractiveView, KVKExtensionInteractiveView_iid)
