# What others build against, as cmake --install puts it in place.
include(CMakePackageConfigHelpers)
set(header_folder ${CMAKE_INSTALL_INCLUDEDIR}/KOVAOrvoPMIExporter)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/KOVAOrvoPMIExporter)

set(package_libraries KOVAOrvoPMIExporter)
set(package_dependencies "")
install(DIRECTORY KOVAOrvoPMI/KOVAOrvoPMIExporter.m/PublicInterfaces/ DESTINATION ${header_folder})
if(KOVA_PLATFORM)
  set(package_dependencies KOVAPlatform)
else()
  list(APPEND package_libraries ${platform_libraries} standin)
  install(DIRECTORY platform/ DESTINATION ${header_folder}
    FILES_MATCHING PATTERN "*.h" PATTERN "internals.h" EXCLUDE)
endif()
if(TARGET qif_reader)
  list(APPEND package_libraries model qif_reader step_reader)
  set(package_dependencies LibXml2 ZLIB)
  install(FILES host/model/Drawing.h host/model/Model.h DESTINATION ${header_folder}/model)
  install(FILES host/readers/qif/QifReader.h DESTINATION ${header_folder}/readers/qif)
  install(FILES host/readers/step/StepReader.h DESTINATION ${header_folder}/readers/step)
  install(FILES models/mounting_bracket.qif
    DESTINATION ${CMAKE_INSTALL_DATADIR}/KOVAOrvoPMIExporter)
  file(RELATIVE_PATH libraries /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(pmi_report PROPERTIES INSTALL_RPATH $ORIGIN/${libraries})
  install(TARGETS pmi_report)
endif()

set_target_properties(${package_libraries} PROPERTIES INSTALL_RPATH $ORIGIN)
install(TARGETS ${package_libraries} EXPORT KOVAOrvoPMIExporterTargets
  INCLUDES DESTINATION ${header_folder})
install(EXPORT KOVAOrvoPMIExporterTargets NAMESPACE KOVAOrvoPMIExporter::
  DESTINATION ${package_folder})
configure_package_config_file(cmake/KOVAOrvoPMIExporterConfig.cmake.in
  ${CMAKE_BINARY_DIR}/KOVAOrvoPMIExporterConfig.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/KOVAOrvoPMIExporterConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_BINARY_DIR}/KOVAOrvoPMIExporterConfig.cmake
  ${CMAKE_BINARY_DIR}/KOVAOrvoPMIExporterConfigVersion.cmake
  DESTINATION ${package_folder})
