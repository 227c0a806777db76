#include <orvmath/host/variant.h>

#include <gtest/gtest.h>

#include <vector>

TEST(SafeArrayVector, LowerBoundOtherThanZeroShiftsTheValidIndices) {
    SAFEARRAY* psa = SafeArrayCreateVector(VT_R8, 1, 3);  // indices 1..3
    ASSERT_NE(psa, nullptr);
    LONG lb = 0, ub = 0;
    EXPECT_TRUE(SafeArrayGetLBound(psa, 1, &lb) == S_OK && SafeArrayGetUBound(psa, 1, &ub) == S_OK);
    EXPECT_TRUE(lb == 1 && ub == 3);
    EXPECT_EQ(SafeArrayGetLBound(psa, 2, &lb), DISP_E_BADINDEX);
    const struct { LONG index; HRESULT hr; } rows[] = {
        {0, DISP_E_BADINDEX}, {1, S_OK}, {3, S_OK}, {4, DISP_E_BADINDEX}, {-2147483647 - 1, DISP_E_BADINDEX}};
    for (const auto& row : rows) {
        LONG index = row.index;
        double value = 10.0 * index, back = -1.0;
        EXPECT_EQ(SafeArrayPutElement(psa, &index, &value), row.hr) << index;
        EXPECT_EQ(SafeArrayGetElement(psa, &index, &back), row.hr) << index;
        EXPECT_EQ(back, row.hr == S_OK ? value : -1.0) << row.index;  // untouched on failure
    }
    LONG i = 1;
    double d = 0;
    EXPECT_EQ(SafeArrayGetElement(nullptr, &i, &d), E_INVALIDARG);
    EXPECT_EQ(SafeArrayPutElement(psa, nullptr, &d), E_INVALIDARG);
    EXPECT_EQ(SafeArrayDestroy(psa), S_OK);
}

TEST(SafeArrayMulti, BoundsAreStoredReversedAndFirstDimensionVariesFastest) {
    SAFEARRAYBOUND bounds[2] = {{3, 1}, {2, -1}};  // a(1..3, -1..0)
    SAFEARRAY* psa = SafeArrayCreate(VT_I4, 2, bounds);
    ASSERT_NE(psa, nullptr);
    EXPECT_EQ(SafeArrayGetDim(psa), 2u);
    EXPECT_EQ(psa->rgsabound[0].cElements, 2u);  // the last dimension is stored first
    LONG lb = 0, ub = 0;  // dimension 2, as the caller numbers it
    EXPECT_TRUE(SafeArrayGetLBound(psa, 2, &lb) == S_OK && SafeArrayGetUBound(psa, 2, &ub) == S_OK);
    EXPECT_TRUE(lb == -1 && ub == 0);
    for (LONG j = -1; j <= 0; ++j) {
        for (LONG i = 1; i <= 3; ++i) {
            LONG idx[2] = {i, j}, v = 10 * i + j;
            ASSERT_EQ(SafeArrayPutElement(psa, idx, &v), S_OK);
        }
    }
    // Column-major: (1,-1) (2,-1) (3,-1) (1,0) (2,0) (3,0)
    const LONG* data = static_cast<const LONG*>(psa->pvData);
    EXPECT_EQ((std::vector<LONG>(data, data + 6)), (std::vector<LONG>{9, 19, 29, 10, 20, 30}));
    for (auto idx : {std::vector<LONG>{0, 0}, {4, 0}, {1, -2}, {1, 1}}) {
        LONG v = 0;
        EXPECT_EQ(SafeArrayGetElement(psa, idx.data(), &v), DISP_E_BADINDEX);
    }
    SafeArrayDestroy(psa);
    SAFEARRAYBOUND huge[2] = {{0xFFFFFFFFu, 0}, {0xFFFFFFFFu, 0}};
    EXPECT_EQ(SafeArrayCreate(VT_R8, 2, huge), nullptr);  // 2^64 * 8 bytes
    EXPECT_EQ(SafeArrayCreate(VT_R8, 0, bounds), nullptr);
}

// Run under the leak checker: every array below must be freed by the clears.
TEST(Variant, ClearingFreesOwnedArraysIncludingNestedOnes) {
    SAFEARRAY* outer = SafeArrayCreateVector(VT_VARIANT, 0, 2);
    VARIANT inner, got, holder;
    VariantInit(&inner);
    VariantInit(&got);
    VariantInit(&holder);
    inner.vt = VT_ARRAY | VT_R8;
    inner.parray = SafeArrayCreateVector(VT_R8, 0, 4);
    LONG i = 1;
    ASSERT_EQ(SafeArrayPutElement(outer, &i, &inner), S_OK);  // deep copy
    EXPECT_EQ(VariantClear(&inner), S_OK);
    EXPECT_EQ(inner.vt, VT_EMPTY);
    ASSERT_EQ(SafeArrayGetElement(outer, &i, &got), S_OK);  // deep copy again
    EXPECT_EQ(got.vt, VT_ARRAY | VT_R8);
    EXPECT_EQ(SafeArrayGetDim(got.parray), 1u);
    VariantClear(&got);
    holder.vt = VT_ARRAY | VT_VARIANT;
    holder.parray = outer;
    EXPECT_EQ(VariantClear(&holder), S_OK);
    EXPECT_EQ(VariantClear(nullptr), E_INVALIDARG);
}
