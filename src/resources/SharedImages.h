#pragma once
// The two image lists the file and folder choosers share for the life of the
// process (16 and 32 pixels), held by the hidden form frm_ResourceFile and
// filled by the first chooser that opens.

#include <cstdint>
#include <string>

namespace fw {

class ImageList;

ImageList& SharedIcons16();
ImageList& SharedIcons32();
/// Fills both lists with the fixed keys (FAVORITES ... FILE) unless the 16
/// pixel list already holds 10 or more; listBackColour (0x00BBGGRR) less one
/// becomes the lists' mask colour.
void FillSharedImages(std::uint32_t listBackColour);
/// Puts a 16 pixel picture path into the 16 pixel list and its "32\" twin
/// into the 32 pixel list, each under its own path as key, unless there; a
/// picture that does not load is replaced by the abort sign.
void AddIcon(const std::string& path16);

} // namespace fw
