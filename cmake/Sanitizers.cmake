# Interface target consolidator_sanitizers: instruments for CONSOLIDATOR_SANITIZERS, and for coverage
# feedback when libFuzzer drives the code. The first finding ends the program.

add_library(consolidator_sanitizers INTERFACE)

if(CONSOLIDATOR_SANITIZERS)
  set(flags -fsanitize=${CONSOLIDATOR_SANITIZERS} -fno-sanitize-recover=all)
  if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
    list(APPEND flags -fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitizer-ignorelist.txt)
  endif()
  target_compile_options(consolidator_sanitizers INTERFACE ${flags} -fno-omit-frame-pointer)
  target_link_options(consolidator_sanitizers INTERFACE ${flags})
endif()

if(CONSOLIDATOR_LIBFUZZER)
  target_compile_options(consolidator_sanitizers INTERFACE -fsanitize=fuzzer-no-link)
endif()
