# What every target of ours is compiled with; others' headers are not judged by it.

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(project_options INTERFACE)
target_link_libraries(project_options INTERFACE hardening)
target_compile_options(project_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2)
if(VIEWCONNECTOR_WERROR)
    target_compile_options(project_options INTERFACE -Werror)
endif()
target_compile_definitions(
    project_options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_FOREACH
                              QT_DISABLE_DEPRECATED_BEFORE=0x060400)
