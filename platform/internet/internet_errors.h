// The numbers of failed requests: their sentences, and which failure of libcurl is which.
#pragma once

#include <platform/types.h>

namespace platform {

// Never null.
[[nodiscard]] const char* InternetErrorText(DWORD error);

// `code` is a CURLcode other than CURLE_OK, `verification` what the TLS library said of the certificate.
[[nodiscard]] DWORD InternetErrorOf(int code, long verification);

}  // namespace platform
