# The Debian package, made by cpack (see scripts/package). What goes into it is what is installed,
# and what Debian alone wants.

set(debianFiles ${PROJECT_BINARY_DIR}/install/debian)
consolidator_compress(packaging/changelog.Debian
                      ${debianFiles}/usr/share/doc/consolidator/changelog.Debian)
configure_file(packaging/lintian-overrides
               ${debianFiles}/usr/share/lintian/overrides/consolidator COPYONLY)
set(CPACK_INSTALLED_DIRECTORIES ${debianFiles} /)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME consolidator)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
file(STRINGS packaging/changelog.Debian newest LIMIT_COUNT 1)
if(NOT newest MATCHES "\\(${PROJECT_VERSION}-([0-9]+)\\)")
  message(FATAL_ERROR "packaging/changelog.Debian does not begin with version ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_1})
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "consolidator maintainers <maintainers@consolidator.invalid>")
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "gathers the debug metadata of an accelerator build into one file")
set(CPACK_PACKAGE_DESCRIPTION
    "The build of a programmable-logic accelerator leaves its debug metadata in many
files: the hierarchy of its instances, the arguments of its kernels, the bits
that hold a variable, the DWARF of its source. consolidator gathers them into
one file, one build stage at a time, from which a hardware debugger reads them.")

include(CPack)
