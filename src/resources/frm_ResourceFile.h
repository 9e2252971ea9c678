#pragma once
// The hidden holder of the image lists that the file and folder choosers
// share: never shown, used through its one default instance, which is made at
// first touch and lives as long as the process so that the lists fill once.

#include "forms/Form.h"

namespace fw {

class ImageList;

class frm_ResourceFile : public Form {
  public:
    frm_ResourceFile();

    /// The process's instance, made on first call.
    static frm_ResourceFile& Default();

    ImageList& img_Icon16;
    ImageList& img_Icon32;
};

} // namespace fw
