// The library's own session, led to a server of the test instead of the default port.
#pragma once

#include <gtest/gtest.h>

#include "src/web/web_access.h"

namespace kit {

class LocalAccess : public qkui::CWebAccess {
  public:
    explicit LocalAccess(INTERNET_PORT port) : port_(port) {
        constexpr DWORD kPatience = 400;  // milliseconds
        for (const DWORD option :
             {INTERNET_OPTION_CONNECT_TIMEOUT, INTERNET_OPTION_SEND_TIMEOUT, INTERNET_OPTION_RECEIVE_TIMEOUT})
            EXPECT_TRUE(SetOption(option, kPatience));
    }
    CHttpConnection* GetHttpConnection(LPCWSTR server, INTERNET_PORT port, LPCWSTR user,
                                       LPCWSTR password) override {
        EXPECT_EQ(port, 0);
        EXPECT_EQ(user, nullptr);
        EXPECT_EQ(password, nullptr);
        return CInternetSession::GetHttpConnection(server, port_, user, password);
    }

  private:
    INTERNET_PORT port_;
};

}  // namespace kit
