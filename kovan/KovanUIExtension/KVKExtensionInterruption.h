#pragma once

#include <QtPlugin>

/// What a host may ask of a plug-in in addition, when it stops its sequences: to end the calls that wait for
/// the operator. Optional; a host asks for it with qobject_cast and does without it when it is not there.
///
/// Thread: any.
class KVKExtensionInterruption
{
public:
    virtual ~KVKExtensionInterruption() = default;

    /// Ends every call that waits: it returns nothing with an error that says so, and its panel is taken
    /// away. Calls that come later end in the same way at once, until acceptCalls().
    virtual void interruptWaitingCalls() = 0;
    /// Lets calls wait again.
    virtual void acceptCalls() = 0;
};

#define KVKExtensionInterruption_iid "org.kovan.UIExtension.Interruption/1.0"
Q_DECLARE_INTERFACE(KVKExtensionInterruption, KVKExtensionInterruption_iid)
