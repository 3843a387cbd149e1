#include <qkui/items/resource_image.h>

#include <cstring>

#include <platform/ole.h>
#include <platform/resources.h>
#include <platform/window.h>

namespace {

std::unique_ptr<Gdiplus::Image> Load(HMODULE module, HRSRC resource) {
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

// "PNG2X" beside "PNG": the same picture with twice the pixels. Null where there is none for the screen.
std::unique_ptr<Gdiplus::Image> LoadDense(HMODULE module, UINT id, LPCWSTR type) {
    if (IS_INTRESOURCE(type)) return nullptr;
    for (int scale = GetScreenScale(); scale > 1; --scale) {
        CString dense;
        dense.Format(u"%s%dX", type, scale);
        const HRSRC resource = FindResourceW(module, MAKEINTRESOURCE(id), dense);
        std::unique_ptr<Gdiplus::Image> image = resource ? Load(module, resource) : nullptr;
        if (image && image->SetScale(scale) == Gdiplus::Ok) return image;
    }
    return nullptr;
}

}  // namespace

std::unique_ptr<Gdiplus::Image> QKLoadImage(UINT id, LPCWSTR type) {
    const HMODULE module = AfxGetResourceHandle();
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCE(id), type);
    if (!resource) return nullptr;
    if (std::unique_ptr<Gdiplus::Image> dense = LoadDense(module, id, type)) return dense;
    return Load(module, resource);
}
