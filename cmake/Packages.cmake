# Debian packages, one for each component of the installation:
#     cmake --workflow --preset packages
# The packages' dependencies are those that the programs were linked with here.
set(CPACK_PACKAGE_NAME qzlinepainttoolfactory)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # would come before each package's own
set(CPACK_PACKAGE_CONTACT "QZLinePaintToolFactory maintainers <maintainers@qzlinepainttoolfactory.invalid>"
    CACHE STRING "Maintainer of the packages")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)

# A component's package, with what it is in a line, and its licence.
function(qz_package component name section summary)
  string(TOUPPER ${component} COMPONENT)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} PARENT_SCOPE)
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  list(JOIN ARGN "\n" description)
  set(CPACK_DEBIAN_${COMPONENT}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
  install(FILES cmake/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
endfunction()

set(about "QZLinePaintToolFactory lays trend lines, channels, Fibonacci levels, waves"
          "and other figures over the stock chart of a Qt 6 application. Its user draws"
          "and edits them with the mouse.")
qz_package(development libqzlinepainttoolfactory-dev libdevel "Drawing tools for stock charts - development files"
           ${about})
set(needed "qt6-base-dev (>= 6.4)" "qt6-tools-dev (>= 6.4)")
if(BUILD_SHARED_LIBS)
  qz_package(library libqzlinepainttoolfactory${PROJECT_VERSION_MAJOR} libs "Drawing tools for stock charts - libraries"
             ${about})
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_RECOMMENDS "fonts-dejavu-core, fonts-wqy-microhei") # arrows, and Chinese captions
  set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
  set(CPACK_COMPONENT_QZCHART_DEPENDS library)
else()
  list(APPEND needed qt6-svg-dev libsqlitecpp-dev libplist++-dev pkg-config)
endif()
list(JOIN needed ", " CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS)
if(QZ_BUILD_APP)
  qz_package(qzchart qzchart misc "Stock chart to draw on"
             "Shows bars from a file as candles with their volume. Trend lines, channels,"
             "Fibonacci levels, waves, regressions and notes over them stay on their dates"
             "and prices from one start to the next.")
endif()
include(CPack)
