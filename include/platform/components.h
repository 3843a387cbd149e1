/// @file
/// Objects of classes that the platform knows by name.
#pragma once

#include <cstdint>

#include <platform/ole.h>
#include <platform/types.h>

/// The name of a class or an interface.
struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
    friend constexpr bool operator==(const GUID&, const GUID&) = default;
};

constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002);
constexpr HRESULT REGDB_E_CLASSNOTREG = static_cast<HRESULT>(0x80040154);
constexpr HRESULT CO_E_NOTINITIALIZED = static_cast<HRESULT>(0x800401F0);
enum : DWORD { CLSCTX_INPROC_SERVER = 1 };
/// Makes an object of a class, with one holder. `object` receives the asked interface, null on failure:
/// CO_E_NOTINITIALIZED on a thread without CoInitialize, REGDB_E_CLASSNOTREG for an unknown class or another
/// context, E_NOINTERFACE, E_OUTOFMEMORY, E_INVALIDARG with an outer object, E_POINTER.
PLATFORM_API HRESULT CoCreateInstance(const GUID& classId, IUnknown* outer, DWORD context,
                                      const GUID& interfaceId, void** object);
