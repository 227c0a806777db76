"""The Python module against values worked out by hand, its shapes and dtypes, and its errors."""
import math
import os

import numpy as np
import pytest

import orvmath

# A straight of 100 m east from (0, 0), then a left-hand arc of radius 100 through a quarter turn, ending at
# (200, 100) heading north (the centre is (100, 100)).
POINTS = np.array([
    [0, 0, 0, 0, -1, 0, 0],
    [1, 100, 0, 0, 100, 0, 0],
    [0, 200, 100, math.pi / 2, -1, 0, 0],
])


def test_points_on_a_straight_and_an_arc_by_hand():
    route = orvmath.Route(POINTS, start_mile=1000.0)
    assert route.end_mile == pytest.approx(1000 + 100 + 50 * math.pi)
    # Mile 1050 with 2 m to the left: (50, 2). Mile 1100 + 25 pi (half the arc, 45 degrees about (100, 100)) with
    # 10 m left (toward the centre): radius 90 at -45 degrees from the centre.
    xy, angles = route.point(np.array([1050.0, 1100 + 25 * math.pi]), np.array([2.0, 10.0]))
    assert xy.shape == (2, 2) and xy.dtype == np.float64 and angles.shape == (2,)
    np.testing.assert_allclose(xy[0], [50, 2], atol=1e-9)
    r = 90 / math.sqrt(2)
    np.testing.assert_allclose(xy[1], [100 + r, 100 - r], atol=1e-9)
    np.testing.assert_allclose(angles, [0, math.pi / 4], atol=1e-12)


def test_scalar_offset_off_route_miles_and_bad_shapes():
    route = orvmath.Route(POINTS)
    xy, angles = route.point(np.array([-5.0, 10.0]), 1.5)
    assert np.isnan(xy[0]).all() and math.isnan(angles[0])
    np.testing.assert_allclose(xy[1], [10, 1.5], atol=1e-9)
    for bad in (lambda: route.point(np.zeros((2, 2))), lambda: route.point(np.zeros(3), np.zeros(2)),
                lambda: orvmath.Route(np.zeros((3, 6))), lambda: orvmath.Route(np.array([[7, 0, 0, 0, -1, 0, 0]])),
                lambda: orvmath.Route(np.array([[0, math.nan, 0, 0, -1, 0, 0]]))):
        with pytest.raises(ValueError):
            bad()


def test_archive_bytes_round_trip_and_refuse_other_bytes():
    route = orvmath.Route(POINTS, 5.0, 1.0)
    data = route.to_bytes()
    # 3 doubles, a 2-byte count and 3 blocks of 56 bytes, then two tables of 2 elements (2 + 16 bytes each).
    assert len(data) == 24 + 2 + 3 * 56 + 2 * 18
    back = orvmath.Route.from_bytes(data)
    np.testing.assert_array_equal(back.critical_points, route.critical_points)
    assert back.offset == 1.0 and back.start_mile == 5.0
    for bad in (b"", b"not a route", data[:-1], data + b"\0"):
        with pytest.raises(ValueError):
            orvmath.Route.from_bytes(bad)


def test_routes_from_csv_files(tmp_path):
    path = tmp_path / "r.csv"
    path.write_text("start_mile,offset\n0,0\ntype,x,y,angle_deg,radius,spiralA,endRadius\n"
                    "line,0,0,90,-1,,\nline,0,10,90,-1,,\n")
    xy, _ = orvmath.Route.from_csv(str(path)).point(np.array([4.0]))
    np.testing.assert_allclose(xy[0], [0, 4], atol=1e-9)
    (tmp_path / "bad.csv").write_text("start_mile,offset\nzero,0\n")
    with pytest.raises(ValueError, match="bad.csv:2"):
        orvmath.Route.from_csv(str(tmp_path / "bad.csv"))


def test_polygon_contains_and_locate():
    square = np.array([[0, 0], [4, 0], [4, 4], [0, 4]], dtype=float)
    pts = np.array([[2, 2], [5, 2], [4, 2], [0.05, 2]])
    inside = orvmath.polygon_contains(square, pts)
    assert inside.dtype == np.bool_ and inside.tolist() == [True, False, False, True]
    assert orvmath.PreparedPolygon(square, 0.1).locate(pts).tolist() == [1, 0, 2, 2]
    for outline, points in ((square[:2], pts), (square, np.zeros(4)), (square, np.zeros((4, 3)))):
        with pytest.raises(ValueError):
            orvmath.polygon_contains(outline, points)


