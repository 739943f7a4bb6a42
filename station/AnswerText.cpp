#include "station/AnswerText.h"

#include "station/window/OperatorText.h"

#include <QStringList>

namespace station {

namespace {

const QString ClickedButton = QStringLiteral("clickedButton");

QString textOf(const platform::Value &value, const QString &ifTrue, const QString &ifFalse)
{
    if (value.metaType() == QMetaType::fromType<bool>())
        return value.toBool() ? ifTrue : ifFalse;
    return platform::description(value);
}

QString textOf(const platform::Dictionary &answers, const QString &slotName)
{
    const QString on = QStringLiteral("on");
    const QString off = QStringLiteral("off");
    QStringList parts;
    if (const auto own = answers.constFind(slotName); own != answers.cend()) {
        parts.append(textOf(*own, on, off));
    } else {
        for (auto answer = answers.cbegin(); answer != answers.cend(); ++answer) {
            if (answer.key() != ClickedButton)
                parts.append(textOf(*answer, on, off));
        }
    }
    if (const auto button = answers.constFind(ClickedButton); button != answers.cend())
        parts.append(platform::description(*button));
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" \u00b7 "));
}

} // namespace

bool isShown(const KVKLuaCall &call)
{
    return call.name.startsWith(QLatin1String("show"));
}

QString answerText(const KVKLuaCall &call, const QString &slotName)
{
    if (call.error)
        return QStringLiteral("Error %1: %2")
            .arg(call.error->code)
            .arg(operatorText(call.error->localizedDescription));
    if (!call.result.isValid())
        return QStringLiteral("No answer");
    if (platform::isDictionary(call.result))
        return textOf(call.result.toMap(), slotName);
    return textOf(call.result, QStringLiteral("Yes"), QStringLiteral("No"));
}

} // namespace station
