# Where the inspector goes: the component "consolidator-inspect".

install(TARGETS consolidator-inspect COMPONENT consolidator-inspect)
install(DIRECTORY share/schemas DESTINATION ${CMAKE_INSTALL_DATADIR}/consolidator
        COMPONENT consolidator-inspect)
consolidator_install_completions(consolidator-inspect)

# GDB's own folders, where it imports what adds commands whenever it starts.
install(DIRECTORY share/gdb DESTINATION ${CMAKE_INSTALL_DATADIR} COMPONENT consolidator-inspect
        PATTERN __pycache__ EXCLUDE)

consolidator_compress(docs/man/consolidator-inspect.1
                      ${PROJECT_BINARY_DIR}/install/consolidator-inspect.1)
install(FILES ${PROJECT_BINARY_DIR}/install/consolidator-inspect.1.gz
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT consolidator-inspect)

# It holds the libraries that it is made with, whose terms ask for being passed on.
set(INSPECTOR_NOTICES "")
foreach(package IN ITEMS libcli11-dev rapidjson-dev libfmt-dev)
  set(terms /usr/share/doc/${package}/copyright)
  if(EXISTS ${terms})
    file(READ ${terms} text)
    string(APPEND INSPECTOR_NOTICES "\nTerms of ${package}:\n\n${text}")
  endif()
endforeach()
configure_file(packaging/consolidator-inspect.copyright.in
               ${PROJECT_BINARY_DIR}/install/consolidator-inspect.copyright @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/install/consolidator-inspect.copyright RENAME copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/consolidator-inspect
        COMPONENT consolidator-inspect)
