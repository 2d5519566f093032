# Interface target consolidator_coverage: counters for gcov, written beside the object files.

add_library(consolidator_coverage INTERFACE)

if(CONSOLIDATOR_COVERAGE)
  target_compile_options(consolidator_coverage INTERFACE --coverage -O0)
  target_link_options(consolidator_coverage INTERFACE --coverage)
endif()
