// The SendKeys notation parser: any text either parses to strokes or is
// refused, and never crashes or hangs.
#include "OffscreenApp.h"
#include "forms/SendKeys.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fw::fuzz::StartOffscreenApp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString keys =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    fw::ParseSendKeys(keys);
    return 0;
}
