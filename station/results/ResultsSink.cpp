#include "station/results/ResultsSink.h"

#include <QTextStream>

namespace station {

void ResultsSink::lose(const QString &name, const QString &why)
{
    if (!m_failed.exchange(true))
        QTextStream(stderr) << "station: results are lost: " << name << ": " << why << Qt::endl;
}

} // namespace station
