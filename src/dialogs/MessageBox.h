#pragma once
// A message through the library's own message dialog, for hosts that want the
// classic call: text, title, style number, icon path in; result code out.

#include <cstdint>
#include <string>

namespace fw {

std::int32_t ShowMessageBox(const std::string& text, const std::string& title, std::int32_t flags,
                            const std::string& iconPath);

} // namespace fw
