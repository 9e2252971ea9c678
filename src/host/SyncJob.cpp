#include "host/SyncJob.h"

namespace fw {

StringList* SyncActions::ByKey(std::string_view key)
{
    return const_cast<StringList*>(std::as_const(*this).ByKey(key));
}

const StringList* SyncActions::ByKey(std::string_view key) const
{
    const StringList* lists[] = {&DL, &DR, &DTL, &DTR, &MKL, &MMR, &UP, &DOWN};
    for (std::size_t i = 0; i < std::size(SyncActionKeys); ++i)
        if (SyncActionKeys[i] == key)
            return lists[i];
    return nullptr;
}

int SyncActions::Total() const
{
    int total = 0;
    for (std::string_view key : SyncActionKeys)
        total += ByKey(key)->Count();
    return total;
}

} // namespace fw
