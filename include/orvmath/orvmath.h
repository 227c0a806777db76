// ORV_MathTool: planar and spatial geometry and numerics for road, rail and
// drawing applications. Including this header gives the whole public API:
// the host framework layer (global namespace) and namespace ORVMATH.
#pragma once

#include <orvmath/host/host.h>

#include <orvmath/tolerance.h>
#include <orvmath/angle.h>
#include <orvmath/point2.h>
#include <orvmath/rect.h>
#include <orvmath/point3.h>
#include <orvmath/containers.h>
#include <orvmath/selfcopy.h>
#include <orvmath/intersect.h>
#include <orvmath/pointline.h>
#include <orvmath/line2.h>
#include <orvmath/arc2.h>
#include <orvmath/arcbuild.h>
#include <orvmath/circle2.h>
#include <orvmath/linalg.h>
#include <orvmath/complex.h>
#include <orvmath/roots.h>
#include <orvmath/squarematrix.h>
#include <orvmath/fit.h>
#include <orvmath/interp.h>
#include <orvmath/permutation.h>
#include <orvmath/polygon.h>
#include <orvmath/preparedpolygon.h>
#include <orvmath/polyline2.h>
#include <orvmath/polygon2.h>
#include <orvmath/polygonoffset.h>
#include <orvmath/clip.h>
#include <orvmath/polygonsplit.h>
#include <orvmath/polygonize.h>
#include <orvmath/route2.h>
#include <orvmath/routedesign.h>
#include <orvmath/landxml.h>
#include <orvmath/vector3d.h>
#include <orvmath/matrix4.h>
#include <orvmath/coordsys.h>
#include <orvmath/expression.h>
#include <orvmath/textnum.h>
#include <orvmath/objprop.h>
