# Installation, and the CMake package that consumers find as kvOpenSGAnimations.
include(CMakePackageConfigHelpers)

set(KV_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/kvOpenSGAnimations")
set(KV_INSTALLED_TARGETS kvOpenSGAnimations)
if(KV_OPENSG STREQUAL "embedded")
    list(APPEND KV_INSTALLED_TARGETS kvSceneGraph)
    install(DIRECTORY opensg/include/OpenSG DESTINATION include/kvOpenSGAnimations)
endif()
# A host's own libraries, defined before this project was added, are the host's to install.
get_property(own_host_targets GLOBAL PROPERTY KV_HOST_TARGETS)
list(APPEND KV_INSTALLED_TARGETS ${own_host_targets})

install(DIRECTORY include/ DESTINATION include/kvOpenSGAnimations)
install(TARGETS ${KV_INSTALLED_TARGETS} EXPORT kvOpenSGAnimationsTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(TARGET kvanim)
    install(TARGETS kvanim RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(EXPORT kvOpenSGAnimationsTargets NAMESPACE kvOpenSGAnimations::
    DESTINATION ${KV_PACKAGE_DIR})

configure_package_config_file(cmake/kvOpenSGAnimationsConfig.cmake.in
    "${CMAKE_CURRENT_BINARY_DIR}/kvOpenSGAnimationsConfig.cmake" INSTALL_DESTINATION ${KV_PACKAGE_DIR})
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/kvOpenSGAnimationsConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${CMAKE_CURRENT_BINARY_DIR}/kvOpenSGAnimationsConfig.cmake"
    "${CMAKE_CURRENT_BINARY_DIR}/kvOpenSGAnimationsConfigVersion.cmake"
    DESTINATION ${KV_PACKAGE_DIR})
if(NOT KV_OPENSG STREQUAL "embedded")
    # With it the package finds the scene graph again.
    install(FILES cmake/FindOpenSG.cmake DESTINATION ${KV_PACKAGE_DIR})
endif()
