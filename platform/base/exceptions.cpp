#include <platform/exception.h>

CException::~CException() = default;

CInvalidArgException::~CInvalidArgException() = default;

const char* CInvalidArgException::What() const noexcept {
    return "An argument is outside its range.";
}

void AfxThrowInvalidArgException() {
    throw CInvalidArgException();
}
