# The README's quick start shows examples/quickstart.cpp and examples/quickstart.py
# word for word (the tests build and run those files).
file(READ ${ROOT}/README.md readme)
foreach(example quickstart.cpp quickstart.py)
  file(READ ${ROOT}/examples/${example} code)
  string(FIND "${readme}" "${code}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "README.md does not show examples/${example} as it stands")
  endif()
endforeach()
