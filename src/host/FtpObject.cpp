#include "host/HostObjects.h"

namespace fw {

// Of the FTP object only the console's command is reachable by name; the sync
// forms call the rest directly.
std::string FtpObject::Invoke(const std::string& method, const std::vector<std::string>& args)
{
    if (!SameName(method, "SENDCOMMAND"))
        throw MissingMethod(method);
    if (args.size() != 1)
        throw WrongArguments(method);
    return SENDCOMMAND(args.front());
}

} // namespace fw
