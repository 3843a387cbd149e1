// The exceptions of the collections and of text.
#include <platform/collections.h>

CException::~CException() = default;

CInvalidArgException::~CInvalidArgException() = default;

const char* CInvalidArgException::What() const noexcept {
    return "An argument is outside its range.";
}

void AfxThrowInvalidArgException() {
    throw CInvalidArgException();
}
