"""Routes addressed by chainage and offset, and point-in-polygon, from the
ORV_MathTool geometry library. Batch calls take and return numpy arrays."""

from ._orvmath import PreparedPolygon, Route, polygon_contains

__all__ = ["Route", "PreparedPolygon", "polygon_contains"]
