#pragma once

#include "platform/Value.h"

#include <QList>
#include <QMetaType>
#include <QStringList>
#include <QtPlugin>

/// Stands among the arguments of a call for a value that is not known before a script runs. It may be any
/// value, nil included.
struct KVKUnknownValue
{};
Q_DECLARE_METATYPE(KVKUnknownValue)

/// A part of a call's arguments.
struct KVKCallPart
{
    int argument = 1; ///< Counted from 1.
    QStringList keys; ///< What leads to the part from there; elements of lists are counted from 1.
};

/// What is wrong with a call, in words for whoever has written it.
struct KVKCallProblem
{
    KVKCallPart part;
    QString text;
};

/// A picture's file that a call names.
struct KVKCallPicture
{
    KVKCallPart part;
    QString path; ///< As it is written.
};

struct KVKCallReport
{
    QList<KVKCallProblem> problems;
    QList<KVKCallPicture> pictures;
};

/// What a host may ask of a plug-in in addition, before any script runs: what it would say to a call of one
/// of its functions. Optional; a host asks for it with qobject_cast and does without it when it is not there.
///
/// Thread: the main thread. The plug-in's view need not be loaded.
class KVKExtensionConfigurationCheck
{
public:
    virtual ~KVKExtensionConfigurationCheck() = default;

    /// All that is wrong with a call whatever its unknown values are, and the pictures that it names. Nothing
    /// is shown, logged or kept.
    ///
    /// `function` is a name of the function table; the arguments have the number and the types that the table
    /// asks for, or are KVKUnknownValue. The station is the one of KVKConfigEngine; without any system there
    /// it is not known, and nothing is said that depends on it.
    [[nodiscard]] virtual KVKCallReport lookAtCall(const QString &function,
                                                   const platform::Array &arguments) = 0;
};

#define KVKExtensionConfigurationCheck_iid "org.kovan.UIExtension.ConfigurationCheck/1.0"
Q_DECLARE_INTERFACE(KVKExtensionConfigurationCheck, KVKExtensionConfigurationCheck_iid)
