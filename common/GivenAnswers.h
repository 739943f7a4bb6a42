#pragma once

#include "platform/Value.h"

#include <QSet>
#include <QString>

#include <mutex>

namespace interactive {

/// The entries of all panels that were answered since the run began. Thread: any.
class GivenAnswers
{
public:
    /// Remembers the entries of an answered panel's record.
    void add(const platform::Dictionary &record);
    [[nodiscard]] bool contains(const QString &text) const;
    /// A new run begins.
    void forget();

private:
    mutable std::mutex m_mutex;
    QSet<QString> m_texts;
};

} // namespace interactive
