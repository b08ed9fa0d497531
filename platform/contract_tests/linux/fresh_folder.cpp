// SPDX-License-Identifier: Apache-2.0
// Each test of the suite gets a runtime folder of its own.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace {

class FreshFolder : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& /*test*/) override {
        folder_ = std::filesystem::temp_directory_path() / "nuvtest.XXXXXX";
        ASSERT_NE(::mkdtemp(folder_.data()), nullptr);
        ::setenv("NUV_RUNTIME_DIR", folder_.c_str(), 1);
    }
    void OnTestEnd(const testing::TestInfo& /*test*/) override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::string folder_;
};

[[maybe_unused]] const bool installed = [] {
    testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<FreshFolder>().release());
    return true;
}();

}  // namespace
