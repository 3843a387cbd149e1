// The texts, byte arrays and values that interfaces speak in.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>
#include <vector>

#include <platform/automation.h>

IDispatch::~IDispatch() = default;

struct SAFEARRAY {
    std::vector<BYTE> bytes;
};

namespace {

// What stands before the text of a BSTR.
struct Prefix {
    std::size_t length;
};

Prefix* PrefixOf(BSTR text) {
    return reinterpret_cast<Prefix*>(text) - 1;
}

}  // namespace

BSTR SysAllocString(LPCWSTR text) {
    if (!text) return nullptr;
    const std::size_t length = std::u16string_view(text).size();
    if (length > std::numeric_limits<UINT>::max()) return nullptr;
    return SysAllocStringLen(text, static_cast<UINT>(length));
}

BSTR SysAllocStringLen(LPCWSTR text, UINT length) {
    const std::size_t bytes = std::size_t{length} * sizeof(char16_t);
    void* const memory = std::malloc(sizeof(Prefix) + bytes + sizeof(char16_t));
    if (!memory) return nullptr;
    new (memory) Prefix{length};
    auto* const units = reinterpret_cast<char16_t*>(static_cast<Prefix*>(memory) + 1);
    if (text && length > 0)
        std::memcpy(units, text, bytes);
    else
        std::fill_n(units, length, u'\0');
    units[length] = u'\0';
    return units;
}

void SysFreeString(BSTR text) {
    if (text) std::free(PrefixOf(text));
}

UINT SysStringLen(BSTR text) {
    return text ? static_cast<UINT>(PrefixOf(text)->length) : 0;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE element, LONG, ULONG count) try {
    if (element != VT_UI1) return nullptr;
    return new SAFEARRAY{std::vector<BYTE>(count)};
} catch (const std::bad_alloc&) {
    return nullptr;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
    if (!array || !data) return E_INVALIDARG;
    *data = array->bytes.data();
    return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) {
    return array ? S_OK : E_INVALIDARG;
}

ULONG SafeArrayCount(const SAFEARRAY* array) {
    return array ? static_cast<ULONG>(array->bytes.size()) : 0;
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
    delete array;
    return S_OK;
}

void VariantInit(VARIANT* value) {
    if (value) *value = VARIANT();
}

HRESULT VariantClear(VARIANT* value) {
    if (!value) return E_INVALIDARG;
    const VARIANT old = std::exchange(*value, VARIANT());
    if (old.vt == VT_BSTR) SysFreeString(old.bstrVal);
    if (old.vt == VT_DISPATCH && old.pdispVal) old.pdispVal->Release();
    if (old.vt == (VT_ARRAY | VT_UI1)) SafeArrayDestroy(old.parray);
    return S_OK;
}
