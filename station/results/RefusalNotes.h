#pragma once

#include "kovan/KovanUIExtension/KVKExtensionEntryObserver.h"

namespace station {

class Results;

/// Writes each entry that a plug-in refuses to its operator among the results.
///
/// Thread: the main thread. Ownership: the results must outlive it.
class RefusalNotes : private KVKExtensionEntryObserver
{
public:
    explicit RefusalNotes(Results &results);
    ~RefusalNotes() override;
    RefusalNotes(const RefusalNotes &) = delete;
    RefusalNotes &operator=(const RefusalNotes &) = delete;

private:
    void entryRefused(const KVKRefusedEntry &entry) override;

    Results &m_results;
};

} // namespace station
