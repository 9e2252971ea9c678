#pragma once
// Objects that the library calls by name only, as a host's script objects are
// called: the caller knows a method's name and passes strings, and whether the
// object has that method is found out at the call.

#include <stdexcept>
#include <string>
#include <vector>

namespace fw {

/// A run-time error of a call by name: no object, no such method, or the
/// wrong number of arguments. Callers that do not catch it let it propagate.
class LateBoundError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class LateBound {
  public:
    virtual ~LateBound() = default;
    /// Runs method (names compare without case) with args and returns its
    /// answer. Throws LateBoundError (see MissingMethod) for a name it lacks.
    virtual std::string Invoke(const std::string& method, const std::vector<std::string>& args) = 0;
};

/// Whether two method names are the same name; case does not count.
bool SameName(const std::string& a, const std::string& b);
/// The error of a method that the object does not have.
LateBoundError MissingMethod(const std::string& method);
/// The error of a call with the wrong number of arguments.
LateBoundError WrongArguments(const std::string& method);
/// Calls method on object by name; a null object is an error too.
std::string CallByName(LateBound* object, const std::string& method,
                       const std::vector<std::string>& args);

} // namespace fw
