# The host framework that VIEWCONNECTOR_HOST names, in place of host/. It comes as the CMake package
# RegisterHost with the target RegisterHost::host; docs/integrator.md shows one for a framework that
# has none.

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Network)
find_package(RegisterHost CONFIG QUIET PATHS ${VIEWCONNECTOR_HOST} NO_DEFAULT_PATH)
if(NOT TARGET RegisterHost::host)
    message(FATAL_ERROR "VIEWCONNECTOR_HOST: there is no CMake package RegisterHost with the target "
                        "RegisterHost::host in ${VIEWCONNECTOR_HOST}. Give the folder where the "
                        "host framework is installed, with a RegisterHostConfig.cmake below it")
endif()
message(STATUS "Host framework: ${RegisterHost_DIR}")
if(NOT TARGET Log4Qt::log4qt) # a host's package usually brings its own
    include(Log4Qt)
endif()
