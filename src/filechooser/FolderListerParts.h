#pragma once
// What the units of the folder lister share: the place words, string
// conversions and the picture lookups of the shared image lists. Internal to
// src/filechooser.

#include <QString>
#include <cstdint>
#include <string>

namespace fw {

class ImageList;

namespace lister {

inline const std::string kDesktop = "DESKTOP:\\";
inline const std::string kWorkstation = "WORKSTATION:\\";
inline const std::string kNethood = "NETHOOD:\\";
inline const std::string kFavorites = "FAVORITES:\\";

inline QString Q(const std::string& text)
{
    return QString::fromStdString(text);
}

inline std::string Upper(const std::string& text)
{
    return Q(text).toUpper().toStdString();
}

inline bool StartsWith(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

inline std::string ReplaceAll(std::string text, const std::string& from, const std::string& to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

/// Text behind the first ":\" with one trailing "\" removed ("NETHOOD:\Firma\pc1\"
/// gives "Firma\pc1").
std::string RestOfPlace(const std::string& path);

/// A favourite's picture key (its icon, put into the shared lists, or
/// "FAVORITE"), for the 16 pixel list.
std::string FavouriteIconKey(const std::string& icon);

/// The listing's mask colour for pictures taken from files.
std::uint32_t SharedMaskColour();

} // namespace lister
} // namespace fw
