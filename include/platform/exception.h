/// @file
/// What the platform throws.
#pragma once

#include <platform/types.h>

/// The root of it all. Exceptions are thrown by value and caught by reference.
class PLATFORM_API CException {
  public:
    CException() = default;
    CException(const CException&) = default;
    CException& operator=(const CException&) = default;
    virtual ~CException();
    /// One English sentence, valid as long as the exception.
    virtual const char* What() const noexcept = 0;
};

class PLATFORM_API CInvalidArgException : public CException {
  public:
    ~CInvalidArgException() override;
    const char* What() const noexcept override;
};

[[noreturn]] PLATFORM_API void AfxThrowInvalidArgException();
