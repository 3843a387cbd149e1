// The calling thread's last error, and a sentence for each code.
#include <platform/types.h>

namespace {
thread_local DWORD lastError = ERROR_SUCCESS;
}  // namespace

DWORD GetLastError() {
    return lastError;
}

void SetLastError(DWORD error) {
    lastError = error;
}

const char* ErrorText(DWORD error) {
    switch (error) {
        case ERROR_SUCCESS:
            return "No error.";
        case ERROR_FILE_NOT_FOUND:
            return "The file was not found.";
        case ERROR_ACCESS_DENIED:
            return "Another program holds it.";
        case ERROR_INVALID_HANDLE:
            return "The handle is empty, or its object is gone.";
        case ERROR_NOT_ENOUGH_MEMORY:
            return "There is not enough memory.";
        case ERROR_BAD_FORMAT:
            return "The data is truncated or contradicts itself.";
        case ERROR_INVALID_DATA:
            return "The data is not valid.";
        case ERROR_NOT_SUPPORTED:
            return "The request is not supported here.";
        case ERROR_INVALID_PARAMETER:
            return "A parameter is outside its range.";
        case ERROR_MOD_NOT_FOUND:
            return "A library that this needs is not installed.";
        case ERROR_INVALID_PIXEL_FORMAT:
            return "The display server is not supported: it has no pixels of 32 bits.";
        case ERROR_CONNECTION_UNAVAIL:
            return "No display server can be reached, or it went away.";
        case ERROR_INVALID_WINDOW_HANDLE:
            return "The window handle is empty, or the window is gone.";
        case ERROR_CANNOT_FIND_WND_CLASS:
            return "No window class has this name.";
        case ERROR_WINDOW_OF_OTHER_THREAD:
            return "The window belongs to another thread.";
        case ERROR_CLASS_ALREADY_EXISTS:
            return "A window class of this name exists already.";
        case ERROR_RESOURCE_DATA_NOT_FOUND:
            return "The module has no resources.";
        case ERROR_RESOURCE_TYPE_NOT_FOUND:
            return "The module has no resource of this type.";
        case ERROR_RESOURCE_NAME_NOT_FOUND:
            return "The module has no resource of this name and type.";
        default:
            return "Unknown error.";
    }
}
