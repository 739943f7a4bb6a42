#pragma once

#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "platform/Error.h"
#include "platform/Value.h"

#include <QMetaMethod>
#include <QObject>
#include <QStringList>

#include <stdexcept>
#include <vector>

/// One function that a plug-in offers to Lua, bound to its method.
///
/// Thread: call() on any thread that the plug-in allows; the context must outlive every call.
class KVKBoundFunction
{
public:
    KVKBoundFunction(QObject *context, QString name, const QMetaMethod &method,
                     std::vector<KVKArgType> arguments);

    [[nodiscard]] const QString &name() const { return m_name; }
    [[nodiscard]] const std::vector<KVKArgType> &arguments() const { return m_arguments; }
    /// Whether the key of a dictionary argument may hold a function, which the method gets as a
    /// std::shared_ptr<platform::Callback>. The class of the context says so: Q_CLASSINFO("function keys of
    /// ask", "check filter") lets the arguments of its method `ask` have these two.
    [[nodiscard]] bool takesFunctionUnder(const QString &key) const { return m_functionKeys.contains(key); }

    /// Calls the method on this thread. Exceptions of the method come through.
    /// Requires: as many arguments as arguments(), a dictionary where one is asked for.
    [[nodiscard]] platform::Value call(const platform::Array &arguments, platform::Error *error) const;

private:
    QObject *m_context;
    QString m_name;
    QMetaMethod m_method;
    std::vector<KVKArgType> m_arguments;
    QStringList m_functionKeys;
};

/// A function table that does not fit its plug-in. The text names the entry and what is wrong with it.
class KVKFunctionTableError : public std::runtime_error
{
public:
    explicit KVKFunctionTableError(const QString &text)
        : std::runtime_error(text.toStdString())
    {}
};

/// Whether the sequencer itself gives scripts something of this name: log, sleep, rendezvous, locked, shared.
/// A plug-in's function or constant cannot have it. Thread: any.
[[nodiscard]] bool KVKSequencerGives(const QString &name);
/// All of these names. Thread: any.
[[nodiscard]] QStringList KVKSequencerNames();

/// Binds a plug-in's function table to the invokable methods of its context, by labels alone.
///
/// A method is found by the first word of its selector and the number of its arguments; the last one takes
/// the error. Errors: throws KVKFunctionTableError for an entry that is no list of labels, names no such
/// method, or has a name that the sequencer gives. Thread: any.
[[nodiscard]] std::vector<KVKBoundFunction> KVKBindFunctions(QObject *context,
                                                             const platform::Dictionary &table);
