#include "tests/monkey/CaseFile.h"

namespace monkey {
namespace {

const QString Station = QStringLiteral("station");

} // namespace

Shape shapeOf(int groups, int slotsPerGroup)
{
    Shape shape;
    for (int i = 1; i <= groups; ++i)
        shape.groups.append(QStringLiteral("G%1").arg(i));
    for (int i = 1; i <= slotsPerGroup; ++i)
        shape.slotNames.append(QStringLiteral("S%1").arg(i));
    return shape;
}

QString Case::text() const
{
    const Step station{Station, {{"groups", shape.groups.size()}, {"slots", shape.slotNames.size()}}};
    QStringList lines{station.line()};
    for (const Step &step : steps)
        lines.append(step.line());
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

Case Case::fromText(const QString &text)
{
    Case read;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        if (line.trimmed().isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const std::optional<Step> step = Step::fromLine(line);
        if (!step)
            return {};
        if (step->verb == Station)
            read.shape = shapeOf(step->number("groups"), step->number("slots"));
        else
            read.steps.append(*step);
    }
    return read.shape.groups.isEmpty() || read.shape.slotNames.isEmpty() ? Case() : read;
}

} // namespace monkey
