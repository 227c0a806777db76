"""Batch evaluation through the Python module: Route.point over 10^6 increasing miles on the alignment of
orvmath_route_bench's BM_MillionBatch (the same points in C++), so the binding's cost per point is the
difference of the two times.

    PYTHONPATH=build-release/python /usr/bin/python3 bench/python_bench.py
"""
import time

import numpy as np

import orvmath


def alignment():
    rows = []
    for i in range(250):
        r = 300.0 if i % 2 == 0 else -300.0
        rows += [[0, 200, 0, 0, 0], [2, 0, r, 0, 150], [1, 100, r, 0, 0], [2, 0, 0, r, 150]]
    route = orvmath.Route.from_elements(0, 0, 0, np.array(rows, dtype=float))
    route.exact_clothoids = False  # evaluated as BM_MillionBatch does (the default mode)
    return route


def main():
    route = alignment()
    n = 1_000_000
    miles = route.end_mile * np.arange(n) / n
    best = float("inf")
    for _ in range(7):
        t = time.perf_counter()
        route.point(miles, 1.75)
        best = min(best, time.perf_counter() - t)
    print("Route.point, %d increasing miles: %.2f ms best of 7, %.1f ns per point" % (n, best * 1e3, best / n * 1e9))


if __name__ == "__main__":
    main()
