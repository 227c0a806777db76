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

TEST(RuntimeClass, RecordsCarryNameSizeSchemaAndBase) {
    const CRuntimeClass* c = RUNTIME_CLASS(hosttest::CCircleShape);
    EXPECT_STREQ(c->m_lpszClassName, "CCircleShape");
    EXPECT_EQ(c->m_nObjectSize, static_cast<int>(sizeof(CCircleShape)));
    EXPECT_EQ(c->m_wSchema, 3u);
    EXPECT_EQ(c->m_pBaseClass, RUNTIME_CLASS(CShape));
    EXPECT_EQ(RUNTIME_CLASS(CShape)->m_pBaseClass, RUNTIME_CLASS(CObject));
    EXPECT_EQ(RUNTIME_CLASS(CObject)->m_pBaseClass, nullptr);
}

TEST(RuntimeClass, FromNameFindsRegisteredClassesOnly) {
    EXPECT_EQ(CRuntimeClass::FromName("CCircleShape"), RUNTIME_CLASS(CCircleShape));
    EXPECT_EQ(CRuntimeClass::FromName("CShape"), RUNTIME_CLASS(CShape));
    EXPECT_EQ(CRuntimeClass::FromName("CObject"), RUNTIME_CLASS(CObject));  // registered by the library
    EXPECT_EQ(CRuntimeClass::FromName("hosttest::CShape"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("CShap"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName(nullptr), nullptr);
}

TEST(RuntimeClass, CreateObjectOnlyForCreatableClasses) {
    EXPECT_EQ(RUNTIME_CLASS(CShape)->CreateObject(), nullptr);
    std::unique_ptr<CObject> circle(CRuntimeClass::FromName("CCircleShape")->CreateObject());
    ASSERT_NE(circle, nullptr);
    EXPECT_EQ(circle->GetRuntimeClass(), RUNTIME_CLASS(CCircleShape));
    EXPECT_EQ(static_cast<CCircleShape*>(circle.get())->radius, 2.5);
    std::unique_ptr<CObject> box(RUNTIME_CLASS(CBoxShape)->CreateObject());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->GetRuntimeClass(), RUNTIME_CLASS(CBoxShape));
}

TEST(RuntimeClass, IsKindOfFollowsTheBaseChain) {
    CCircleShape circle;
    CBoxShape box;
    EXPECT_TRUE(circle.IsKindOf(RUNTIME_CLASS(CCircleShape)));
    EXPECT_TRUE(circle.IsKindOf(RUNTIME_CLASS(CShape)));
    EXPECT_TRUE(circle.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(circle.IsKindOf(RUNTIME_CLASS(CBoxShape)));
    EXPECT_FALSE(box.IsKindOf(RUNTIME_CLASS(CCircleShape)));
    EXPECT_FALSE(RUNTIME_CLASS(CShape)->IsDerivedFrom(RUNTIME_CLASS(CCircleShape)));
    EXPECT_TRUE(circle.IsSerializable());
    EXPECT_FALSE(box.IsSerializable());
}
