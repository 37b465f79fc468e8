# The installed tree: libraries, their public headers by library, the host, its config, and the CMake package.
get_property(libraries GLOBAL PROPERTY PM_LIBRARIES)
install(TARGETS ${libraries} EXPORT PatientManagerTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
foreach(library IN LISTS libraries)
  get_target_property(headers ${library} PM_HEADERS)
  get_target_property(folder ${library} SOURCE_DIR)
  get_target_property(binary ${library} BINARY_DIR)
  string(TOLOWER ${library} lower)
  if(headers)
    foreach(header IN LISTS headers)
      install(FILES ${folder}/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/PatientManager/${library})
    endforeach()
  endif()
  install(FILES ${binary}/include/${lower}_export.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/PatientManager/${library})
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/config DESTINATION .)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/PatientManager)
install(EXPORT PatientManagerTargets NAMESPACE PatientManager:: DESTINATION ${package_folder})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/PatientManagerConfig.cmake.in
  ${PROJECT_BINARY_DIR}/PatientManagerConfig.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/PatientManagerConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/PatientManagerConfig.cmake
  ${PROJECT_BINARY_DIR}/PatientManagerConfigVersion.cmake DESTINATION ${package_folder})
