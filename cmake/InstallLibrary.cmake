# Where the reading library goes. What a program needs that was linked with it is the component
# "libconsolidated1", whose number is that of the interface; what it takes to link one is
# "libconsolidated-dev".

install(
  TARGETS consolidated_shared consolidator_reading
  EXPORT consolidated
  LIBRARY COMPONENT libconsolidated1 NAMELINK_COMPONENT libconsolidated-dev
  ARCHIVE COMPONENT libconsolidated-dev
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/consolidated TYPE INCLUDE COMPONENT libconsolidated-dev)

# For find_package(consolidated) and pkg-config; both find the rest from where they are.
get_target_property(CONSOLIDATED_VERSION consolidated_shared VERSION)
set(folder ${CMAKE_INSTALL_LIBDIR}/cmake/consolidated)
install(EXPORT consolidated NAMESPACE consolidated:: FILE consolidated-targets.cmake
        DESTINATION ${folder} COMPONENT libconsolidated-dev)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/install/consolidated-config-version.cmake
  VERSION ${CONSOLIDATED_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES cmake/package/consolidated-config.cmake
              ${PROJECT_BINARY_DIR}/install/consolidated-config-version.cmake
        DESTINATION ${folder} COMPONENT libconsolidated-dev)
file(RELATIVE_PATH PREFIX_FROM_PKGCONFIG /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/package/consolidated.pc.in ${PROJECT_BINARY_DIR}/install/consolidated.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/install/consolidated.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT libconsolidated-dev)

consolidator_compress(docs/man/consolidated.3 ${PROJECT_BINARY_DIR}/install/consolidated.3)
install(FILES ${PROJECT_BINARY_DIR}/install/consolidated.3.gz
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man3 COMPONENT libconsolidated-dev)
install(DIRECTORY examples/reader
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libconsolidated-dev/examples
        COMPONENT libconsolidated-dev PATTERN build EXCLUDE)
foreach(component IN ITEMS libconsolidated1 libconsolidated-dev)
  install(FILES packaging/libconsolidated.copyright RENAME copyright
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${component} COMPONENT ${component})
endforeach()
