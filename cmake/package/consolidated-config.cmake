# What find_package(consolidated) gives: the target consolidated::consolidated, the shared library,
# and consolidated::static. It has no components.

if(consolidated_FIND_COMPONENTS)
  set(consolidated_FOUND FALSE)
  set(consolidated_NOT_FOUND_MESSAGE "There are no components.")
  return()
endif()
include(${CMAKE_CURRENT_LIST_DIR}/consolidated-targets.cmake)
