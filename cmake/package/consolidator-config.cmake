# Lets a build with CMake call consolidator, one stage after the other:
#   find_package(consolidator REQUIRED)
# finds the executable as CONSOLIDATOR_EXECUTABLE, which may also be set before, to an absolute path
# or a target, and gives the two functions below. The same holds for consolidator-inspect and
# CONSOLIDATOR_INSPECT_EXECUTABLE, which may be absent.
#
# Where there is an inspector, the tool runs by way of "consolidator-inspect run": the build stops at an
# input that is missing or broken, with the file, the line and the reason, where something would be
# lost, and where the file would not hold what it must. Without it, the tool's own status is all there
# is, which is 0 even then.
#
# A stage works on a copy of what the stage before left, under a name that nothing depends on, and gives
# it its own name in the end. Whatever cuts a stage off, all files with their own names are whole, and
# the next build starts from them.

cmake_policy(VERSION 3.20)

# Below the prefix of this file, or on the path.
find_program(CONSOLIDATOR_EXECUTABLE consolidator HINTS ${CMAKE_CURRENT_LIST_DIR}/../../../bin)
if(NOT CONSOLIDATOR_EXECUTABLE)
  set(consolidator_FOUND FALSE)
  set(consolidator_NOT_FOUND_MESSAGE "There is no executable; set CONSOLIDATOR_EXECUTABLE.")
  return()
endif()

find_program(CONSOLIDATOR_INSPECT_EXECUTABLE consolidator-inspect
             HINTS ${CMAKE_CURRENT_LIST_DIR}/../../../bin)
if(NOT CONSOLIDATOR_INSPECT_EXECUTABLE AND NOT consolidator_FIND_QUIETLY)
  message(STATUS "consolidator-inspect not found: builds go on after missing and broken inputs")
endif()

# Sets a variable to the command that options of the tool follow, and "program" to what it starts.
function(consolidator_set_command variable allowed)
  set(command ${CONSOLIDATOR_EXECUTABLE})
  set(program ${CONSOLIDATOR_EXECUTABLE})
  if(CONSOLIDATOR_INSPECT_EXECUTABLE)
    list(JOIN allowed , codes)
    set(command ${CONSOLIDATOR_INSPECT_EXECUTABLE} run --quiet)
    set(program ${CONSOLIDATOR_INSPECT_EXECUTABLE})
    if(codes)
      list(APPEND command --allow ${codes})
    endif()
    list(APPEND command --)
  endif()
  set(${variable} ${command} PARENT_SCOPE)
  set(program ${program} PARENT_SCOPE)
endfunction()

# consolidator_add_stage(<file> [AFTER <file>] [PROJECT <name>] [DWARF <file>]
#                        [HIERARCHY <file>...] [KERNEL <file>...] [HLS <file>...] [AUX <file>...]
#                        [LL <file>...] [RAM <file>...] [REQUIRE <what>...] [ALLOW <code>...])
#
# A rule that makes a consolidated file of the inputs, of which there must be one, added to those of
# the stage that left the file AFTER. REQUIRE names what the file must hold in the end, as the option
# --require of "consolidator-inspect verify" does; with PROJECT, the project is among it, and kernels
# are in any case. ALLOW names what does not stop the build, as the option --allow of
# "consolidator-inspect run" does. The consolidated files are in the current binary folder, inputs with
# a relative path in the current source folder.
function(consolidator_add_stage file)
  set(kinds DWARF HIERARCHY KERNEL HLS AUX LL RAM)
  set(switches -d -h -k -s -x -l -r)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "AFTER;PROJECT;DWARF" "HIERARCHY;KERNEL;HLS;AUX;LL;RAM;REQUIRE;ALLOW")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "unknown arguments for ${file}: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(arg_KEYWORDS_MISSING_VALUES)
    message(FATAL_ERROR "no values for ${file}: ${arg_KEYWORDS_MISSING_VALUES}")
  endif()
  set(options "")
  set(inputs "")
  foreach(kind switch IN ZIP_LISTS kinds switches)
    foreach(input IN LISTS arg_${kind})
      cmake_path(ABSOLUTE_PATH input BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
      list(APPEND options ${switch} ${input})
      list(APPEND inputs ${input})
    endforeach()
  endforeach()
  if(NOT inputs)
    message(FATAL_ERROR "no inputs for ${file}")
  endif()
  if(arg_PROJECT)
    list(APPEND options -p ${arg_PROJECT})
    list(APPEND arg_REQUIRE project=${arg_PROJECT})
  endif()
  set(part ${file}.part)
  set(start COMMAND ${CMAKE_COMMAND} -E rm -f ${part})
  if(arg_AFTER)
    set(start COMMAND ${CMAKE_COMMAND} -E copy ${arg_AFTER} ${part})
  endif()
  set(check "")
  list(APPEND arg_REQUIRE kernels)
  consolidator_set_command(run "${arg_ALLOW}")
  if(CONSOLIDATOR_INSPECT_EXECUTABLE)
    list(JOIN arg_REQUIRE , required)
    set(check COMMAND ${CONSOLIDATOR_INSPECT_EXECUTABLE} verify --require ${required} ${part})
  endif()
  add_custom_command(
    OUTPUT ${file}
    ${start}
    COMMAND ${run} -f ${part} ${options}
    ${check}
    COMMAND ${CMAKE_COMMAND} -E rename ${part} ${file}
    DEPENDS ${program} ${arg_AFTER} ${inputs}
    VERBATIM)
endfunction()

# consolidator_add_dump(<file> <json|dwarf> <consolidated file>)
#
# A rule that dumps a section.
function(consolidator_add_dump file section from)
  if(ARGC GREATER 3)
    message(FATAL_ERROR "unknown arguments for ${file}: ${ARGN}")
  endif()
  if(NOT section MATCHES "^(json|dwarf)$")
    message(FATAL_ERROR "unknown section for ${file}: ${section}")
  endif()
  consolidator_set_command(run "")
  add_custom_command(
    OUTPUT ${file}
    COMMAND ${run} -f ${from} --dump-${section} ${file}.part
    COMMAND ${CMAKE_COMMAND} -E rename ${file}.part ${file}
    DEPENDS ${program} ${from}
    VERBATIM)
endfunction()
