# Where things are installed.

include(GNUInstallDirs)
set(VIEWCONNECTOR_LIBDIR ${CMAKE_INSTALL_LIBDIR}/viewconnector) # bin/ and plugins/ as in the build
set(REGISTERHOST_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/RegisterHost)

# The loader knows the folders of the system; elsewhere a program must say where its libraries are.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../..")
endif()
