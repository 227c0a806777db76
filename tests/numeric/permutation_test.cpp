#include <orvmath/permutation.h>

#include <gtest/gtest.h>

#include <vector>

using namespace ORVMATH;

TEST(CGenPermutation, VisitsEachSelectionOnceInLexicographicOrderThenWraps) {
    // Counts n! / (n-k)! by hand: 6, 6, 60, 1, 0, 0.
    const struct { int n, k; long long count; std::vector<std::vector<int>> head; } rows[] = {
        {3, 2, 6, {{0, 1}, {0, 2}, {1, 0}, {1, 2}, {2, 0}, {2, 1}}},
        {3, 3, 6, {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}}},
        {5, 3, 60, {{0, 1, 2}, {0, 1, 3}, {0, 1, 4}, {0, 2, 1}}},
        {4, 0, 1, {{}}},
        {2, 3, 0, {}},
        {-1, 0, 0, {}},
    };
    for (const auto& row : rows) {
        CGenPermutation gen(row.n, row.k);
        std::vector<std::vector<int>> seen;
        if (gen.GetCount() > 0) do {
                seen.emplace_back(gen.Current().GetData(), gen.Current().GetData() + gen.Current().GetSize());
            } while (gen.Next());
        EXPECT_EQ(gen.GetCount(), row.count);
        ASSERT_EQ(static_cast<long long>(seen.size()), row.count);
        for (std::size_t i = 0; i < row.head.size(); ++i) EXPECT_EQ(seen[i], row.head[i]);
        for (std::size_t i = 1; i < seen.size(); ++i) EXPECT_LT(seen[i - 1], seen[i]);  // strictly ascending
        if (!seen.empty()) EXPECT_EQ(std::vector<int>(gen.Current().GetData(), gen.Current().GetData() + row.k), seen[0]);
        else EXPECT_FALSE(gen.Next());
    }
    EXPECT_EQ(CGenPermutation::Count(20, 20), 2432902008176640000LL);  // 20!
    EXPECT_EQ(CGenPermutation::Count(21, 21), -1);                     // 21! ~ 5.1e19 > 2^63
    EXPECT_EQ(CGenPermutation::Count(30, 12), 41430393164160000LL);    // 30 * 29 * .. * 19 (Python math.perm)
}
