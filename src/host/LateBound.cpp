#include "host/LateBound.h"

#include <algorithm>
#include <cctype>

namespace fw {

bool SameName(const std::string& a, const std::string& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::toupper(static_cast<unsigned char>(x)) ==
               std::toupper(static_cast<unsigned char>(y));
    });
}

LateBoundError MissingMethod(const std::string& method)
{
    return LateBoundError("Object doesn't support this property or method: " + method);
}

LateBoundError WrongArguments(const std::string& method)
{
    return LateBoundError("Wrong number of arguments or invalid property assignment: " + method);
}

std::string CallByName(LateBound* object, const std::string& method,
                       const std::vector<std::string>& args)
{
    if (!object)
        throw LateBoundError("Object variable not set: " + method);
    return object->Invoke(method, args);
}

} // namespace fw
