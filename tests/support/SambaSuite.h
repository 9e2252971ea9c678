#pragma once
// A test suite that shares one real Samba server among its tests; each test
// is skipped, with the reason, where smbd could not start here.

#include "support/SambaServer.h"

#include <gtest/gtest.h>

namespace fw::testing {

class SambaSuite : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { server = new SambaServer; }
    static void TearDownTestSuite()
    {
        delete server;
        server = nullptr;
    }
    /// Derived suites call this first and return if IsSkipped().
    void SetUp() override
    {
        if (server->Port() == 0)
            GTEST_SKIP() << server->SkipReason().toStdString();
    }

    static inline SambaServer* server = nullptr;
};

} // namespace fw::testing
