/// @file
/// The names without a suffix of types and functions whose text is UTF-16.
#pragma once

#include <algorithm>

#include <platform/diagnostics.h>
#include <platform/foreign.h>
#include <platform/gdi.h>
#include <platform/ole.h>
#include <platform/registry.h>
#include <platform/resources.h>
#include <platform/window.h>

using WNDCLASS = WNDCLASSW;
using LOGFONT = LOGFONTW;
using ICONMETRICS = ICONMETRICSW;
using CREATESTRUCT = CREATESTRUCTW;

inline BOOL RegisterClass(const WNDCLASS* description) {
    return RegisterClassW(description);
}
inline HWND CreateWindowEx(DWORD exStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                           int width, int height, HWND parent, UINT_PTR id, HINSTANCE module,
                           LPVOID parameter) {
    return CreateWindowExW(exStyle, className, title, style, x, y, width, height, parent, id, module,
                           parameter);
}
inline LRESULT DefWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcW(window, message, wParam, lParam);
}
inline LONG_PTR GetWindowLongPtr(HWND window, int index) {
    return GetWindowLongPtrW(window, index);
}
inline LONG_PTR SetWindowLongPtr(HWND window, int index, LONG_PTR value) {
    return SetWindowLongPtrW(window, index, value);
}
inline LONG GetWindowLong(HWND window, int index) {
    return static_cast<LONG>(GetWindowLongPtrW(window, index));
}
inline LONG SetWindowLong(HWND window, int index, LONG value) {
    return static_cast<LONG>(SetWindowLongPtrW(window, index, static_cast<DWORD>(value)));
}
inline BOOL SetWindowText(HWND window, LPCWSTR text) {
    return SetWindowTextW(window, text);
}
///@{
/// Cut to the buffer, with its terminator. Returns the length without it.
inline int GetWindowText(HWND window, LPWSTR buffer, int size) {
    if (!buffer || size < 1) return 0;
    const CString text = GetWindowTextW(window).Left(size - 1);
    std::copy_n(text.GetString(), text.GetLength() + 1, buffer);
    return text.GetLength();
}
inline int GetWindowTextLength(HWND window) {
    return GetWindowTextW(window).GetLength();
}
///@}
inline LRESULT SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageW(window, message, wParam, lParam);
}
inline BOOL PostMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return PostMessageW(window, message, wParam, lParam);
}
inline BOOL PeekMessage(MSG* message, HWND window, UINT first, UINT last, UINT remove) {
    return PeekMessageW(message, window, first, last, remove);
}
inline int GetMessage(MSG* message, HWND window, UINT first, UINT last) {
    return GetMessageW(message, window, first, last);
}
inline LRESULT DispatchMessage(const MSG* message) {
    return DispatchMessageW(message);
}
inline HCURSOR LoadCursor(HINSTANCE module, LPCWSTR name) {
    return LoadCursorW(module, name);
}
inline HICON LoadIcon(HINSTANCE module, LPCWSTR name) {
    return LoadIconW(module, name);
}
inline int LoadString(HINSTANCE module, UINT id, LPWSTR buffer, int size) {
    return LoadStringW(module, id, buffer, size);
}
inline HRSRC FindResource(HMODULE module, LPCWSTR name, LPCWSTR type) {
    return FindResourceW(module, name, type);
}
inline DWORD GetModuleFileName(HMODULE module, LPWSTR buffer, DWORD size) {
    return GetModuleFileNameW(module, buffer, size);
}
inline BOOL SystemParametersInfo(UINT action, UINT size, LPVOID value, UINT flags) {
    return SystemParametersInfoW(action, size, value, flags);
}
inline BOOL GetMonitorInfo(HMONITOR monitor, MONITORINFO* info) {
    return GetMonitorInfoW(monitor, info);
}
inline HWND FindWindow(LPCWSTR className, LPCWSTR title) {
    return FindWindowW(className, title);
}
inline HWND FindWindowEx(HWND parent, HWND after, LPCWSTR className, LPCWSTR title) {
    return FindWindowExW(parent, after, className, title);
}
enum { FW_NORMAL = 400, FW_BOLD = 700 };
inline HFONT CreateFontIndirect(const LOGFONT* font) {
    return CreateFontIndirectW(font);
}
inline HFONT CreateFont(int height, int width, int escapement, int orientation, int weight, DWORD italic,
                        DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision,
                        DWORD clipPrecision, DWORD quality, DWORD pitchAndFamily, LPCWSTR face) {
    return CreateFontW(height, width, escapement, orientation, weight, italic, underline, strikeOut, charSet,
                       outPrecision, clipPrecision, quality, pitchAndFamily, face);
}
inline int DrawText(HDC context, LPCWSTR text, int length, RECT* rect, UINT format) {
    return DrawTextW(context, text, length, rect, format);
}
inline BOOL TextOut(HDC context, int x, int y, LPCWSTR text, int length) {
    return TextOutW(context, x, y, text, length);
}
inline BOOL GetTextExtentPoint32(HDC context, LPCWSTR text, int length, SIZE* size) {
    return GetTextExtentPoint32W(context, text, length, size);
}
inline void OutputDebugString(LPCWSTR text) {
    OutputDebugStringW(text);
}
inline HHOOK SetWindowsHookEx(int type, HOOKPROC procedure, HINSTANCE module, DWORD thread) {
    return SetWindowsHookExW(type, procedure, module, thread);
}
inline UINT DragQueryFile(HDROP drop, UINT index, LPWSTR buffer, UINT size) {
    return DragQueryFileW(drop, index, buffer, size);
}
inline LSTATUS RegOpenKeyEx(HKEY key, LPCWSTR path, DWORD options, REGSAM access, HKEY* opened) {
    return RegOpenKeyExW(key, path, options, access, opened);
}
inline LSTATUS RegCreateKeyEx(HKEY key, LPCWSTR path, DWORD reserved, LPWSTR type, DWORD options,
                              REGSAM access, const void* security, HKEY* opened, DWORD* disposition) {
    return RegCreateKeyExW(key, path, reserved, type, options, access, security, opened, disposition);
}
inline LSTATUS RegQueryValueEx(HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type, BYTE* data,
                               DWORD* size) {
    return RegQueryValueExW(key, name, reserved, type, data, size);
}
inline LSTATUS RegSetValueEx(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                             DWORD size) {
    return RegSetValueExW(key, name, reserved, type, data, size);
}
inline LSTATUS RegDeleteValue(HKEY key, LPCWSTR name) {
    return RegDeleteValueW(key, name);
}
