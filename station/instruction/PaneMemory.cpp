#include "station/instruction/PaneMemory.h"

namespace station {
namespace {

const QString WidthKey = QStringLiteral("instruction/width");
const QString FoldedKey = QStringLiteral("instruction/folded");
/// No screen is wider; a file may have been written by something else.
constexpr int LargestWidth = 10'000;

} // namespace

PaneMemory::PaneMemory(const QString &file)
    : m_file(file)
    , m_folded(m_file.value(FoldedKey).toBool())
{
    bool isNumber = false;
    const int width = m_file.value(WidthKey).toInt(&isNumber);
    if (isNumber)
        m_width = qBound(LeastWidth, width, LargestWidth);
}

void PaneMemory::setWidth(int width)
{
    const int bounded = qBound(LeastWidth, width, LargestWidth);
    if (bounded == m_width)
        return;
    m_width = bounded;
    m_file.keep(WidthKey, m_width);
}

void PaneMemory::setFolded(bool folded)
{
    if (folded == m_folded)
        return;
    m_folded = folded;
    m_file.keep(FoldedKey, m_folded);
}

} // namespace station
