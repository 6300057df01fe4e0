# Flags of our own code and the two kinds of target that the rooms are made of.

if(VARLO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()
if(VARLO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

add_library(varlo_flags INTERFACE)
target_include_directories(varlo_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)
# QT_NO_CAST_TO_ASCII: which encoding a text gets when it becomes bytes is said by name.
target_compile_definitions(varlo_flags INTERFACE QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS
  QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(MSVC)
  target_compile_options(varlo_flags INTERFACE /W4 /utf-8 $<$<BOOL:${VARLO_WERROR}>:/WX>)
else()
  target_compile_options(varlo_flags INTERFACE -Wall -Wextra -Wconversion -Wshadow $<$<BOOL:${VARLO_WERROR}>:-Werror>)
endif()

if(MINGW)
  # One file that runs anywhere, without what only a debugger reads.
  add_link_options(-static $<$<CONFIG:Release>:-s>)
  # Every handle is a pointer there.
  target_compile_definitions(varlo_flags INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN UNICODE)
endif()

# varlo_logic(name DEPENDS ... SOURCES ...): a room without windows. Links Qt6::Core only, so that a window cannot
# creep in; more has to be asked for by name.
function(varlo_logic name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC varlo_flags Qt6::Core ${arg_DEPENDS})
  target_precompile_headers(${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/LogicPch.h)
endfunction()

# varlo_windows(name DEPENDS ... SOURCES ...): the windows of a room.
function(varlo_windows name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC varlo_flags Qt6::Core Qt6::Gui Qt6::Widgets ${arg_DEPENDS})
  target_precompile_headers(${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/WindowsPch.h)
endfunction()

# varlo_windows_resources(name): gives a program what Windows reads of it beside its code: manifest, icon, version.
# Nothing elsewhere.
function(varlo_windows_resources name)
  if(WIN32)
    target_sources(${name} PRIVATE ${PROJECT_BINARY_DIR}/packaging/windows/varlo-pro.rc)
    add_dependencies(${name} windows_icon)
  endif()
endfunction()
