import math
import numpy as np
import orvmath

# type, x, y, angle, radius, spiral_a, end_radius: a straight, a left-hand arc of radius 100, the end
road = orvmath.Route(np.array([[0, 0, 0, 0, -1, 0, 0], [1, 100, 0, 0, 100, 0, 0],
                               [0, 200, 100, math.pi / 2, -1, 0, 0]]), start_mile=1000.0)
xy, angles = road.point(np.arange(1000.0, 1200.0, 50.0), 3.5)  # every 50 m, 3.5 m to the left
square = np.array([[0, 0], [60, 0], [60, 60], [0, 60]], dtype=float)
print(xy.round(3).tolist(), orvmath.polygon_contains(square, xy).tolist())
