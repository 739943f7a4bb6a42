#include "kovan/KovanLuaSequencer/KVKFunctionTable.h"

#include <QStringList>

#include <utility>

namespace {

[[noreturn]] void refuse(const QString &name, const QString &why)
{
    throw KVKFunctionTableError(QStringLiteral("function \"%1\": %2").arg(name, why));
}

QMetaType typeOf(KVKArgType type)
{
    return type == KVKArgType::NSNumber ? QMetaType::fromType<platform::Value>()
                                        : QMetaType::fromType<platform::Dictionary>();
}

bool takes(const QMetaMethod &method, const std::vector<KVKArgType> &arguments)
{
    const int count = static_cast<int>(arguments.size());
    if (method.parameterCount() != count + 1 ||
        method.parameterMetaType(count) != QMetaType::fromType<platform::Error *>())
        return false;
    for (int i = 0; i < count; ++i) {
        if (method.parameterMetaType(i) != typeOf(arguments[static_cast<std::size_t>(i)]))
            return false;
    }
    return true;
}

QMetaMethod findMethod(const QObject &context, const QString &name, const QByteArray &selector,
                       const std::vector<KVKArgType> &arguments)
{
    // A selector's first word is the method's name; the rest names its arguments, which the labels give.
    const QByteArray word = selector.left(selector.indexOf(':'));
    const QMetaObject *meta = context.metaObject();
    bool found = false;
    // From the end, where the class's own methods stand behind those that it has inherited.
    for (int i = meta->methodCount() - 1; i >= 0; --i) {
        const QMetaMethod method = meta->method(i);
        if (method.name() != word)
            continue;
        if (takes(method, arguments))
            return method;
        found = true;
    }
    const QString class_ = QLatin1String(meta->className());
    if (found) {
        refuse(name, QStringLiteral("the method %1 of %2 does not take the arguments that the table gives")
                         .arg(QLatin1String(word), class_));
    }
    refuse(name, QStringLiteral("%1 has no invokable method %2").arg(class_, QLatin1String(word)));
}

/// Said by the class and not by the table, whose labels a plug-in of another interface knows as well.
QStringList functionKeys(const QMetaMethod &method)
{
    const QMetaObject *owner = method.enclosingMetaObject();
    const int info = owner->indexOfClassInfo(QByteArray("function keys of " + method.name()).constData());
    if (info < 0)
        return {};
    return QString::fromLatin1(owner->classInfo(info).value()).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

KVKBoundFunction bind(QObject *context, const QString &name, const platform::Value &entry)
{
    if (KVKSequencerGives(name))
        refuse(name, QStringLiteral("the sequencer gives it already"));
    const platform::Array labels = entry.toList();
    if (labels.isEmpty())
        refuse(name, QStringLiteral("its entry is no list of labels"));
    const auto selector = KVKSelectorOfLabel(labels.first().toString());
    if (!selector)
        refuse(name, QStringLiteral("\"%1\" is no selector label").arg(labels.first().toString()));
    std::vector<KVKArgType> arguments;
    for (qsizetype i = 1; i < labels.size(); ++i) {
        const auto type = KVKArgTypeOfLabel(labels.at(i).toString());
        if (!type)
            refuse(name, QStringLiteral("\"%1\" is no type label").arg(labels.at(i).toString()));
        arguments.push_back(*type);
    }
    return {context, name, findMethod(*context, name, *selector, arguments), arguments};
}

} // namespace

KVKBoundFunction::KVKBoundFunction(QObject *context, QString name, const QMetaMethod &method,
                                   std::vector<KVKArgType> arguments)
    : m_context(context)
    , m_name(std::move(name))
    , m_method(method)
    , m_arguments(std::move(arguments))
    , m_functionKeys(functionKeys(method))
{}

platform::Value KVKBoundFunction::call(const platform::Array &arguments, platform::Error *error) const
{
    // What a meta call takes: the place of the result, then of each argument. Dictionaries are kept beside,
    // since a method that takes one wants the dictionary itself and not the value around it.
    std::vector<platform::Value> values(arguments.cbegin(), arguments.cend());
    std::vector<platform::Dictionary> dictionaries(m_arguments.size());
    const QMetaType resultType = m_method.returnMetaType();
    const bool givesValue = resultType == QMetaType::fromType<platform::Value>();
    platform::Value result =
        givesValue || resultType.id() == QMetaType::Void ? platform::Value() : platform::Value(resultType);
    std::vector<void *> places;
    places.push_back(givesValue ? static_cast<void *>(&result) : result.data());
    for (std::size_t i = 0; i < m_arguments.size(); ++i) {
        dictionaries[i] = values[i].toMap();
        places.push_back(m_arguments[i] == KVKArgType::NSDictionary ? static_cast<void *>(&dictionaries[i])
                                                                    : static_cast<void *>(&values[i]));
    }
    places.push_back(static_cast<void *>(&error));
    // On the calling thread: a show call waits in here, and must not do so on the main thread.
    m_context->qt_metacall(QMetaObject::InvokeMetaMethod, m_method.methodIndex(), places.data());
    return result;
}

QStringList KVKSequencerNames()
{
    static const QStringList names{QStringLiteral("log"), QStringLiteral("sleep"),
                                   QStringLiteral("rendezvous"), QStringLiteral("locked"),
                                   QStringLiteral("shared")};
    return names;
}

bool KVKSequencerGives(const QString &name)
{
    return KVKSequencerNames().contains(name);
}

std::vector<KVKBoundFunction> KVKBindFunctions(QObject *context, const platform::Dictionary &table)
{
    std::vector<KVKBoundFunction> functions;
    for (auto entry = table.cbegin(); entry != table.cend(); ++entry)
        functions.push_back(bind(context, entry.key(), entry.value()));
    return functions;
}
