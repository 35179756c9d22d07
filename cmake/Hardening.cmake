# What makes a fault in memory end the program instead of serving an attacker. Optimised builds only:
# the sanitizers do more, and _FORTIFY_SOURCE wants optimisation.
include(CheckPIESupported)

check_pie_supported(LANGUAGES CXX) # else CMake compiles for it but does not link for it
# Takes effect where the system's own start files are marked too; those of Debian 12 are not.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    set(CONTROL_FLOW_PROTECTION -fcf-protection=full)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64")
    set(CONTROL_FLOW_PROTECTION -mbranch-protection=standard)
endif()

add_library(hardening INTERFACE)
target_compile_options(
    hardening
    INTERFACE $<$<CONFIG:Release,RelWithDebInfo>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>
              $<$<CONFIG:Release,RelWithDebInfo>:-D_GLIBCXX_ASSERTIONS>
              $<$<CONFIG:Release,RelWithDebInfo>:-fstack-protector-strong;-fstack-clash-protection>
              ${CONTROL_FLOW_PROTECTION})
target_link_options(hardening INTERFACE LINKER:-z,relro,-z,now,-z,noexecstack)
