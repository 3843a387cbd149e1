/// @file
/// Reference-counted streams over memory, and files dragged from one program to another.
#pragma once

#include <map>

#include <platform/geometry.h>
#include <platform/resources.h>
#include <platform/types.h>

/// A counted interface: every holder calls Release once; the last call destroys the object.
class PLATFORM_API IUnknown {
  public:
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;

  protected:
    virtual ~IUnknown();
};

enum : DWORD { STREAM_SEEK_SET = 0, STREAM_SEEK_CUR = 1, STREAM_SEEK_END = 2 };

class PLATFORM_API IStream : public IUnknown {
  public:
    /// Reads up to `size` bytes and moves on. `read` may be null. S_FALSE when fewer bytes were left.
    virtual HRESULT Read(void* buffer, ULONG size, ULONG* read) = 0;
    /// Moves the position, also beyond the end, where nothing is read; `position` may be null. A target
    /// before the start fails with E_INVALIDARG and moves nothing.
    virtual HRESULT Seek(std::int64_t offset, DWORD origin, std::uint64_t* position) = 0;
    /// The size of the whole stream in bytes.
    virtual HRESULT Size(std::uint64_t* bytes) = 0;

  protected:
    ~IStream() override;
};

/// A stream over a block, with the position at its start and one holder. With `deleteOnRelease` the last
/// Release frees the block. A stale block, or a null `stream`, fails with E_INVALIDARG. Reads of a block
/// freed meanwhile fail with E_FAIL.
PLATFORM_API HRESULT CreateStreamOnHGlobal(HGLOBAL block, BOOL deleteOnRelease, IStream** stream);

/// Per-thread start of the component services. Calls nest; S_FALSE when the thread was started before. The
/// reserved argument is null, anything else fails with E_INVALIDARG. A stop without a start does nothing.
PLATFORM_API HRESULT CoInitialize(void* reserved);
PLATFORM_API void CoUninitialize();

// ---- Files between programs ---------------------------------------------------------------------------

/// What a receiver may do, or did, with the files that it is given: bits.
using DROPEFFECT = DWORD;
enum : DROPEFFECT {
    DROPEFFECT_NONE = 0,
    DROPEFFECT_COPY = 1,
    DROPEFFECT_MOVE = 2,  ///< they are no longer where they were
    DROPEFFECT_LINK = 4
};

/// The form in which data is given. CF_HDROP: a block with a DROPFILES and a list of files behind it.
using CLIPFORMAT = WORD;
enum : CLIPFORMAT { CF_HDROP = 15 };

/// What a block of files begins with. The list: the path of each file with its terminator, and one terminator
/// more. A path of no length ends it.
struct DROPFILES {
    DWORD pFiles;  ///< where the list begins, in bytes from here
    POINT pt;      ///< where they were dropped
    BOOL fNC;      ///< whether `pt` is a place on the screen
    BOOL fWide;    ///< UTF-16; 0: UTF-8
};
static_assert(sizeof(DROPFILES) == 20);

// ---- Files that come from another program -------------------------------------------------------------

/// From here on files may be dropped on the window and on those of its children that take none themselves, or
/// not any more. They come from the message loop, as a message to the window:
///
///   WM_DROPFILES  wParam: a block of files (HDROP::FromParam), which is the window's to end with DragFinish.
///                 lParam: what the user leaves open, of the effects that the window performs.
///                 Result: 0, whatever becomes of it the files are still where they were.
///
/// The program that they come from waits for the result, and is told of a copy. What lies in the block are
/// the absolute paths of files of this machine. Names that are no UTF-8, and addresses elsewhere, are left
/// out; where nothing is left there is no message. A window that is disabled, or lies in another program's,
/// takes none.
PLATFORM_API void DragAcceptFiles(HWND window, BOOL accept);
/// A window that takes files may also move them, by itself: then it says so here, acts on a lParam that has
/// DROPEFFECT_MOVE (alone while a key asks for that, and with DROPEFFECT_COPY where either will do), and
/// returns DROPEFFECT_MOVE once none of the files is where it was. Only then is the other program told of a
/// move.
PLATFORM_API void DragAcceptMoves(HWND window, BOOL accept);

/// The path at an index of a block, as far as it fits into `size` units with its terminator; returns the
/// units written without that. Without a buffer: the units that the whole path takes. 0 for an index that is
/// none, and for a stale block.
PLATFORM_API UINT DragQueryFileW(HDROP drop, UINT index, LPWSTR buffer, UINT size);
constexpr UINT kAllFiles = 0xFFFFFFFF;  ///< as index: returns how many files there are
/// Where they were dropped, in client pixels. FALSE when that is outside of the client area, and for a stale
/// block, which leaves `point` alone.
PLATFORM_API BOOL DragQueryPoint(HDROP drop, POINT* point);
/// Frees the block. What nobody handles is ended by DefWindowProcW.
PLATFORM_API void DragFinish(HDROP drop);

// ---- Files on their way to another program ------------------------------------------------------------

/// Data offered for dragging. Blocks belong to the source from the moment they are offered: it frees each
/// once, when another takes its place or when it ends itself, and nobody else may.
class PLATFORM_API COleDataSource {
  public:
    COleDataSource() = default;
    ~COleDataSource();
    COleDataSource(const COleDataSource&) = delete;
    COleDataSource& operator=(const COleDataSource&) = delete;

    /// Takes the block over. Formats other than CF_HDROP are kept and never asked for.
    void CacheGlobalData(CLIPFORMAT format, HGLOBAL block);

    /// The picture that follows the pointer, at most 256 pixels a side, and where in it the pointer is. It is
    /// copied; the icon stays the caller's. Without one, only the pointer's shape tells what a drop would do.
    void SetDragImage(HICON picture, POINT pointer);

    /// Drags the files of CF_HDROP, beginning at once where the pointer is: the left button must be down. The
    /// release drops them, Escape or another button gives up. The receiver takes them in one of the ways of
    /// `effects`; of these Ctrl asks for a copy, Shift for a move, and both for a link, while it is held.
    ///
    /// Windows are painted and timers and posted messages delivered meanwhile, so the caller's windows and
    /// objects may be gone afterwards; no window gets any input, and none has the capture. Returns what the
    /// receiver says that it did, which only it can know, and which may be another effect than was allowed.
    /// Who moves files moves them itself: the source never deletes one. DROPEFFECT_NONE: nobody took them,
    /// nobody answered in time (half a second to accept them, two to say anything at all, five to finish),
    /// the program or the display went away. The same, at once: without a button held, without a file to drag
    /// (a block that is stale or malformed), on a thread without windows, or while another drag runs.
    ///
    /// Other programs get paths as absolute ones; a relative path counts from the working directory.
    DROPEFFECT DoDragDrop(DROPEFFECT effects = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK);

  private:
    std::map<CLIPFORMAT, HGLOBAL> m_blocks;
    HICON m_picture;  ///< its own copy
    POINT m_pointer = {0, 0};
};
