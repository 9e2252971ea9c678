#pragma once
// The larger fakes of the test host, each in its own unit.

#include "host/CoreDevServices.h"

#include <memory>

namespace fw::testing {

class TestHost;

std::shared_ptr<fw::CoreDevText> makeTextService(TestHost& host);
std::shared_ptr<fw::CoreDevPictures> makePictureService(TestHost& host);
std::shared_ptr<fw::CoreDevFiles> makeFileService(TestHost& host);

} // namespace fw::testing
