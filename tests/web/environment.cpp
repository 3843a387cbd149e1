// The user's proxies and settings are none of the tests' business: each run has settings of its own, which go
// with it. Before the first test, since what reads them reads them once.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

namespace {

class OwnEnvironment : public testing::Environment {
  public:
    void SetUp() override {
        for (const char* name :
             {"http_proxy", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY", "no_proxy", "NO_PROXY"})
            unsetenv(name);
        folder_ = testing::TempDir() + "qkui-web-test-XXXXXX";
        ASSERT_NE(mkdtemp(folder_.data()), nullptr);
        setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
        setenv("GSETTINGS_BACKEND", "keyfile", 1);
        setenv("GIO_USE_PROXY_RESOLVER", "gnome", 1);
        setenv("XDG_CURRENT_DESKTOP", "GNOME", 1);  // or the resolver would not serve
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

  private:
    std::string folder_;
};

[[maybe_unused]] const testing::Environment* const environment =
    testing::AddGlobalTestEnvironment(new OwnEnvironment);

}  // namespace
