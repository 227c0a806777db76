// Run-time class records and their registry.
#include <orvmath/host/object.h>

#include <orvmath/host/exceptions.h>

#include <cstring>
#include <mutex>
#include <new>

namespace {

// Both are constant-initialised, so registrations running during other
// modules' static initialisation find them ready.
CRuntimeClass* g_pFirstClass = nullptr;  // intrusive list through m_pNextClass
std::mutex g_registryMutex;

}  // namespace

CRuntimeClass CObject::classCObject = {"CObject", static_cast<int>(sizeof(CObject)), 0xFFFFu, nullptr,
                                       nullptr, nullptr};
static const CRuntimeClassRegistration g_registerCObject(&CObject::classCObject);

CObject* CRuntimeClass::CreateObject() const {
    if (m_pfnCreateObject == nullptr) return nullptr;
    try {
        return m_pfnCreateObject();
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const {
    for (const CRuntimeClass* p = this; p != nullptr; p = p->m_pBaseClass)
        if (p == pBaseClass) return TRUE;
    return FALSE;
}

CRuntimeClass* CRuntimeClass::FromName(const char* lpszClassName) {
    if (lpszClassName == nullptr) return nullptr;
    const std::lock_guard<std::mutex> lock(g_registryMutex);
    for (CRuntimeClass* p = g_pFirstClass; p != nullptr; p = p->m_pNextClass)
        if (std::strcmp(p->m_lpszClassName, lpszClassName) == 0) return p;
    return nullptr;
}

CRuntimeClassRegistration::CRuntimeClassRegistration(CRuntimeClass* pClass) noexcept : m_pClass(pClass) {
    const std::lock_guard<std::mutex> lock(g_registryMutex);
    pClass->m_pNextClass = g_pFirstClass;
    g_pFirstClass = pClass;
}

CRuntimeClassRegistration::~CRuntimeClassRegistration() {
    const std::lock_guard<std::mutex> lock(g_registryMutex);
    for (CRuntimeClass** pp = &g_pFirstClass; *pp != nullptr; pp = &(*pp)->m_pNextClass) {
        if (*pp == m_pClass) {
            *pp = m_pClass->m_pNextClass;
            m_pClass->m_pNextClass = nullptr;
            break;
        }
    }
}

CRuntimeClass* CObject::GetRuntimeClass() const { return &classCObject; }
void CObject::Serialize(CArchive&) {}
BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const { return GetRuntimeClass()->IsDerivedFrom(pClass); }
BOOL CObject::IsSerializable() const { return GetRuntimeClass()->m_wSchema != 0xFFFFu ? TRUE : FALSE; }
