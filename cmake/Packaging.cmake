# The Debian packages, made by cpack (see scripts/package). What goes into one of them is what is
# installed of the component of its name, and what Debian alone wants.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME consolidator)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PackageFolders.cmake)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # every package has its own

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_COMPONENTS_ALL "")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
file(STRINGS packaging/changelog.Debian newest LIMIT_COUNT 1)
if(NOT newest MATCHES "\\(${PROJECT_VERSION}-([0-9]+)\\)")
  message(FATAL_ERROR "packaging/changelog.Debian does not begin with version ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_1})
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "consolidator maintainers <maintainers@consolidator.invalid>")
set(CPACK_DEBIAN_PACKAGE_SOURCE consolidator)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

consolidator_compress(packaging/changelog.Debian ${PROJECT_BINARY_DIR}/install/changelog.Debian)

# consolidator_add_package(<name> <section> <description>)
#
# The package <name> of the component <name>. The first line of the description is its summary. The
# package needs a file packaging/<name>.lintian-overrides.
macro(consolidator_add_package name section description)
  install(FILES ${PROJECT_BINARY_DIR}/install/changelog.Debian.gz
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${name}-debian EXCLUDE_FROM_ALL)
  install(FILES packaging/${name}.lintian-overrides
          DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${name}
          COMPONENT ${name}-debian EXCLUDE_FROM_ALL)
  string(TOUPPER ${name} key)
  list(APPEND CPACK_COMPONENTS_ALL ${name} ${name}-debian)
  foreach(component IN ITEMS ${key} ${key}-DEBIAN)
    set(CPACK_COMPONENT_${component}_GROUP ${name})
  endforeach()
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${key}_DESCRIPTION ${description})
endmacro()

consolidator_add_package(
  consolidator electronics
  "gathers the debug metadata of an accelerator build into one file
The build of a programmable-logic accelerator leaves its debug metadata in many
files: the hierarchy of its instances, the arguments of its kernels, the bits
that hold a variable, the DWARF of its source. consolidator gathers them into
one file, one build stage at a time, from which a hardware debugger reads them.")

if(CONSOLIDATOR_INSPECT)
  consolidator_add_package(
    consolidator-inspect electronics
    "shows, checks and compares the debug metadata of accelerator builds
A consolidated file holds the debug metadata of a programmable-logic accelerator.
consolidator-inspect shows what is in such a file, to people and as strict JSON,
finds variables and their bits, says whether the file is sound, and what changed
between two files. It adds commands to GDB that answer questions about kernels.")
  set(CPACK_DEBIAN_CONSOLIDATOR-INSPECT_PACKAGE_ENHANCES gdb)
endif()
consolidator_add_package(
  libconsolidated1 libs
  "reads the debug metadata of accelerator builds (library)
A consolidated file holds the debug metadata of a programmable-logic accelerator.
This library gives a program views of what is in such a file, which may be
damaged: kernels, their instances, variables and bits, and the DWARF.")
consolidator_add_package(
  libconsolidated-dev libdevel
  "reads the debug metadata of accelerator builds (development)
A consolidated file holds the debug metadata of a programmable-logic accelerator.
These are the headers for C++17, the static library, a manual page and an example
for programs that read such files, and what CMake and pkg-config need to find
them.")
set(CPACK_DEBIAN_LIBCONSOLIDATED-DEV_PACKAGE_DEPENDS
    "libconsolidated1 (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

include(CPack)
