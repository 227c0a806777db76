// The host framework layer: integer types, exceptions, integer geometry,
// run-time classes, files, the archive, the growable array, the string and
// the automation variants.
#pragma once

#include <orvmath/host/types.h>
#include <orvmath/host/exceptions.h>
#include <orvmath/host/geometry.h>
#include <orvmath/host/object.h>
#include <orvmath/host/file.h>
#include <orvmath/host/archive.h>
#include <orvmath/host/array.h>
#include <orvmath/host/cstring.h>
#include <orvmath/host/variant.h>
