// A session for one request.
#pragma once

#include <platform/internet.h>

#include "web/response_text.h"

namespace qkui {

// A name and a value of a form.
struct PostArgument {
    CString strName;
    CString strValue;
};

class CWebAccess : public CInternetSession {
  public:
    // The parameters are those of the base, and are not used.
    explicit CWebAccess(LPCWSTR agent = nullptr, DWORD_PTR context = 1,
                        DWORD accessType = INTERNET_OPEN_TYPE_PRECONFIG, LPCWSTR proxyName = nullptr,
                        LPCWSTR proxyBypass = nullptr, DWORD flags = 0);
    ~CWebAccess() override;

    // See QKBaseFunctions.
    DWORD Get(CString url, CString& response, int nCharset);
    DWORD Post(CString url, CString data, CString& response);

    void OnStatusCallback(DWORD_PTR context, DWORD status, LPVOID information,
                          DWORD informationLength) override;

    // What the user's settings say of a proxy. No request reads it: the session finds its proxy by itself.
    CString m_strProxyServer;
    CString m_strProxyOverride;
    BOOL m_bProxyEnable;
    CArray<PostArgument> m_arrPostArgs;
};

// A status as a log would say it; empty for one that needs no words. `information` may be null.
CString StatusText(DWORD status, LPCWSTR information);

}  // namespace qkui
