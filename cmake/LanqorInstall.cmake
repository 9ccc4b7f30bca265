include(CMakePackageConfigHelpers)

# The components are the packages of LanqorPackages.cmake.

get_property(public_headers GLOBAL PROPERTY LANQOR_PUBLIC_HEADERS)
install(FILES ${public_headers}
    ${LANQOR_BUILD_INCLUDE_DIR}/LanqorEngine/LanqorEngineExport.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/LanqorEngine COMPONENT development)
install(TARGETS LanqorEngine EXPORT LanqorEngineTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library
    NAMELINK_COMPONENT development)
install(TARGETS lanqor RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/data/ ${PROJECT_SOURCE_DIR}/share/LanqorEngine/
    DESTINATION ${CMAKE_INSTALL_DATADIR}/LanqorEngine COMPONENT data
    PATTERN CMakeLists.txt EXCLUDE)

install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/CITATION.cff
    ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples
    DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs
    DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation
    PATTERN CMakeLists.txt EXCLUDE)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/LanqorEngine)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/LanqorEngineConfig.cmake.in
    ${PROJECT_BINARY_DIR}/LanqorEngineConfig.cmake INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/LanqorEngineConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/LanqorEngineConfig.cmake
    ${PROJECT_BINARY_DIR}/LanqorEngineConfigVersion.cmake
    DESTINATION ${config_dir} COMPONENT development)
install(EXPORT LanqorEngineTargets NAMESPACE LanqorEngine:: DESTINATION ${config_dir}
    COMPONENT development)

# The prefix relative to the .pc file, so that the installed tree can be moved.
file(RELATIVE_PATH prefix_from_pc_file /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${CMAKE_CURRENT_LIST_DIR}/LanqorEngine.pc.in
    ${PROJECT_BINARY_DIR}/LanqorEngine.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/LanqorEngine.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
