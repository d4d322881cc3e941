# `cmake --install` gives a host a package: find_package(QZLinePaintToolFactory). Its headers lie in one folder of the
# library's name, which the package puts on the host's include path. The resources are within the libraries.
include(CMakePackageConfigHelpers)

set(qz_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QZLinePaintToolFactory)
configure_package_config_file(cmake/QZLinePaintToolFactoryConfig.cmake.in QZLinePaintToolFactoryConfig.cmake
                              INSTALL_DESTINATION ${qz_package_dir})
write_basic_package_version_file(QZLinePaintToolFactoryConfigVersion.cmake COMPATIBILITY SameMajorVersion)

install(TARGETS qz_platform qz_model qz_tools qz_panels QZLinePaintToolFactory EXPORT QZLinePaintToolFactoryTargets
        LIBRARY COMPONENT library NAMELINK_COMPONENT development
        ARCHIVE COMPONENT development)
install(EXPORT QZLinePaintToolFactoryTargets NAMESPACE QZLinePaintToolFactory:: DESTINATION ${qz_package_dir}
        COMPONENT development)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/QZLinePaintToolFactoryConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/QZLinePaintToolFactoryConfigVersion.cmake
        DESTINATION ${qz_package_dir} COMPONENT development)
foreach(header IN LISTS qz_public_headers)
  cmake_path(GET header PARENT_PATH room)
  install(FILES src/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/QZLinePaintToolFactory/${room}
          COMPONENT development)
endforeach()
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
