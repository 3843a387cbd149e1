/// @file
/// Run-time class information: what an object is, and objects from their class alone.
#pragma once

#include <platform/types.h>

class CObject;

struct CRuntimeClass {
    const char* m_lpszClassName;
    const CRuntimeClass* m_pBaseClass;
    CObject* (*m_pfnCreateObject)();  ///< null for a class that cannot be created by name

    PLATFORM_API bool IsDerivedFrom(const CRuntimeClass* base) const;
    /// A new object of the class, owned by the caller; null when it cannot be created.
    CObject* CreateObject() const { return m_pfnCreateObject ? m_pfnCreateObject() : nullptr; }
};

class PLATFORM_API CObject {
  public:
    virtual ~CObject();
    virtual const CRuntimeClass* GetRuntimeClass() const;
    bool IsKindOf(const CRuntimeClass* runtimeClass) const;
    static const CRuntimeClass classCObject;

  protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

#define RUNTIME_CLASS(name) (&name::class##name)
#define DECLARE_DYNAMIC(name)               \
  public:                                   \
    static const CRuntimeClass class##name; \
    const CRuntimeClass* GetRuntimeClass() const override;
#define IMPLEMENT_DYNAMIC(name, base)                                              \
    const CRuntimeClass name::class##name = {#name, RUNTIME_CLASS(base), nullptr}; \
    const CRuntimeClass* name::GetRuntimeClass() const {                           \
        return RUNTIME_CLASS(name);                                                \
    }
/// For a class with a default constructor whose objects may be made from its CRuntimeClass alone.
#define DECLARE_DYNCREATE(name) DECLARE_DYNAMIC(name) static CObject* CreateObject();
#define IMPLEMENT_DYNCREATE(name, base)                                                       \
    CObject* name::CreateObject() {                                                           \
        return new name;                                                                      \
    }                                                                                         \
    const CRuntimeClass name::class##name = {#name, RUNTIME_CLASS(base), name::CreateObject}; \
    const CRuntimeClass* name::GetRuntimeClass() const {                                      \
        return RUNTIME_CLASS(name);                                                           \
    }
