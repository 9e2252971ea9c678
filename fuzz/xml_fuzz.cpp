// The desktop host's XML reader: any bytes either load or report a line,
// column and message, without crashing or running away with memory.
#include "OffscreenApp.h"
#include "desktop/DesktopXml.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fw::fuzz::StartOffscreenApp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fw::desktop::DesktopXml xml;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (xml.LoadData(bytes) == fw::desktop::DesktopXml::Status::NotWellFormed &&
        xml.LastProblem().Message.isEmpty())
        __builtin_trap(); // a refusal must say why
    return 0;
}
