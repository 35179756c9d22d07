# Four Debian packages: the plug-in, the reference host's library, what is needed to build for it, and
# the programs. `scripts/package` makes them.

#   describe_package(COMPONENT NAME SECTION SUMMARY DESCRIPTION)
macro(describe_package COMPONENT NAME SECTION SUMMARY DESCRIPTION)
    string(TOUPPER ${COMPONENT} KEY)
    set(CPACK_DEBIAN_${KEY}_PACKAGE_NAME ${NAME})
    set(CPACK_DEBIAN_${KEY}_PACKAGE_SECTION ${SECTION})
    set(CPACK_DEBIAN_${KEY}_DESCRIPTION "${SUMMARY}\n${DESCRIPTION}")
    list(APPEND CPACK_COMPONENTS_ALL ${COMPONENT})

    install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${NAME} COMPONENT ${COMPONENT})
endmacro()

configure_file(changelog changelog)
execute_process(COMMAND gzip -9nf changelog WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
                COMMAND_ERROR_IS_FATAL ANY)

set(LIBRARY libregisterhost${PROJECT_VERSION_MAJOR})
describe_package(plugin viewconnector-plugin misc "customer-display plug-in for cash registers"
    "Posts what a cash register does to a customer-facing display, as JSON,\n\
without letting the register wait for the network.")
describe_package(host ${LIBRARY} libs "reference host framework for cash-register plug-ins"
    "The library that plug-ins of a cash register import: settings, documents,\n\
events, pictures, an HTTP server and a REST client.")
describe_package(host-dev libregisterhost-dev libdevel
    "reference host framework for cash-register plug-ins (development files)"
    "Headers and a CMake package to build plug-ins and register programs with.")
describe_package(tools viewconnector-tools utils
    "sample cash register, customer display and diagnosis for ViewConnector"
    "A register that loads the plug-in and runs commands, a display that shows\n\
and judges what it receives, an advertising service, the sample shop that\n\
they play, a doctor for dark displays, and a recorder.")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME viewconnector)
set(CPACK_PACKAGE_CONTACT "ViewConnector developers <developers@viewconnector.invalid>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(SAME_VERSION "(= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_HOST_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/host/triggers)
install(FILES host/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
        RENAME ${LIBRARY} COMPONENT host)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_DEPENDS "${LIBRARY} ${SAME_VERSION}")
set(CPACK_DEBIAN_HOST-DEV_PACKAGE_DEPENDS "${LIBRARY} ${SAME_VERSION}, qt6-base-dev")
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS
    "${LIBRARY} ${SAME_VERSION}, viewconnector-plugin ${SAME_VERSION}")
set(CPACK_DEBIAN_TOOLS_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/tools/conffiles)

include(CPack)
