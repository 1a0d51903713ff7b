# The target `reference`: pages of the installed headers, in the build folder. Doxygen is needed for it alone, so that
# nobody who only builds has to have it.
configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY)
add_custom_target(reference
  COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/reference
  COMMAND doxygen ${PROJECT_BINARY_DIR}/Doxyfile
  COMMENT "Reference pages: ${PROJECT_BINARY_DIR}/reference/html/index.html"
  VERBATIM)
