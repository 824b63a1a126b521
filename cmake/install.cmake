# What `cmake --install` leaves: the library, the headers, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS tavik EXPORT tavik-targets)
install(FILES tavik/tavik.h tavik/export.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tavik)
# Each family's public header has the name of its folder.
file(GLOB families RELATIVE ${CMAKE_SOURCE_DIR}/tavik CONFIGURE_DEPENDS LIST_DIRECTORIES true tavik/*)
foreach(family IN LISTS families)
  if(IS_DIRECTORY ${CMAKE_SOURCE_DIR}/tavik/${family})
    install(FILES tavik/${family}/${family}.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tavik/${family})
  endif()
endforeach()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/tavik)
install(
  EXPORT tavik-targets
  NAMESPACE tavik::
  FILE tavikConfig.cmake
  DESTINATION ${package_folder})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/tavikConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/tavikConfigVersion.cmake DESTINATION ${package_folder})

configure_file(cmake/tavik.pc.in ${CMAKE_BINARY_DIR}/tavik.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/tavik.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(WIN32)
  install(FILES exports/tavik.def DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()
