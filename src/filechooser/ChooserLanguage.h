#pragma once
// The choosers' pick of a text: the folder chooser speaks German whatever the
// host's language, the file chooser follows the host.

#include "core/hLangText.h"

#include <string>

namespace fw {

inline std::string ChooserText(bool germanOnly, const std::string& german,
                               const std::string& english)
{
    return germanOnly ? german : hLangText(german, english);
}

} // namespace fw
