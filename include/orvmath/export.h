// Symbol export for the ORV_MathTool shared library.
#pragma once

#if defined(_WIN32)
#  if defined(ORVMATH_BUILDING)
#    define ORVMATH_API __declspec(dllexport)
#  else
#    define ORVMATH_API __declspec(dllimport)
#  endif
#else
#  define ORVMATH_API __attribute__((visibility("default")))
#endif
