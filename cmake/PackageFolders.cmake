# Run by cpack before it packs what is installed: CMake leaves folders with the mode that the umask
# allows.

file(
  CHMOD_RECURSE ${CPACK_TEMPORARY_INSTALL_DIRECTORY}
  DIRECTORY_PERMISSIONS ${CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