def test_locate_gives_the_miles_and_offsets_back():
    route = orvmath.Route(POINTS, start_mile=1000.0)
    miles = np.array([1010.0, 1099.0, 1100 + 25 * math.pi, 1100 + 40 * math.pi])
    offsets = np.array([3.0, -20.0, 10.0, -5.0])
    xy, _ = route.point(miles, offsets)
    m, o = route.locate(np.vstack([xy, [[-50.0, 0.0]]]))  # the last point lies before the start: no foot
    np.testing.assert_allclose(m[:4], miles, atol=1e-9)
    np.testing.assert_allclose(o[:4], offsets, atol=1e-9)
    assert math.isnan(m[4]) and math.isnan(o[4])
    # (50, -5): 5 m right of mile 1050 on the straight, the only foot.
    assert route.feet(50.0, -5.0) == pytest.approx([(1050.0, -5.0)])


def test_design_forms_lay_out_and_read_back():
    # The same quarter turn from its tangent polygon: the tangents meet at (200, 0); radius 100, no clothoids.
    route = orvmath.Route.from_pi(np.array([[0, 0, 0, 0, 0], [200, 0, 100, 0, 0], [200, 100, 0, 0, 0]]))
    assert route.exact_clothoids
    np.testing.assert_allclose(route.critical_points[:, 1:4], POINTS[:, 1:4], atol=1e-9)
    np.testing.assert_allclose(route.pi(), [[0, 0, 0, 0, 0], [200, 0, 100, 0, 0], [200, 100, 0, 0, 0]], atol=1e-9)
    # Its elements: a straight of 100 and an arc of 50 pi turning left (positive radius).
    np.testing.assert_allclose(route.elements(), [[0, 100, 0, 0, 0], [1, 50 * math.pi, 100, 0, 0]], atol=1e-9)
    again = orvmath.Route.from_elements(0, 0, 0, route.elements())
    np.testing.assert_allclose(again.critical_points, route.critical_points, atol=1e-9)
    with pytest.raises(ValueError, match="vertex 1"):
        orvmath.Route.from_pi(np.array([[0, 0, 0, 0, 0], [200, 0, 0, 0, 0], [200, 100, 0, 0, 0]]))
    with pytest.raises(ValueError, match="element 0"):
        orvmath.Route.from_elements(0, 0, 0, np.array([[1, 10, 0, 0, 0]]))


def shoelace_with_bulges(rows):
    """Area of (x, y, bulge) rows, worked out here independently: chords plus circular segments."""
    area = 0.0
    n = len(rows)
    for i in range(n):
        x0, y0, b = rows[i]
        x1, y1, _ = rows[(i + 1) % n]
        area += 0.5 * (x0 * y1 - x1 * y0)
        if b:
            sweep = 4 * math.atan(b)
            chord = math.hypot(x1 - x0, y1 - y0)
            r = chord / (2 * abs(math.sin(sweep / 2)))
            area += 0.5 * r * r * (sweep - math.sin(sweep))
    return area


def test_polygon_offset_and_buffer():
    square = np.array([[0, 0], [10, 0], [10, 10], [0, 10]], dtype=float)
    (grown,) = orvmath.polygon_offset(square, 1.0)
    assert grown.shape[1] == 3
    assert shoelace_with_bulges(grown) == pytest.approx(140 + math.pi, abs=1e-9)  # 100 + 4 * 10 + a unit disc
    (mitred,) = orvmath.polygon_offset(square, 1.0, join="miter")
    assert shoelace_with_bulges(mitred) == pytest.approx(144, abs=1e-9)
    assert orvmath.polygon_offset(square, -6.0) == []
    (band,) = orvmath.polyline_buffer(np.array([[0, 0], [10, 0]]), 1.0, cap="butt")
    assert shoelace_with_bulges(band) == pytest.approx(20, abs=1e-9)
    with pytest.raises(ValueError):
        orvmath.polygon_offset(square, 1.0, join="bevel")
