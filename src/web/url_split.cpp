#include "web/url_split.h"

namespace qkui {

void ParseUrl(CString& server, CString& object) {
    constexpr int kSchemeLength = 7;  // of "http://", whatever stands there
    CString rest = server;
    if (rest.Find(u"http") >= 0) rest = rest.Mid(kSchemeLength);
    const int slash = rest.Find(u'/');
    server = slash < 0 ? rest : rest.Left(slash);
    object = slash < 0 ? CString() : rest.Mid(slash + 1);
}

}  // namespace qkui
