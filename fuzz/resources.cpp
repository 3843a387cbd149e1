// A resource file and the dialog template in it, as strangers send them: find, read, make the dialog.
#include <QKUILib.h>

namespace {

// Reads every byte, so that the sanitizer sees one that does not belong to the file.
unsigned Sum(HMODULE module, LPCWSTR name, LPCWSTR type) {
    const HRSRC resource = FindResourceW(module, name, type);
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
    unsigned sum = 0;
    for (DWORD at = 0; bytes && at < SizeofResource(module, resource); ++at)
        sum += bytes[at];
    return sum;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    return Headless::Use(320, 240) ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const HMODULE module = RegisterModuleResources(data, size);
    if (!module) return 0;
    volatile unsigned sum = 0;
    for (const LPCWSTR type : {RT_DIALOG, RT_RCDATA, LPCWSTR(u"PNG")}) {
        for (int id : {1, 101, 201})
            sum = sum + Sum(module, MAKEINTRESOURCE(id), type);
        sum = sum + Sum(module, u"A", type);
    }
    CQKDialogBase dialog(101);
    if (dialog.Create(101)) {
        dialog.ShowWindow(SW_SHOW);
        Headless::RunPending();
        dialog.DestroyWindow();
    }
    UnregisterModuleResources(module);
    return 0;
}
