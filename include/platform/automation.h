/// @file
/// Counted objects, and the texts and values that their interfaces speak in.
#pragma once

#include <utility>

#include <platform/ole.h>

// ---- Counted objects ----------------------------------------------------------------------------------

/// An object that others hold by its identity alone: two pointers name one object when they are equal.
class PLATFORM_API IDispatch : public IUnknown {
  protected:
    ~IDispatch() override;
};
using LPDISPATCH = IDispatch*;
using DISPID = std::int32_t;

/// Holds one reference.
template <class T>
class CComPtr {
  public:
    CComPtr() = default;
    CComPtr(T* object) : p(object) {  // NOLINT: adds a reference
        if (p) p->AddRef();
    }
    CComPtr(const CComPtr& other) : CComPtr(other.p) {}
    CComPtr(CComPtr&& other) noexcept : p(std::exchange(other.p, nullptr)) {}
    CComPtr& operator=(CComPtr other) noexcept {
        std::swap(p, other.p);
        return *this;
    }
    ~CComPtr() { Release(); }

    /// Lets go; the pointer is null before the object hears of it.
    void Release() {
        if (T* const object = std::exchange(p, nullptr)) object->Release();
    }
    /// Takes over a reference that somebody counted already.
    void Attach(T* object) {
        Release();
        p = object;
    }
    T* Detach() { return std::exchange(p, nullptr); }

    T* operator->() const { return p; }
    T& operator*() const { return *p; }
    operator T*() const { return p; }  ///< NOLINT
    /// For calls that hand out a reference; the pointer must be null.
    T** operator&() { return &p; }  ///< NOLINT

    T* p = nullptr;
};

// ---- Texts and values of interfaces -------------------------------------------------------------------

/// A terminated text with its length stored before it; the empty text may be null. Whoever is handed one
/// frees it. Null also for want of memory.
using BSTR = char16_t*;
PLATFORM_API BSTR SysAllocString(LPCWSTR text);  ///< null for null
PLATFORM_API BSTR SysAllocStringLen(LPCWSTR text, UINT length);
PLATFORM_API void SysFreeString(BSTR text);
PLATFORM_API UINT SysStringLen(BSTR text);  ///< in units, without the terminator

using VARTYPE = WORD;
enum : VARTYPE {
    VT_EMPTY = 0,
    VT_I4 = 3,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_BOOL = 11,
    VT_UI1 = 17,
    VT_ARRAY = 0x2000,
    VT_BYREF = 0x4000
};
using VARIANT_BOOL = std::int16_t;
constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

/// An array of bytes, the one kind there is.
struct SAFEARRAY;
///@{
/// Zeroed. Null for an element type other than VT_UI1, and without memory.
PLATFORM_API SAFEARRAY* SafeArrayCreateVector(VARTYPE element, LONG lowerBound, ULONG count);
PLATFORM_API HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
PLATFORM_API HRESULT SafeArrayUnaccessData(SAFEARRAY* array);
PLATFORM_API ULONG SafeArrayCount(const SAFEARRAY* array);  ///< 0 for null
PLATFORM_API HRESULT SafeArrayDestroy(SAFEARRAY* array);
///@}

/// A value that says what it is. It does not free what it names: VariantClear does.
struct VARIANT {
    VARTYPE vt = VT_EMPTY;
    union {
        LONG lVal = 0;
        BSTR bstrVal;
        VARIANT_BOOL boolVal;
        LPDISPATCH pdispVal;
        SAFEARRAY* parray;
        VARIANT_BOOL* pboolVal;  ///< with VT_BYREF: the caller's own
        LPDISPATCH* ppdispVal;
    };
};
PLATFORM_API void VariantInit(VARIANT* value);
/// Frees the text or bytes, or lets go of the object, and leaves the value empty.
PLATFORM_API HRESULT VariantClear(VARIANT* value);
