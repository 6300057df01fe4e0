# Copies the terms of everything that the program is linked with, as Debian names them, to ${TO}.
# cmake -DTO=folder -DSOURCE=folder -P licences.cmake
file(MAKE_DIRECTORY ${TO})
configure_file(${SOURCE}/LICENSE "${TO}/Varlo Pro.txt" COPYONLY)
set(documents /usr/share/doc)
configure_file(${documents}/libqt6core6/copyright "${TO}/Qt.txt" COPYONLY)
configure_file(${documents}/mingw-w64-x86-64-dev/copyright "${TO}/MinGW-w64.txt" COPYONLY)
configure_file(${documents}/gcc-mingw-w64-base/copyright "${TO}/GCC.txt" COPYONLY)
foreach(name LGPL-3 LGPL-2.1 GPL-3 GPL-2 Apache-2.0)
  configure_file(/usr/share/common-licenses/${name} "${TO}/${name}.txt" COPYONLY)
endforeach()
