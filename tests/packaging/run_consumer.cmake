# Driven by ctest: see tests/packaging/CMakeLists.txt.
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
endfunction()

set(configure_args -S ${CONSUMER_DIR} -B ${WORK_DIR}/build -DCMAKE_BUILD_TYPE=Release)
if(CONSUMER_FLAGS)
  list(APPEND configure_args "-DCMAKE_CXX_FLAGS=${CONSUMER_FLAGS}"
                             "-DCMAKE_EXE_LINKER_FLAGS=${CONSUMER_FLAGS}")
endif()

if(MODE STREQUAL "find_package")
  run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)
  list(APPEND configure_args -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix)
  # The installed tree works where it was installed, not only at the prefix
  # it was configured for: orvroute finds the library beside it, and a build
  # through pkg-config finds the headers and the library.
  file(GLOB_RECURSE pc ${WORK_DIR}/prefix/*/orvmath.pc)
  get_filename_component(pcdir "${pc}" DIRECTORY)
  if(EXISTS ${WORK_DIR}/prefix/bin/orvroute)
    run(${WORK_DIR}/prefix/bin/orvroute table --step 1000)
  endif()
  find_program(PKG_CONFIG pkg-config REQUIRED)
  set(ENV{PKG_CONFIG_PATH} ${pcdir})
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs orvmath OUTPUT_VARIABLE pcflags
                  OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "pkg-config does not know orvmath")
  endif()
  separate_arguments(pcflags UNIX_COMMAND "${pcflags}")
  separate_arguments(extra UNIX_COMMAND "${CONSUMER_FLAGS}")
  run(${CXX} -std=c++17 ${extra} ${CONSUMER_DIR}/../consumer.cpp ${pcflags} -o ${WORK_DIR}/pc_consumer)
  file(GLOB libdirs ${WORK_DIR}/prefix/lib*)
  foreach(d ${libdirs})
    set(ENV{LD_LIBRARY_PATH} ${d}:$ENV{LD_LIBRARY_PATH})
  endforeach()
  run(${WORK_DIR}/pc_consumer)
else()
  list(APPEND configure_args -DORVMATH_SOURCE_DIR=${SOURCE_DIR})
endif()

run(${CMAKE_COMMAND} ${configure_args})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build --parallel 2)
run(${WORK_DIR}/build/consumer)
