// Generation of k-permutations of n items in lexicographic order.
#pragma once

#include <orvmath/containers.h>
#include <orvmath/export.h>

#include <vector>

namespace ORVMATH {

// Walks the ordered selections of k distinct items out of 0 .. n-1
// (k == n: the permutations of all n), in lexicographic order of the
// selections. Current() starts at the first one, 0, 1, .., k-1; Next() moves
// to the following one and returns true, or, after the last one
// (n-1, n-2, .., n-k), returns false and goes back to the first, so a
// do { ... } while (gen.Next()) loop visits each selection exactly once.
// k == 0: a single empty selection. k < 0, n < 0 or k > n: no selection at
// all (count 0, Current() empty, Next() false).
class ORVMATH_API CGenPermutation {
public:
    CGenPermutation(int n, int k);

    // n! / (n - k)!, 0 for the invalid arguments above, -1 when the number
    // exceeds the range of long long.
    static long long Count(int n, int k) noexcept;
    long long GetCount() const noexcept { return Count(m_n, m_k); }

    const CIntArray& Current() const noexcept { return m_cur; }
    bool Next();

private:
    void Publish();

    int m_n, m_k;
    bool m_valid;
    std::vector<int> m_items;  // the selection, then the unused items ascending
    CIntArray m_cur;
};

}  // namespace ORVMATH
