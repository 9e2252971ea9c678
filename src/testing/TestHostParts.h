#pragma once
// The larger fakes of the test host, each in its own unit.

#include "host/CoreDevServices.h"

#include <memory>

namespace fw::testing {

class TestHost;

std::shared_ptr<fw::CoreDevText> makeTextService(TestHost& host);
std::shared_ptr<fw::CoreDevPictures> makePictureService(TestHost& host);
std::shared_ptr<fw::CoreDevFiles> makeFileService(TestHost& host);
std::shared_ptr<fw::FavoriteList> makeFavoriteList(TestHost& host);
std::shared_ptr<fw::ResourcePackage> makeResourcePackage(TestHost& host);

/// "*" and "?" wildcards against a whole name, without case.
bool MatchesWildcard(const std::string& pattern, const std::string& name);

} // namespace fw::testing
