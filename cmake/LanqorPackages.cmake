# Debian packages by "cpack -G DEB", one for each component of the installation.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lanqorengine)
set(CPACK_PACKAGE_VENDOR "LanqorEngine authors")
set(CPACK_PACKAGE_CONTACT "LanqorEngine authors <lanqorengine@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "luminescence of lanthanide coordination compounds")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL library development program data documentation)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/engine)

set(what "LanqorEngine computes intensity parameters, energy transfer rates,
quantum yields, 4f levels and Stark levels of lanthanide complexes from
outputs of quantum chemistry and measured spectra.")
set(same_version "(= ${PROJECT_VERSION})")

# lanqor_package(COMPONENT NAME SECTION ARCHITECTURE CONTENT [DEPENDS])
# Every package has its licence and its changelog, as Debian wants them.
function(lanqor_package component name section architecture content)
    string(TOUPPER ${component} key)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    if(architecture)
        set(CPACK_DEBIAN_${key}_PACKAGE_ARCHITECTURE ${architecture} PARENT_SCOPE)
    endif()
    set(CPACK_DEBIAN_${key}_DESCRIPTION "${what}\n.\nThis package holds ${content}." PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${ARGN}" PARENT_SCOPE)
    set(doc ${CMAKE_INSTALL_DATADIR}/doc/${name})
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright DESTINATION ${doc}
        COMPONENT ${component})
    install(FILES ${PROJECT_BINARY_DIR}/changelog.gz DESTINATION ${doc} COMPONENT ${component})
endfunction()

configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/changelog.in ${PROJECT_BINARY_DIR}/changelog @ONLY)
execute_process(COMMAND gzip -9nkf ${PROJECT_BINARY_DIR}/changelog COMMAND_ERROR_IS_FATAL ANY)

set(runtime liblanqorengine${PROJECT_VERSION_MAJOR})
lanqor_package(library ${runtime} libs "" "the shared library")
lanqor_package(development liblanqorengine-dev libdevel ""
    "the headers and what CMake and pkg-config need"
    "${runtime} ${same_version}, qtbase5-dev, libeigen3-dev, lanqorengine-data ${same_version}")
lanqor_package(program lanqor science "" "the program lanqor, its manual pages and its completion"
    "${runtime} ${same_version}, lanqorengine-data ${same_version}")
lanqor_package(data lanqorengine-data science all
    "the tables of the 4f shell")
lanqor_package(documentation lanqorengine-doc doc all
    "the documentation and the examples")
# The outside programs that lanqor starts, and what completes its options.
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS "mopac, xtb")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "bash-completion, lanqorengine-doc")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
