/// @file
/// Requests that block: one call, one answer.
#pragma once

#include <platform/text.h>

/// Both calls wait until the whole answer is there. A dialog that is to stay alive meanwhile makes them on a
/// thread of its own and posts itself a message with the result; see docs/web/requests.md.
///
/// The request is a POST either way. It goes to the default port: a port in the address is taken for a part
/// of the server's name, and the first seven characters of any address that holds "http" are cut off unread.
/// No redirect is followed. The proxy is the environment's or the desktop's, the time-outs are those of
/// platform/internet.h.
///
/// The result is
///     1           the status was 200, and the body is taken
///     a status    the server's, other than 200; `response` is untouched
///     12000 ...   the number of a CInternetException; `response` is its message
///     0xFFFFFFEC  there was no connection or no request, and no exception
///     0xFFFFFFEB  the status could not be read
/// What goes wrong while the body is read raises its CInternetException; memory that is lacking,
/// std::bad_alloc. Any thread may call; calls share nothing.
class PLATFORM_API QKBaseFunctions {
  public:
    QKBaseFunctions() = default;
    /// Copies nothing, since there is nothing.
    QKBaseFunctions& operator=(const QKBaseFunctions&) { return *this; }

    /// `nCharset` says how the body becomes text: 0 as the system's own character set, which is UTF-8, with
    /// `%%` standing for `%`; 2 as UTF-8; any other number as UTF-16LE. The text ends before the first NUL.
    /// An empty body leaves `response` untouched.
    DWORD WebGet(CString url, CString& response, int nCharset);

    /// `data` is a form, `name=value&name2=value2`, encoded already. The body that is sent is the first bytes
    /// of its UTF-16LE form, as many as it has characters. `response` gets one character for each byte of the
    /// answer, U+0000 to U+00FF; an empty body leaves it empty.
    DWORD WebPost(CString url, CString data, CString& response);
};
