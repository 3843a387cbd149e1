#include <qkui/web/base_functions.h>

#include "web/web_access.h"

DWORD QKBaseFunctions::WebGet(CString url, CString& response, int nCharset) {
    return qkui::CWebAccess().Get(std::move(url), response, nCharset);
}

DWORD QKBaseFunctions::WebPost(CString url, CString data, CString& response) {
    return qkui::CWebAccess().Post(std::move(url), std::move(data), response);
}
