# Everything that is installed rather than written here. The README says what each is for.

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Network)
find_package(CURL 7.87 REQUIRED)
find_package(OpenSSL 3.0 REQUIRED COMPONENTS Crypto)
find_package(tomlplusplus 3.3 REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(microhttpd REQUIRED IMPORTED_TARGET libmicrohttpd>=0.9.75)
pkg_check_modules(qrencode REQUIRED IMPORTED_TARGET libqrencode>=4)

include(Log4Qt)

if(VIEWCONNECTOR_TESTS)
    find_package(OpenSSL 3.0 REQUIRED COMPONENTS SSL)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
    find_package(GTest)
    find_program(NODE node)
    if(NOT GTest_FOUND OR NOT NODE) # ./run needs none
        message(STATUS "GoogleTest or Node.js: not installed, the tests are left out")
        set(VIEWCONNECTOR_TESTS OFF)
    endif()
endif()
