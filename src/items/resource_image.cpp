#include "items/resource_image.h"

#include <cstring>

#include <platform/ole.h>
#include <platform/resources.h>

std::unique_ptr<Gdiplus::Image> QKLoadImage(UINT id, LPCWSTR type) {
    const HMODULE module = AfxGetResourceHandle();
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCE(id), type);
    if (!resource) return nullptr;
    const DWORD size = SizeofResource(module, resource);
    const void* data = LockResource(LoadResource(module, resource));
    if (!data) return nullptr;

    const HGLOBAL block = GlobalAlloc(GMEM_FIXED, size);
    void* copy = GlobalLock(block);
    if (!copy) return nullptr;
    std::memcpy(copy, data, size);
    // The image reads its encoded bytes from the stream for as long as it lives, so the block goes with the
    // stream's last holder.
    IStream* stream = nullptr;
    const HRESULT made = CreateStreamOnHGlobal(block, TRUE, &stream);
    GlobalUnlock(block);
    if (FAILED(made)) {
        GlobalFree(block);
        return nullptr;
    }
    auto image = std::make_unique<Gdiplus::Image>(stream);
    stream->Release();
    return image;
}
