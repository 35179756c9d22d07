# What makes a fault in memory end the program instead of serving an attacker. Optimised builds only:
# the sanitizers do more, and _FORTIFY_SOURCE wants optimisation.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

check_pie_supported(LANGUAGES CXX) # else CMake compiles for it but does not link for it
# Takes effect where the system's own start files are marked too; those of Debian 12 are not.
check_cxx_compiler_flag(-fcf-protection=full HAS_CONTROL_FLOW_PROTECTION) # x86
check_cxx_compiler_flag(-mbranch-protection=standard HAS_BRANCH_PROTECTION) # ARM

add_library(hardening INTERFACE)
target_compile_options(
    hardening
    INTERFACE $<$<CONFIG:Release,RelWithDebInfo>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>
              $<$<CONFIG:Release,RelWithDebInfo>:-D_GLIBCXX_ASSERTIONS>
              $<$<CONFIG:Release,RelWithDebInfo>:-fstack-protector-strong;-fstack-clash-protection>
              $<$<BOOL:${HAS_CONTROL_FLOW_PROTECTION}>:-fcf-protection=full>
              $<$<BOOL:${HAS_BRANCH_PROTECTION}>:-mbranch-protection=standard>)
target_link_options(hardening INTERFACE LINKER:-z,relro,-z,now,-z,noexecstack)
