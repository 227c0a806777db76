// Serialisable object base and run-time class records.
//
// A class derived from CObject gets a record of its name, size, schema,
// factory and base class with the macro pairs below; the records of all
// classes are registered by name at static-initialisation time so that
// CRuntimeClass::FromName finds them.
//
//   // header                                // source, in the class's namespace
//   class ORVMATH_API Vector3d : public CObject {   IMPLEMENT_SERIAL(Vector3d, CObject, 1)
//       DECLARE_SERIAL(Vector3d)
//   public: ...
//   };
//
// DECLARE_* is written without a trailing ';' (a ';' there is an extra
// semicolon in the class) and leaves the class in its public section. IMPLEMENT_* takes the
// unqualified class name and must appear in the namespace that holds the
// class; RUNTIME_CLASS accepts qualified names (RUNTIME_CLASS(ORVMATH::Vector3d)).
// The record is a static data member of the class, so it is exported
// together with the class when the class is declared with ORVMATH_API.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/types.h>

class CArchive;
class CObject;

struct ORVMATH_API CRuntimeClass {
    const char* m_lpszClassName;      // class name without namespace, e.g. "Vector3d"
    int m_nObjectSize;                // sizeof the class
    UINT m_wSchema;                   // schema number; 0xFFFF when not serialisable
    CObject* (*m_pfnCreateObject)();  // factory; nullptr when not creatable
    CRuntimeClass* m_pBaseClass;      // record of the base class; nullptr for CObject
    CRuntimeClass* m_pNextClass;      // registry link, owned by the registration

    // A new default-constructed object (delete it when done), or nullptr when
    // the class is not creatable. Throws CMemoryException when out of memory.
    CObject* CreateObject() const;
    // TRUE when this class is pBaseClass or derives from it.
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;
    // The registered record with this class name (the most recently
    // registered one if several modules use the name), nullptr when unknown
    // or when lpszClassName is nullptr.
    static CRuntimeClass* FromName(const char* lpszClassName);
};

// Registers a record for the lifetime of the registration object (the
// IMPLEMENT_* macros create one per class). Safe at static-initialisation time
// and from several threads; a module that is unloaded removes its records.
class ORVMATH_API CRuntimeClassRegistration {
public:
    explicit CRuntimeClassRegistration(CRuntimeClass* pClass) noexcept;
    ~CRuntimeClassRegistration();
    CRuntimeClassRegistration(const CRuntimeClassRegistration&) = delete;
    CRuntimeClassRegistration& operator=(const CRuntimeClassRegistration&) = delete;

private:
    CRuntimeClass* m_pClass;
};

class ORVMATH_API CObject {
public:
    // Inline, so that a value object (a matrix, a point array) on the stack
    // is destroyed without a call into the library.
    virtual ~CObject() = default;
    // The record of the object's dynamic class (classCObject here).
    virtual CRuntimeClass* GetRuntimeClass() const;
    // Stores or loads the object's data; CObject has none and does nothing.
    virtual void Serialize(CArchive& ar);
    // TRUE when the object's class is pClass or derives from it.
    BOOL IsKindOf(const CRuntimeClass* pClass) const;
    // TRUE when the object's class was declared with DECLARE_SERIAL.
    BOOL IsSerializable() const;

    static CRuntimeClass classCObject;
    static constexpr CRuntimeClass* GetThisClass() noexcept { return &classCObject; }

protected:
    CObject() noexcept = default;
    CObject(const CObject&) noexcept = default;
    CObject& operator=(const CObject&) noexcept = default;
};

#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())

// The record is declared last so that the macro may be followed by ';' or not.
#define DECLARE_DYNAMIC(class_name)                                                \
public:                                                                            \
    static constexpr ::CRuntimeClass* GetThisClass() noexcept { return &class##class_name; } \
    ::CRuntimeClass* GetRuntimeClass() const override { return &class##class_name; } \
    static ::CRuntimeClass class##class_name;

#define DECLARE_DYNCREATE(class_name) \
    DECLARE_DYNAMIC(class_name)       \
    static ::CObject* CreateObject();

#define DECLARE_SERIAL(class_name) DECLARE_DYNCREATE(class_name)

// The record is constant-initialised (no code runs to fill it), so records may
// refer to each other across translation units and modules in any order; only
// the name registration runs at dynamic-initialisation time.
#define ORVHOST_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, pfnNew)         \
    ::CRuntimeClass class_name::class##class_name = {#class_name,                             \
                                                   static_cast<int>(sizeof(class_name)),    \
                                                   (wSchema),                               \
                                                   (pfnNew),                                \
                                                   base_class_name::GetThisClass(),         \
                                                   nullptr};                                \
    static const ::CRuntimeClassRegistration orvhostRegistration_##class_name(                \
        &class_name::class##class_name);

#define IMPLEMENT_DYNAMIC(class_name, base_class_name) \
    ORVHOST_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFFu, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)               \
    ::CObject* class_name::CreateObject() { return new class_name; }      \
    ORVHOST_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFFu, \
                                   &class_name::CreateObject)

#define IMPLEMENT_SERIAL(class_name, base_class_name, wSchema)       \
    ::CObject* class_name::CreateObject() { return new class_name; }    \
    ORVHOST_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, \
                                   &class_name::CreateObject)
