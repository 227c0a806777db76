"""Routes addressed by chainage and offset, point-in-polygon and polygon
offsets, from the ORV_MathTool geometry library. Batch calls take and return
numpy arrays."""

from ._orvmath import PreparedPolygon, Route, polygon_contains, polygon_offset, polyline_buffer

__all__ = ["Route", "PreparedPolygon", "polygon_contains", "polygon_offset", "polyline_buffer"]
