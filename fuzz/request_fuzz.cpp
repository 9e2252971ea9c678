// The --request reader: bytes to the request object, the object into a
// dialog's records and public variables, and the records back out as the
// printed answer of every dialog.
#include "OffscreenApp.h"
#include "cli/Cli.h"
#include "cli/Members.h"
#include "core/cls_Formwerk.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fw::fuzz::StartOffscreenApp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QJsonObject request;
    if (!fw::cli::ParseRequest(bytes, request).isEmpty())
        return 0;
    // As the two-field input reads it (pairs allowed) and as every other dialog does.
    for (const bool takesPairs : {true, false}) {
        fw::DialogContext context;
        QVariantMap publics;
        if (!fw::cli::ApplyRequest(request, context, publics, takesPairs).isEmpty())
            continue;
        for (const std::string& name : fw::cls_Formwerk::Names())
            fw::cli::Answer(QString::fromStdString(name), context);
    }
    return 0;
}
