# What find_package(consolidated) gives: the target consolidated::consolidated, the shared library,
# and consolidated::static.

include(${CMAKE_CURRENT_LIST_DIR}/consolidated-targets.cmake)
