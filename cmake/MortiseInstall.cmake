# Install rules: library, translations, headers, CMake package, pkg-config file, the debugger's printers.
include(CMakePackageConfigHelpers)

install(TARGETS mortise EXPORT mortise
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
install(EXPORT mortise NAMESPACE mortise:: FILE mortiseTargets.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/mortise COMPONENT development)

foreach(header IN LISTS mortise_headers)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES src/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/mortise/${folder} COMPONENT development)
endforeach()

set(mortise_locale_dir ${CMAKE_INSTALL_DATADIR}/mortise/locale)
install(DIRECTORY share/mortise/locale/ DESTINATION ${mortise_locale_dir} COMPONENT runtime
  FILES_MATCHING PATTERN *.tr PATTERN *.locale)

# Where `mortise new-module` and people find a module to begin with.
install(DIRECTORY share/mortise/template-module DESTINATION ${CMAKE_INSTALL_DATADIR}/mortise COMPONENT development)

configure_package_config_file(cmake/mortiseConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/mortiseConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/mortise PATH_VARS mortise_locale_dir NO_SET_AND_CHECK_MACRO)
# While the first number is 0, each minor version may change an interface.
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/mortiseConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/mortiseConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/mortiseConfigVersion.cmake
  cmake/MortiseModules.cmake cmake/MortiseCheckModule.cmake cmake/MortiseTranslations.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/mortise COMPONENT development)

# The file says where it is relative to itself, so that an unpacked or moved tree still works.
file(RELATIVE_PATH mortise_pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" mortise_pc_prefix "${mortise_pc_prefix}")
configure_file(cmake/mortise.pc.in ${CMAKE_CURRENT_BINARY_DIR}/mortise.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/mortise.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(EXISTS ${mortise_printers})
  install(FILES ${mortise_printers} DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RENAME libmortise.so.${PROJECT_VERSION}-gdb.py COMPONENT development)
endif()
