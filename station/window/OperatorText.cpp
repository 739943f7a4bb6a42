#include "station/window/OperatorText.h"

#include "station/look/LineBreaks.h"

#include <QRegularExpression>

#include <utility>

namespace station {
namespace {

/// "-[Class method:with:]", and "__12-[Class method]_block_invoke" for the work that it hands on.
const QString Method = QStringLiteral(R"((?:__\d+)?[-+]\[[A-Z]\w* [\w:]+\](?:_block_invoke(?:_\d+)?)?)");

} // namespace

QString operatorText(const QString &message)
{
    static const std::pair<QRegularExpression, QString> replacements[] = {
        {QRegularExpression(QStringLiteral("\\s*stack traceback:.*"),
                            QRegularExpression::DotMatchesEverythingOption),
         {}},
        {QRegularExpression(QStringLiteral("(?:\\bfor )?") + Method + QStringLiteral(":? *")), {}},
        // "<TextField: G1-S1>", "<View: 0x55d0>"; what stands there for nothing is kept.
        {QRegularExpression(QStringLiteral("<[A-Z]\\w+: (?:0x[0-9a-fA-F]+|([^<>]*))>")),
         QStringLiteral("\\1")},
        // Longer than the number of any register that a message may name.
        {QRegularExpression(QStringLiteral(" ?\\b0x[0-9a-fA-F]{9,}\\b")), {}}};
    QString text = message;
    for (const auto &[what, instead] : replacements)
        text.replace(what, instead);
    text = withoutLineBreaks(text.trimmed(), QStringLiteral(" "));
    return text.isEmpty() ? withoutLineBreaks(message, QStringLiteral(" ")) : text;
}

} // namespace station
