#include <platform/framework.h>

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const {
    for (const CRuntimeClass* one = this; one; one = one->m_pBaseClass)
        if (one == base) return true;
    return false;
}

const CRuntimeClass CObject::classCObject = {"CObject", nullptr, nullptr};

CObject::~CObject() = default;

const CRuntimeClass* CObject::GetRuntimeClass() const {
    return RUNTIME_CLASS(CObject);
}

bool CObject::IsKindOf(const CRuntimeClass* runtimeClass) const {
    return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}
