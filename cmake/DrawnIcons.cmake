# varlo_drawn_icons(target folder): adds the SVG drawings of `folder` to `target` as pictures, each in black and in white
# ink (IconDrawingRaster.cpp makes every other ink of the two).
function(varlo_drawn_icons target folder)
  set(out ${CMAKE_CURRENT_BINARY_DIR}/drawn)
  file(GLOB drawings CONFIGURE_DEPENDS ${folder}/*.svg)
  set(entries "")
  set(pictures "")
  foreach(drawing IN LISTS drawings)
    get_filename_component(name ${drawing} NAME_WE)
    set(size 96) # four times the usual
    if(name STREQUAL "varlo-pro")
      set(size 256)
    endif()
    file(READ ${drawing} svg)
    foreach(ink black white)
      string(REPLACE "#1c1c1c" ${ink} inked "${svg}")
      file(CONFIGURE OUTPUT ${out}/${name}-${ink}.svg CONTENT "${inked}" @ONLY)
      set(picture ${out}/${name}-${ink}/${size}.png)
      add_custom_command(
        OUTPUT ${picture}
        COMMAND make_icons ${out}/${name}-${ink}.svg ${out}/${name}-${ink} ${size}
        DEPENDS ${out}/${name}-${ink}.svg host_tools
        COMMENT "Drawing ${name}"
        VERBATIM)
      list(APPEND pictures ${picture})
      string(APPEND entries "    <file alias=\"${name}-${ink}.png\">${name}-${ink}/${size}.png</file>\n")
    endforeach()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${drawing})
  endforeach()
  file(CONFIGURE OUTPUT ${out}/icons.qrc @ONLY
    CONTENT "<RCC>\n  <qresource prefix=\"/icons\">\n${entries}  </qresource>\n</RCC>\n")
  add_custom_command(
    OUTPUT ${out}/qrc_icons.cpp
    COMMAND Qt6::rcc --name icons --output ${out}/qrc_icons.cpp ${out}/icons.qrc
    DEPENDS ${pictures} ${out}/icons.qrc
    COMMENT "Packing the icons"
    VERBATIM)
  set_source_files_properties(${out}/qrc_icons.cpp PROPERTIES SKIP_AUTOGEN ON SKIP_PRECOMPILE_HEADERS ON)
  target_sources(${target} PRIVATE ${out}/qrc_icons.cpp)
endfunction()
