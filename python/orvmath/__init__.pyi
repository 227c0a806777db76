from typing import List, Optional, Tuple, Union

import numpy as np
import numpy.typing as npt

ArrayLike = npt.ArrayLike

class Route:
    """A road or rail alignment of straights, arcs and clothoid transitions."""

    def __init__(self, points: ArrayLike, start_mile: float = 0.0, offset: float = 0.0) -> None:
        """From an (n, 7) array of critical points: type (0 line, 1 arc, 2 transition), x, y, angle (radians),
        radius (-1 infinite), spiral_a, end_radius. Raises ValueError for a bad shape, type or non-finite value."""
    @staticmethod
    def from_csv(path: str) -> "Route":
        """From an orvroute CSV file; raises ValueError naming the line at fault."""
    @staticmethod
    def from_elements(x: float, y: float, angle: float, elements: ArrayLike, start_mile: float = 0.0) -> "Route":
        """Laid out from (x, y) in direction `angle` through an (n, 5) array of elements: type, length, radius,
        start_radius, spiral_a (radii signed, positive turning left, 0 infinite). Exact clothoids. Raises ValueError
        naming the first element that cannot be laid out."""
    @staticmethod
    def from_pi(vertices: ArrayLike, start_mile: float = 0.0) -> "Route":
        """From a tangent polygon, an (n, 5) array x, y, radius, a1, a2. Exact clothoids. Raises ValueError naming
        the first vertex whose curve cannot be placed."""
    def elements(self) -> npt.NDArray[np.float64]:
        """The (n, 5) element rows from_elements takes."""
    def pi(self) -> Optional[npt.NDArray[np.float64]]:
        """The (n, 5) tangent polygon from_pi takes, or None when the route is not in that form."""
    @staticmethod
    def from_bytes(data: bytes) -> "Route":
        """From its archive record; raises ValueError when the bytes are not exactly one route record."""
    def to_bytes(self) -> bytes:
        """The archive record: the same bytes on every platform."""
    @property
    def start_mile(self) -> float: ...
    @property
    def end_mile(self) -> float: ...
    @property
    def offset(self) -> float: ...
    @property
    def length(self) -> float: ...
    @property
    def critical_points(self) -> npt.NDArray[np.float64]: ...
    exact_clothoids: bool
    """False (default): transitions by the three-term series; True: by the clothoid itself (Fresnel integrals)."""
    def point(
        self, miles: ArrayLike, offsets: Optional[Union[float, ArrayLike]] = None
    ) -> Tuple[npt.NDArray[np.float64], npt.NDArray[np.float64]]:
        """(xy of shape (n, 2), tangent angles of shape (n,)); NaN for miles off the route."""
    def locate(self, xy: ArrayLike) -> Tuple[npt.NDArray[np.float64], npt.NDArray[np.float64]]:
        """(miles, offsets) of each point's nearest foot, such that point(miles, offsets) gives the points back;
        NaN where a point has no foot (beyond the ends)."""
    def feet(self, x: float, y: float) -> List[Tuple[float, float]]:
        """Every foot of the point: (mile, offset) pairs, nearest first."""

class PreparedPolygon:
    """A polygon indexed once for many point queries."""

    def __init__(self, polygon: ArrayLike, tolerance: float = 0.0) -> None: ...
    def locate(self, xy: ArrayLike) -> npt.NDArray[np.int32]:
        """0 outside, 1 inside (nonzero winding), 2 on the boundary, per point."""

def polygon_contains(polygon: ArrayLike, xy: ArrayLike) -> npt.NDArray[np.bool_]:
    """True for each point strictly inside (boundary points are not contained)."""

def polygon_offset(
    polygon: ArrayLike, distance: float, join: str = "round", miter_limit: float = 2.0
) -> List[npt.NDArray[np.float64]]:
    """The polygon ((n, 2), or (n, 3) with bulges) grown by distance (negative: shrunk), arcs kept as arcs: a list of
    (m, 3) arrays x, y, bulge; outer boundaries counter-clockwise, holes clockwise; empty when it vanishes."""

def polyline_buffer(
    line: ArrayLike, distance: float, join: str = "round", miter_limit: float = 2.0, cap: str = "round"
) -> List[npt.NDArray[np.float64]]:
    """Every point within |distance| of the polyline, as polygon_offset returns it; cap: 'round', 'butt', 'square'."""
