# What nearly every file of ours includes is parsed once for all targets; that halves the time of a build from nothing.
# Only headers of Qt Gui and the standard library: rooms without widgets stay without. A file still includes what it
# uses: the clang preset and clang-tidy go without this.
file(CONFIGURE OUTPUT precompiled.cpp CONTENT "")
add_library(qz_precompiled OBJECT ${CMAKE_CURRENT_BINARY_DIR}/precompiled.cpp)
target_link_libraries(qz_precompiled PRIVATE Qt6::Gui qz_flags)
set_target_properties(qz_precompiled PROPERTIES AUTOMOC OFF AUTORCC OFF)
target_precompile_headers(qz_precompiled PRIVATE
  <algorithm> <array> <cmath> <cstdint> <functional> <limits> <memory> <optional> <span> <string> <utility> <vector>
  <QColor> <QFile> <QImage> <QPainter> <QString>)

# For targets that link qz_flags and Qt6::Gui: their flags have to be the same.
function(qz_precompile)
  foreach(target ${ARGN})
    target_precompile_headers(${target} REUSE_FROM qz_precompiled)
  endforeach()
endfunction()
