#include <orvmath/permutation.h>

#include <algorithm>
#include <limits>
#include <numeric>

namespace ORVMATH {

CGenPermutation::CGenPermutation(int n, int k) : m_n(n), m_k(k), m_valid(n >= 0 && k >= 0 && k <= n) {
    if (!m_valid) return;
    m_items.resize(static_cast<std::size_t>(n));
    std::iota(m_items.begin(), m_items.end(), 0);
    Publish();
}

long long CGenPermutation::Count(int n, int k) noexcept {
    if (n < 0 || k < 0 || k > n) return 0;
    long long c = 1;
    for (int f = n; f > n - k; --f) {
        if (c > std::numeric_limits<long long>::max() / f) return -1;
        c *= f;
    }
    return c;
}

bool CGenPermutation::Next() {
    if (!m_valid) return false;
    // With the unused tail ascending, reversing it gives the last full
    // permutation that starts with the current selection; the next full
    // permutation then starts with the next selection, tail ascending again.
    const auto tail = m_items.begin() + m_k;
    std::reverse(tail, m_items.end());
    const bool more = std::next_permutation(m_items.begin(), m_items.end());
    Publish();
    return more;
}

void CGenPermutation::Publish() {
    m_cur.SetSize(m_k);
    for (int i = 0; i < m_k; ++i) m_cur[i] = m_items[static_cast<std::size_t>(i)];
}

}  // namespace ORVMATH
