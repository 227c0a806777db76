#include <orvmath/host/object.h>

#include <gtest/gtest.h>

#include <memory>

namespace hosttest {
class CShape : public CObject {
    DECLARE_DYNAMIC(CShape)
};
class CCircleShape : public CShape {
    DECLARE_SERIAL(CCircleShape)
public:
    double radius = 2.5;
};
class CBoxShape : public CShape {
    DECLARE_DYNCREATE(CBoxShape)
};

IMPLEMENT_DYNAMIC(CShape, CObject)
IMPLEMENT_SERIAL(CCircleShape, CShape, 3);
IMPLEMENT_DYNCREATE(CBoxShape, CShape)
}  // namespace hosttest

using hosttest::CBoxShape;
using hosttest::CCircleShape;
using hosttest::CShape;

TEST(RuntimeClass, RecordsNamesCreationAndKinds) {
    const CRuntimeClass* c = RUNTIME_CLASS(CCircleShape);
    EXPECT_STREQ(c->m_lpszClassName, "CCircleShape");
    EXPECT_EQ(c->m_wSchema, 3u);
    EXPECT_EQ(RUNTIME_CLASS(CObject)->m_pBaseClass, nullptr);
    // Registered under the bare name; the library registers CObject itself.
    EXPECT_EQ(CRuntimeClass::FromName("CCircleShape"), c);
    EXPECT_EQ(CRuntimeClass::FromName("CObject"), RUNTIME_CLASS(CObject));
    EXPECT_EQ(CRuntimeClass::FromName("hosttest::CShape"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("CShap"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName(nullptr), nullptr);
    EXPECT_EQ(RUNTIME_CLASS(CShape)->CreateObject(), nullptr);  // dynamic only
    std::unique_ptr<CObject> circle(c->CreateObject()), box(RUNTIME_CLASS(CBoxShape)->CreateObject());
    ASSERT_TRUE(circle && box);
    EXPECT_EQ(circle->GetRuntimeClass(), c);
    EXPECT_EQ(static_cast<CCircleShape*>(circle.get())->radius, 2.5);
    EXPECT_EQ(box->GetRuntimeClass(), RUNTIME_CLASS(CBoxShape));
    // The base chain: CCircleShape -> CShape -> CObject.
    EXPECT_TRUE(circle->IsKindOf(RUNTIME_CLASS(CShape)) && circle->IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(circle->IsKindOf(RUNTIME_CLASS(CBoxShape)));
    EXPECT_FALSE(RUNTIME_CLASS(CShape)->IsDerivedFrom(c));
    EXPECT_TRUE(circle->IsSerializable());
    EXPECT_FALSE(box->IsSerializable());
}
