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
else()
  list(APPEND configure_args -DORVMATH_SOURCE_DIR=${SOURCE_DIR})
endif()

run(${CMAKE_COMMAND} ${configure_args})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build --parallel 2)
run(${WORK_DIR}/build/consumer)
