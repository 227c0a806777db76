#include <orvmath/roots.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using namespace ORVMATH;

namespace {

struct Row { std::vector<double> coef; std::vector<dcomplex> want; };  // coef leading first: 4 or 5 of them

const double kH = std::sqrt(0.5), kS3 = std::sqrt(3.0) / 2.0;  // sqrt(2)/2, sqrt(3)/2

// Every root within 1e-14 of the expected one (relative; a zero root exactly; a real
// one with imaginary part exactly 0), and a residual at the rounding level.
void CheckRows(const std::vector<Row>& rows) {
    CArray<dcomplex, dcomplex> roots;
    roots.Add(dcomplex(99, 99));  // earlier contents stay in front
    for (const Row& row : rows) {
        const INT_PTR before = roots.GetSize();
        const std::vector<double>& a = row.coef;
        a.size() == 4 ? GetEquation3Root(a[0], a[1], a[2], a[3], roots)
                      : GetEquation4Root(a[0], a[1], a[2], a[3], a[4], roots);
        ASSERT_EQ(roots.GetSize() - before, static_cast<INT_PTR>(row.want.size())) << "row " << a[0] << " " << a[1];
        for (std::size_t k = 0; k < row.want.size(); ++k) {
            const dcomplex z = roots[before + static_cast<INT_PTR>(k)], w = row.want[k];
            const double tol = 1e-14 * std::hypot(w.r, w.i);
            EXPECT_TRUE(std::fabs(z.r - w.r) <= tol && std::fabs(z.i - w.i) <= tol && (w.i != 0.0 || z.i == 0.0))
                << "root " << k << " of row " << a[0] << " " << a[1] << ": " << z.r << " " << z.i;
            dcomplex p(0, 0);  // residual against the rounding level of sum |coef| |z|^power
            double scale = 0.0;
            for (double c : a) p = p * z + dcomplex(c, 0), scale = scale * z.cabs() + std::fabs(c);
            EXPECT_LE(p.cabs(), 64 * std::numeric_limits<double>::epsilon() * scale) << "residual of root " << k;
        }
    }
    EXPECT_EQ(roots[0].r, 99.0);
}

}  // namespace

TEST(GetEquation3Root, AppendsRealsAscendingThenPairsWithMultiplicity) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    CheckRows({
        {{1, -6, 11, -6}, {{1, 0}, {2, 0}, {3, 0}}},                 // (x-1)(x-2)(x-3)
        {{-2, 12, -22, 12}, {{1, 0}, {2, 0}, {3, 0}}},               // the same times -2
        {{1, 0, 0, -1}, {{1, 0}, {-0.5, kS3}, {-0.5, -kS3}}},        // cube roots of unity
        {{1, -4, 5, -2}, {{1, 0}, {1, 0}, {2, 0}}},                  // (x-1)^2 (x-2)
        {{1, -0.3, 0.03, -0.001}, {{0.1, 0}, {0.1, 0}, {0.1, 0}}},   // (x-0.1)^3, inexact coefficients
        // numpy.roots([2, -3, 5, 7]):
        {{2, -3, 5, 7}, {{-0.80409596791273952, 0}, {1.1520479839563711, 1.7393963666009817},
                         {1.1520479839563711, -1.7393963666009817}}},
        // numpy.poly([1e-6, 1, 1e6]) and its numpy.roots, refined by Newton in exact rationals:
        {{1.0, -1000001.000001, 1000001.0000009999, -1.0}, {{1.0000000000000002e-06, 0}, {0.99999999999999989, 0}, {1e6, 0}}},
        // Near-degenerate leading coefficient, numpy.roots refined as above: the far root and the quadratic's.
        {{1e-12, 1, -3, 2}, {{-1000000000003, 0}, {1.0000000000010001, 0}, {1.999999999992, 0}}},
        {{0, 1, -3, 2}, {{1, 0}, {2, 0}}},  // a == 0: the quadratic, ascending (not GetEquation2Root's order)
        {{0, 0, 2, -4}, {{2, 0}}},
        {{0, 0, 0, 5}, {}},
        {{1, nan, 0, 1}, {}},
    });
}

TEST(GetEquation4Root, AppendsRealsAscendingThenPairsWithMultiplicity) {
    CheckRows({
        {{1, -10, 35, -50, 24}, {{1, 0}, {2, 0}, {3, 0}, {4, 0}}},            // (x-1)(x-2)(x-3)(x-4)
        {{1, 0, 0, 0, 1}, {{-kH, kH}, {-kH, -kH}, {kH, kH}, {kH, -kH}}},      // x^4 = -1
        {{1, 0, 2, 0, 1}, {{0, 1}, {0, -1}, {0, 1}, {0, -1}}},                // (x^2+1)^2
        {{1, -4, 6, -4, 1}, {{1, 0}, {1, 0}, {1, 0}, {1, 0}}},                // (x-1)^4
        {{1, -0.4, 0.06, -0.004, 0.0001}, {{0.1, 0}, {0.1, 0}, {0.1, 0}, {0.1, 0}}},  // (x-0.1)^4
        {{1, -4, 5, -4, 4}, {{2, 0}, {2, 0}, {0, 1}, {0, -1}}},               // (x-2)^2 (x^2+1)
        {{1, -1, -3, 5, -2}, {{-2, 0}, {1, 0}, {1, 0}, {1, 0}}},              // (x-1)^3 (x+2)
        {{1, 0, -2, 0, 1}, {{-1, 0}, {-1, 0}, {1, 0}, {1, 0}}},               // (x^2-1)^2
        // (x-1024)^2 (x-2^-10)(x-2^-9), exact coefficients (numpy.roots splits the double root by 1.5e-5):
        {{1, -2048.0029296875, 1048582.0000019073, -3072.00390625, 2},
         {{1.0 / 1024, 0}, {1.0 / 512, 0}, {1024, 0}, {1024, 0}}},
        {{1, -2, 3, -2, 1}, {{0.5, kS3}, {0.5, -kS3}, {0.5, kS3}, {0.5, -kS3}}},  // (x^2-x+1)^2
        // numpy.roots([3, -5, 7, 2, -9]), the real ones refined by Newton in exact rationals:
        {{3, -5, 7, 2, -9}, {{-0.88438657013386668, 0}, {1.137757569504525, 0},
                             {0.70664783364800487, 1.575471850412713}, {0.70664783364800487, -1.575471850412713}}},
        // numpy.roots([1, -1, 2, -3, 5]): two pairs
        {{1, -1, 2, -3, 5}, {{-0.57842245647209856, 1.4628953679494063}, {-0.57842245647209856, -1.4628953679494063},
                             {1.0784224564720981, 0.92601548324350313}, {1.0784224564720981, -0.92601548324350313}}},
        // Near-degenerate leading coefficient, numpy.roots refined as above.
        {{1e-10, 1, -6, 11, -6}, {{-10000000006, 0}, {0.99999999995, 0}, {2.0000000016000001, 0}, {2.9999999959500001, 0}}},
        {{1, 0, 0, 0, 0}, {{0, 0}, {0, 0}, {0, 0}, {0, 0}}},
        // Roots over 66 decades; mpmath.polyroots at 60 digits: the closed forms alone lose the small ones.
        {{-80.818035324762931, -28578656367868940, -24.849526214037716, 1.9844323448120296e+28, 4.5540808579174678e-24},
         {{-353617311445732.94, 0}, {-833292.0641123011, 0}, {-2.294903562635108e-52, 0}, {833292.06214866508, 0}}},
        {{0, 0, 0, 0, 0}, {}},
    });
}
