# What a host may include, and all that is installed. What one of these includes is one of these: the build of
# public_headers fails with "No such file" on one that is missing here.
set(qz_public_headers
    model/QZDrawingTypes.h
    model/QZHostRecords.h
    model/QZPaintChart.h
    model/QZPaintDefaults.h
    model/QZPaintGraph.h
    model/QZPaintGraphOwner.h
    model/QZPaintLogicAxis.h
    model/QZPaintNotifications.h
    model/QZPaintOptions.h
    model/QZPlaneGeometry.h
    panels/QZColorPicker.h
    panels/QZInterfaceLoader.h
    panels/QZPaintControl.h
    panels/QZPaintControlButton.h
    panels/QZPaintControlProfiles.h
    panels/QZPaintControlWCDelegate.h
    panels/QZPaintGraphConfigColorWell.h
    panels/QZPaintGraphConfigTitleView.h
    panels/QZPaintGraphConfigWC.h
    panels/QZPaintGraphConfigWCDelegate.h
    panels/QZPaintTextConfigWC.h
    panels/QZPaintTextConfigWCDelegate.h
    panels/QZPaintTextConfigWindow.h
    panels/QZPaintTextField.h
    panels/QZPanelWindow.h
    panels/QZPopUpButton.h
    platform/QZAlert.h
    platform/QZCursor.h
    platform/QZDevicePixels.h
    platform/QZFont.h
    platform/QZFrameComFun.h
    platform/QZGeometry.h
    platform/QZGetFixData.h
    platform/QZGlobalEnv.h
    platform/QZGraphicsContext.h
    platform/QZHostNotifications.h
    platform/QZLineClip.h
    platform/QZLineDash.h
    platform/QZLineStroker.h
    platform/QZLog.h
    platform/QZNotificationCenter.h
    platform/QZPainterContext.h
    platform/QZPaletteLoad.h
    surface/QZGraphSet.h
    surface/QZPaintActiveManager.h
    surface/QZPaintLayer.h
    surface/QZPaintLayerHost.h
    surface/QZPaintManagerView.h
    surface/QZPaintSplitView.h
    surface/QZPaintStripHost.h
    tools/QZPaintFans.h
    tools/QZPaintLevels.h
    tools/QZPaintMarks.h
    tools/QZPaintMeasuring.h
    tools/QZPaintParallelChannels.h
    tools/QZPaintRangeStatistics.h
    tools/QZPaintRegression.h
    tools/QZPaintShapes.h
    tools/QZPaintStraightLines.h
    tools/QZPaintTimeCycles.h
    tools/QZPaintToolTable.h
    tools/QZPaintWaveRules.h
    tools/QZPaintWaves.h)

# Compiles each public header alone, against nothing but the public headers and Qt.
function(qz_check_public_headers target)
  set(staged ${CMAKE_CURRENT_BINARY_DIR}/${target})
  foreach(header IN LISTS qz_public_headers)
    configure_file(${PROJECT_SOURCE_DIR}/src/${header} ${staged}/include/${header} COPYONLY)
    file(CONFIGURE OUTPUT ${staged}/${header}.cpp CONTENT "#include \"${header}\"\n")
    list(APPEND sources ${staged}/${header}.cpp)
  endforeach()
  add_library(${target} OBJECT ${sources})
  target_include_directories(${target} PRIVATE ${staged}/include)
  target_link_libraries(${target} PRIVATE Qt6::Widgets Qt6::UiTools qz_flags)
  set_target_properties(${target} PROPERTIES AUTOMOC OFF AUTORCC OFF)
endfunction()
