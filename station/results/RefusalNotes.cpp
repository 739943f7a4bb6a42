#include "station/results/RefusalNotes.h"

#include "kovan/KovanUIExtension/KVKExtensionEntryRelay.h"
#include "station/results/Results.h"

namespace station {

RefusalNotes::RefusalNotes(Results &results)
    : m_results(results)
{
    KVKExtensionEntryRelay::sharedEntryRelay()->addObserver(this);
}

RefusalNotes::~RefusalNotes()
{
    KVKExtensionEntryRelay::sharedEntryRelay()->removeObserver(this);
}

void RefusalNotes::entryRefused(const KVKRefusedEntry &entry)
{
    const platform::Value system =
        entry.place.system ? platform::Value(static_cast<qlonglong>(*entry.place.system)) : platform::Value();
    m_results.writeRefusal({entry.kind, entry.text, entry.place.slot, system, entry.place.group});
}

} // namespace station
