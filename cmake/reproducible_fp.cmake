# Floating-point reproducibility of the library's own code, and the checks
# that refuse a configuration which cannot give it.
include(CheckCXXSourceCompiles)

# Adds the flags to the INTERFACE target `flags`, which our targets link
# privately. Stops with a message on a compiler or flag set that would let
# results depend on the machine.
function(orvmath_reproducible_fp flags)
  set(all_flags "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${CMAKE_BUILD_TYPE}}")
  foreach(bad -ffast-math -Ofast -ffp-contract=fast -funsafe-math-optimizations -mfpmath=387)
    string(FIND "${all_flags}" "${bad}" at)
    if(NOT at EQUAL -1)
      message(FATAL_ERROR "ORV_MathTool: '${bad}' in the compiler flags would make results depend on the "
                          "machine; remove it (the library guarantees the same doubles on every platform).")
    endif()
  endforeach()

  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${flags} INTERFACE -ffp-contract=off)
    # 32-bit x86: keep doubles in SSE2 registers (the x87 would round twice).
    check_cxx_source_compiles("
      #if !(defined(__i386__) || defined(_M_IX86))
      #error not 32-bit x86
      #endif
      int main() { return 0; }" ORVMATH_TARGET_IS_X86_32)
    if(ORVMATH_TARGET_IS_X86_32)
      target_compile_options(${flags} INTERFACE -msse2 -mfpmath=sse)
    endif()
  elseif(MSVC)
    # /fp:precise never contracts unless /fp:contract is given; x64 and the
    # SSE2 default of x86 keep doubles at double precision.
    target_compile_options(${flags} INTERFACE /fp:precise)
  else()
    message(FATAL_ERROR "ORV_MathTool: compiler '${CMAKE_CXX_COMPILER_ID}' is not supported: the build must be able "
                        "to turn off fused multiply-adds and x87 arithmetic (GCC, Clang and MSVC can).")
  endif()
endfunction()

# Links libatomic to `target` (publicly: the inline epsilon getters use
# std::atomic<double> in the consumers' code too) when 64-bit atomics do not
# link without it.
function(orvmath_link_atomic_if_needed target)
  set(probe "
    #include <atomic>
    std::atomic<double> d{1.0};
    int main() { d.store(d.load(std::memory_order_relaxed) + 1.0, std::memory_order_relaxed); return 0; }")
  check_cxx_source_compiles("${probe}" ORVMATH_ATOMIC_WITHOUT_LIB)
  if(NOT ORVMATH_ATOMIC_WITHOUT_LIB)
    set(CMAKE_REQUIRED_LIBRARIES atomic)
    check_cxx_source_compiles("${probe}" ORVMATH_ATOMIC_WITH_LIB)
    unset(CMAKE_REQUIRED_LIBRARIES)
    if(NOT ORVMATH_ATOMIC_WITH_LIB)
      message(FATAL_ERROR "ORV_MathTool: std::atomic<double> links neither with nor without libatomic")
    endif()
    target_link_libraries(${target} PUBLIC atomic)
  endif()
endfunction()
