# The tools of the build, made for the machine that builds and not for the one that is built for.
include(ExternalProject)

set(host_tools ${PROJECT_BINARY_DIR}/host-tools)
ExternalProject_Add(host_tools
  SOURCE_DIR ${PROJECT_SOURCE_DIR}/packaging/host-tools
  BINARY_DIR ${host_tools}
  CMAKE_GENERATOR ${CMAKE_GENERATOR}
  CMAKE_ARGS -DCMAKE_BUILD_TYPE=Release
  BUILD_BYPRODUCTS ${host_tools}/make_icons
  BUILD_ALWAYS ON
  INSTALL_COMMAND "")

add_executable(make_icons IMPORTED)
set_target_properties(make_icons PROPERTIES IMPORTED_LOCATION ${host_tools}/make_icons)
add_dependencies(make_icons host_tools)
