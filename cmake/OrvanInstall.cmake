# Install rules: the three libraries, the public header, the programs, a
# CMake package (find_package(Orvan) gives Orvan::orvan) and orvan.pc.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

target_include_directories(orvan PUBLIC $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
# The access library finds its siblings beside itself, the program finds the
# libraries in ../lib, wherever the prefix is.
set_target_properties(orvan ovgame ovkey PROPERTIES INSTALL_RPATH "$ORIGIN")
set_target_properties(orvan_cli ovkey-eco-tree PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

install(TARGETS orvan ovgame ovkey EXPORT OrvanTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
# The program, and the builder of the default opening tree it points people to.
install(TARGETS orvan_cli ovkey-eco-tree RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${PROJECT_SOURCE_DIR}/include/orvan.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

set(ORVAN_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Orvan)
install(EXPORT OrvanTargets NAMESPACE Orvan:: DESTINATION ${ORVAN_CMAKE_DIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/OrvanConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/OrvanConfig.cmake INSTALL_DESTINATION ${ORVAN_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OrvanConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OrvanConfig.cmake ${PROJECT_BINARY_DIR}/OrvanConfigVersion.cmake
        DESTINATION ${ORVAN_CMAKE_DIR})

configure_file(${PROJECT_SOURCE_DIR}/cmake/orvan.pc.in ${PROJECT_BINARY_DIR}/orvan.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orvan.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
