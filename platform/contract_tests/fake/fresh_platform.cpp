// SPDX-License-Identifier: Apache-2.0
// Each test of the suite gets a test double of its own.
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/test.hpp"

namespace {

class FreshPlatform : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& /*test*/) override { platform_.emplace(); }
    void OnTestEnd(const testing::TestInfo& /*test*/) override { platform_.reset(); }

    std::optional<nuv::platform::FakePlatform> platform_;
};

[[maybe_unused]] const bool installed = [] {
    testing::UnitTest::GetInstance()->listeners().Append(
        std::make_unique<FreshPlatform>().release());
    return true;
}();

}  // namespace
