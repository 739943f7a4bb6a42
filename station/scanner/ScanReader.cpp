#include "station/scanner/ScanReader.h"

#include <utility>

namespace station {

ScanReader::ScanReader(QString prefix, QString suffix)
    : m_prefix(std::move(prefix))
    , m_suffix(std::move(suffix))
{}

/// Keys go on from the front until what is left may be the beginning of the mark: what fails to be one may
/// hold the beginning of another.
qsizetype ScanReader::releaseWhatIsNo(const QString &mark)
{
    qsizetype released = 0;
    while (!m_held.isEmpty() && !mark.startsWith(m_held.join(QString()))) {
        m_held.removeFirst();
        ++released;
    }
    return released;
}

ScanReader::Step ScanReader::take(const QString &text, bool counts)
{
    m_held.append(text);
    if (!m_inScan && !m_prefix.isEmpty()) {
        const qsizetype released = releaseWhatIsNo(m_prefix);
        const bool begins = m_held.join(QString()) == m_prefix;
        if (begins) {
            m_held.clear();
            m_inScan = true;
            m_isWritten = false;
        }
        return {released, begins, false};
    }
    const qsizetype released = releaseWhatIsNo(m_suffix);
    m_inScan = m_inScan || counts;
    m_isWritten = m_isWritten || (released > 0 && counts);
    return {released, false, false};
}

ScanReader::Step ScanReader::end()
{
    const bool isSuffix = !m_suffix.isEmpty() && m_held.join(QString()) == m_suffix;
    const bool isWritten = m_isWritten;
    Step step = leave();
    if (isSuffix)
        step.release = 0;
    step.isEmpty = !isWritten && step.release == 0;
    return step;
}

ScanReader::Step ScanReader::leave()
{
    const Step step{m_held.size(), false, false};
    m_held.clear();
    m_inScan = false;
    m_isWritten = false;
    return step;
}

bool ScanReader::wants(const QString &text) const
{
    return m_inScan || (!m_prefix.isEmpty() && m_prefix.startsWith(m_held.join(QString()) + text));
}

} // namespace station
