// How an address falls into a server and what is asked of it.
#pragma once

#include <platform/text.h>

namespace qkui {

// Takes the address in `server`, and leaves the server's text there: what precedes the first slash, a port
// included. What follows that slash goes to `object`, which is empty otherwise.
void ParseUrl(CString& server, CString& object);

}  // namespace qkui
