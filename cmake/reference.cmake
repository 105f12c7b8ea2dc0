# The API reference: the exported classes, the queries and the model reader.
find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
  configure_file(cmake/Doxyfile.in ${CMAKE_BINARY_DIR}/Doxyfile @ONLY)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/reference)
  add_custom_target(reference COMMAND Doxygen::doxygen ${CMAKE_BINARY_DIR}/Doxyfile
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)
endif()
