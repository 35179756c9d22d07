# The installed Log4Qt, or log4qt/ in its place.

find_package(Log4Qt CONFIG QUIET)
if(Log4Qt_FOUND)
    message(STATUS "Log4Qt: installed version ${Log4Qt_VERSION}")
else()
    message(STATUS "Log4Qt: not installed, building log4qt/ in its place")
    add_subdirectory(${PROJECT_SOURCE_DIR}/log4qt ${PROJECT_BINARY_DIR}/log4qt)
endif()
