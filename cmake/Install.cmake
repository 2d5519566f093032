# Where the tool and all that belongs to it go on an installed system: the folders that Debian's
# policy and the shells name, below the prefix. Modes do not depend on who builds, and those of files
# not on who installs. All of it is the component "consolidator": Packaging.cmake makes a package of it.

# Debian looks for libraries in a folder of the architecture, below every prefix. A folder that was
# given without a type would be taken for one below the current folder if it were set again.
if(CMAKE_LIBRARY_ARCHITECTURE AND NOT DEFINED CMAKE_INSTALL_LIBDIR)
  set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Folder of libraries")
endif()
include(GNUInstallDirs)
# Some packagers give absolute paths. What is installed finds the rest from where it is, so all folders
# are kept as those below the prefix.
foreach(folder IN ITEMS BINDIR LIBDIR INCLUDEDIR DATADIR MANDIR DOCDIR)
  set(folder CMAKE_INSTALL_${folder})
  cmake_path(IS_PREFIX CMAKE_INSTALL_PREFIX "${${folder}}" NORMALIZE below)
  if(below)
    cmake_path(RELATIVE_PATH ${folder} BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")
  elseif(IS_ABSOLUTE "${${folder}}")
    message(FATAL_ERROR "${folder} is not below CMAKE_INSTALL_PREFIX: ${${folder}}")
  endif()
endforeach()
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME consolidator)

install(TARGETS consolidator)

# For find_package(consolidator) in builds that call the tool.
include(CMakePackageConfigHelpers)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/install/consolidator-config-version.cmake
  COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(FILES cmake/package/consolidator-config.cmake
              ${PROJECT_BINARY_DIR}/install/consolidator-config-version.cmake
        DESTINATION ${CMAKE_INSTALL_DATADIR}/cmake/consolidator)

# consolidator_compress(<file> <result>)
#
# Makes <result>.gz from a file of this project, in which "@PROJECT_VERSION@" is replaced. It holds
# neither a name nor a time, so that it is the same in every build.
find_program(GZIP_PROGRAM gzip REQUIRED)
function(consolidator_compress file result)
  set(text ${PROJECT_BINARY_DIR}/install/${file})
  configure_file(${PROJECT_SOURCE_DIR}/${file} ${text} @ONLY)
  cmake_path(GET result PARENT_PATH folder)
  file(MAKE_DIRECTORY ${folder})
  execute_process(COMMAND ${GZIP_PROGRAM} -9nc ${text} OUTPUT_FILE ${result}.gz
                  COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(section IN ITEMS 1 5)
  file(GLOB pages RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS docs/man/*.${section})
  list(FILTER pages EXCLUDE REGEX "/consolidator-inspect\\.")
  foreach(page IN LISTS pages)
    cmake_path(GET page FILENAME name)
    consolidator_compress(${page} ${PROJECT_BINARY_DIR}/install/${name})
    install(FILES ${PROJECT_BINARY_DIR}/install/${name}.gz
            DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section})
  endforeach()
endforeach()

# consolidator_install_completions(<program>)
#
# What the three shells complete its command lines with, as part of the component of its name.
function(consolidator_install_completions program)
  install(FILES completions/${program}.bash RENAME ${program}
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT ${program})
  # Debian's zsh looks for completions of packages elsewhere than for those below /usr/local. Which of
  # the two this is can change until it is installed.
  install(
    CODE "set(folder site-functions)
if(CMAKE_INSTALL_PREFIX STREQUAL \"/usr\")
  set(folder vendor-completions)
endif()
file(INSTALL \"${PROJECT_SOURCE_DIR}/completions/_${program}\" TYPE FILE
     DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/zsh/\${folder}\")"
    COMPONENT ${program})
  install(FILES completions/${program}.fish COMPONENT ${program}
          DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endfunction()
consolidator_install_completions(consolidator)

consolidator_compress(CHANGELOG.md ${PROJECT_BINARY_DIR}/install/changelog)
install(FILES ${PROJECT_BINARY_DIR}/install/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})
set(documents README.md SECURITY.md)
file(GLOB pages RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS docs/*.md)
list(REMOVE_ITEM pages docs/design.md)
list(APPEND documents ${pages})
configure_file(cmake/InstallDocuments.cmake.in ${PROJECT_BINARY_DIR}/install/documents.cmake @ONLY)
install(SCRIPT ${PROJECT_BINARY_DIR}/install/documents.cmake)
install(FILES fuzz/corpus/Container/every-kind-and-every-field
        DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples RENAME every-field.consolidated)
install(
  DIRECTORY examples
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  PATTERN build EXCLUDE
  PATTERN reader EXCLUDE
  PATTERN run
          PERMISSIONS
          OWNER_READ
          OWNER_WRITE
          OWNER_EXECUTE
          GROUP_READ
          GROUP_EXECUTE
          WORLD_READ
          WORLD_EXECUTE)
install(DIRECTORY share/ DESTINATION ${CMAKE_INSTALL_DATADIR}/consolidator
        PATTERN annotate EXCLUDE PATTERN gdb EXCLUDE PATTERN schemas EXCLUDE)
install(PROGRAMS share/annotate DESTINATION ${CMAKE_INSTALL_DATADIR}/consolidator)

# An executable that holds Expat comes with its licence.
set(EXPAT_NOTICE "")
set(expatCopyright /usr/share/doc/libexpat1-dev/copyright)
if(CONSOLIDATOR_STATIC_EXPAT AND EXISTS ${expatCopyright})
  file(READ ${expatCopyright} terms)
  set(EXPAT_NOTICE "\nIt holds Expat, too, whose terms follow.\n\n${terms}")
endif()
configure_file(packaging/copyright.in ${PROJECT_BINARY_DIR}/install/copyright @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/install/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
