#include "platform/ValueTransformer.h"

#include "platform/Monitored.h"

#include <QHash>

#include <stdexcept>

namespace platform {

namespace {

using Registry = QHash<QString, std::shared_ptr<const ValueTransformer>>;

Monitored<Registry> &registry()
{
    static Monitored<Registry> instance;
    return instance;
}

} // namespace

QMetaType ValueTransformer::transformedValueClass() const
{
    return {};
}

bool ValueTransformer::allowsReverseTransformation() const
{
    return false;
}

Value ValueTransformer::reverseTransformedValue(const Value &) const
{
    throw std::logic_error("this value transformer allows no reverse transformation");
}

void ValueTransformer::setValueTransformer(const std::shared_ptr<const ValueTransformer> &transformer,
                                           const QString &name)
{
    registry().lock()->insert(name, transformer);
}

std::shared_ptr<const ValueTransformer> ValueTransformer::forName(const QString &name)
{
    return registry().lock()->value(name);
}

} // namespace platform
