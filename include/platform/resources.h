/// @file
/// Resources of a module: pictures, dialog templates and pages that the resource compiler packed into a
/// .res file and the build embedded into the host (CMake function qkui_add_resources).
#pragma once

#include <cstddef>

#include <platform/memory.h>
#include <platform/text.h>
#include <platform/types.h>

/// An integer resource name or type in the place of a string: any pointer below 65536 is a number.
#define MAKEINTRESOURCE(id) (reinterpret_cast<LPCWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(id))))
#define IS_INTRESOURCE(name) ((reinterpret_cast<ULONG_PTR>(name) >> 16) == 0)

#define RT_BITMAP MAKEINTRESOURCE(2)
#define RT_ICON MAKEINTRESOURCE(3)
#define RT_DIALOG MAKEINTRESOURCE(5)
#define RT_STRING MAKEINTRESOURCE(6)
#define RT_RCDATA MAKEINTRESOURCE(10)
#define RT_GROUP_ICON MAKEINTRESOURCE(14)
#define RT_HTML MAKEINTRESOURCE(23)

/// Makes the resources of a compiled .res known as a module. The bytes are not copied and must outlive the
/// module. Data that is truncated or contradicts itself is refused whole: the empty handle, with
/// ERROR_BAD_FORMAT.
PLATFORM_API HMODULE RegisterModuleResources(const void* data, std::size_t size);
/// Every handle of the module's resources is stale from here on. False for a stale module.
PLATFORM_API BOOL UnregisterModuleResources(HMODULE module);

/// Finds a resource by name and type, each a string (ASCII letters compare without case) or a MAKEINTRESOURCE
/// number. Of several languages the first in the file answers. A null module means the framework's current
/// resource module. Not found: the empty handle, with ERROR_RESOURCE_TYPE_NOT_FOUND or
/// ERROR_RESOURCE_NAME_NOT_FOUND; ERROR_INVALID_HANDLE for a stale module and ERROR_RESOURCE_DATA_NOT_FOUND
/// when there is none at all. The handle lives as long as its module.
PLATFORM_API HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type);
/// The size in bytes; 0 for a stale handle. Here and below, a module is null or the one that was searched.
PLATFORM_API DWORD SizeofResource(HMODULE module, HRSRC resource);
/// A handle to the bytes, owned by the module, for LockResource; empty for a stale handle.
PLATFORM_API HGLOBAL LoadResource(HMODULE module, HRSRC resource);
/// The first byte, never to be written; null for a stale handle. Nothing needs to be unlocked.
PLATFORM_API LPVOID LockResource(HGLOBAL data);

/// A text of the string tables, cut to the buffer, with its terminator. Returns its length; 0 with the errors
/// of FindResourceW, or ERROR_INVALID_DATA. CString::LoadString gives the whole.
PLATFORM_API int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int size);

/// The module that resources are looked up in when none is named: the one chosen while it lives, else the
/// program's own, else the oldest registered; empty when there is none. Setting an empty handle takes the
/// choice back, a stale one is ignored.
PLATFORM_API HMODULE AfxGetResourceHandle();
PLATFORM_API void AfxSetResourceHandle(HMODULE module);
/// The first module embedded into the program or library that holds an address: a plugin names itself by the
/// address of one of its functions. Empty, with ERROR_RESOURCE_DATA_NOT_FOUND, when it has no resources.
PLATFORM_API HMODULE ModuleFromAddress(const void* address);
/// The absolute path of the file that a module was loaded from, or of the program for a null module, with its
/// terminator. Returns its length without it. 0 on failure, the buffer untouched: ERROR_INVALID_HANDLE for a
/// stale module, ERROR_FILE_NOT_FOUND for one that came from no file, ERROR_INVALID_PARAMETER when it does
/// not fit into `size` units.
PLATFORM_API DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size);
