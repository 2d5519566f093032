# Run by cpack before it packs what is installed: CMake leaves folders with the mode that the umask
# allows.

file(GLOB_RECURSE paths LIST_DIRECTORIES true ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*)
foreach(path IN LISTS paths)
  if(IS_DIRECTORY ${path})
    file(CHMOD ${path} DIRECTORY_PERMISSIONS ${CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
  endif()
endforeach()
