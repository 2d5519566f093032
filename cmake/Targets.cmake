# How this project's targets are made: sources are found, never listed, and every target is built
# with the same warnings, hardening and instruments.

add_library(consolidator_build_settings INTERFACE)
target_link_libraries(
  consolidator_build_settings INTERFACE consolidator_warnings consolidator_hardening
                                        consolidator_sanitizers consolidator_coverage)
# What a program does not use can be left out of it.
target_compile_options(consolidator_build_settings INTERFACE -ffunction-sections -fdata-sections)

# consolidator_build_for_programs(<library>)
#
# This project's static libraries end up in programs only: -fPIE lets the optimiser inline what
# -fPIC must leave replaceable by another shared object. A project around this one may make shared
# objects of them.
function(consolidator_build_for_programs library)
  if(PROJECT_IS_TOP_LEVEL)
    set_target_properties(${library} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_compile_options(${library} PRIVATE ${CMAKE_CXX_COMPILE_OPTIONS_PIE})
  endif()
endfunction()

# consolidator_add_library(<name> <folder> [<library>...])
#
# Static library <name> from all sources of <folder>, main.cpp excepted, linked with the libraries
# that follow. Its headers are included as "<folder>/Header.h". A folder without sources (headers
# only) gives an interface library.
function(consolidator_add_library name folder)
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  set(scope INTERFACE)
  if(sources)
    set(scope PUBLIC)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PRIVATE consolidator_build_settings)
    consolidator_build_for_programs(${name})
    # A unit of one source is left as it is: clang-tidy looks for its settings beside the source.
    list(LENGTH sources count)
    if(count EQUAL 1)
      set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
    endif()
  else()
    add_library(${name} INTERFACE)
  endif()
  target_compile_features(${name} ${scope} cxx_std_20)
  target_include_directories(${name} ${scope} ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} ${scope} ${ARGN})
endfunction()

# consolidator_add_program(<name> SOURCES <file>... [LIBRARIES <library>...])
function(consolidator_add_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} consolidator_build_settings)
endfunction()
