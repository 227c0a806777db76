// A separate program built against the library the way a user builds it:
// through find_package or add_subdirectory, with only the umbrella header.
#include <orvmath/orvmath.h>

#include <cstdio>

int main() {
    using namespace ORVMATH;
    ORVMATH::CDblPointArray points;
    points.Add(0.0, 0.0);
    points.Add(3.0, 4.0);
    const double d = Distance(points[0], points[1]);
    {
        CEpsilonReserveDouble guard(0.5);
        if (!IsDoubleEqual(d, 5.4)) return 1;
    }
    if (IsDoubleEqual(d, 5.4) || NormalizeAng(540.0) != 180.0) return 2;
    std::printf("consumer ok: %g\n", d);
    return 0;
}
