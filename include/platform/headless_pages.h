/// @file
/// The pages of HTML views on the headless window system. There is no browser: a page is a script that raises
/// the events of one, in their order, when the host navigates; and a test may raise each event by itself.
///
/// `view` is the window of an HTML view, or the browser's window in it. A frame is named by its place: empty
/// for the page, "0" for its first frame, "0.1" for the second frame in that. What a call causes is
/// dispatched before it returns. For a window that shows no page a call does nothing, and answers false or
/// nothing.
#pragma once

#include <vector>

#include <platform/html.h>

namespace Headless {

/// What is found at an address.
struct PageAnswer {
    CString title;
    std::vector<CString>
        frames;          ///< addresses of the frames in it: they load with it, and complete before it
    DWORD error = 0;     ///< it fails, as INET_E_...; a status of 400 and more comes with a page
    bool waits = false;  ///< nothing comes of it: the test says what happens
};
/// For every page from now on, by the exact address. What is not described here is a resource when it is a
/// res: address, an empty page for about:blank, and cannot be reached otherwise.
PLATFORM_API void AnswerPage(const CString& url, const PageAnswer& answer);
PLATFORM_API void ForgetPages();

struct PageRequest {
    CString url;
    CString targetFrame;
    CString headers;
    std::vector<BYTE> postedData;
    bool posts = false;
};
/// The navigations of the page itself that were let go on, oldest first.
PLATFORM_API std::vector<PageRequest> PageRequests(HWND view);

/// A user follows a link: the event, and the load when it is let go on. False when it was cancelled.
PLATFORM_API bool FollowLink(HWND view, const CString& url, const CString& frame = u"");
/// The page asks for a window; true when it has been seen to.
PLATFORM_API bool AskForWindow(HWND view, const CString& url);
/// One event each. An event that makes no sense (a frame completes that never committed) reaches nobody.
PLATFORM_API void CommitPage(HWND view, const CString& url, const CString& frame = u"");
PLATFORM_API void CompletePage(HWND view, const CString& url, const CString& frame = u"");
/// True when a page that describes the error is to be shown; for the page itself it is, and completes.
PLATFORM_API bool FailPage(HWND view, const CString& url, DWORD error, const CString& frame = u"");
PLATFORM_API void SetPageTitle(HWND view, const CString& title);

PLATFORM_API bool PageHasFocus(HWND view);
PLATFORM_API bool PageHidesScrollBars(HWND view);

}  // namespace Headless
