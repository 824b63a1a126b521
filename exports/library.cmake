# The delivered library: tavik.dll with its import library, or libtavik.so.
add_library(tavik SHARED $<TARGET_OBJECTS:tavik_objects> ${level_choice})
target_include_directories(tavik PUBLIC $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}> $<INSTALL_INTERFACE:include>)
target_link_libraries(tavik PRIVATE $<BUILD_INTERFACE:tavik_flags>)

if(WIN32)
  enable_language(RC)
  # The .def names each export with the bytes that it removes from the stack; the linker holds the code to that,
  # and --kill-at leaves the plain name in the module.
  target_sources(tavik PRIVATE exports/module.cpp exports/version.rc exports/tavik.def)
  set_target_properties(tavik PROPERTIES PREFIX "")
  target_link_options(tavik PRIVATE -static -Wl,--kill-at -Wl,--disable-stdcall-fixup -Wl,--dynamicbase
                                    -Wl,--nxcompat -s)
  # Hosts that include the headers link to the names with their bytes; the linker's own import library lacks them.
  add_custom_command(
    TARGET tavik
    POST_BUILD
    COMMAND ${CMAKE_DLLTOOL} --kill-at --input-def ${CMAKE_SOURCE_DIR}/exports/tavik.def --output-lib
            $<TARGET_LINKER_FILE:tavik>
    VERBATIM)
else()
  target_link_libraries(tavik PRIVATE $<BUILD_INTERFACE:${parallel_library}>)
  # oneTBB's workers outlive a loop: they must not lose their code when a host closes the library.
  target_link_options(tavik PRIVATE -Wl,-z,nodelete)
  if(NOT TAVIK_SANITIZE) # Programs bring the sanitizers' runtime.
    target_link_options(tavik PRIVATE -Wl,--no-undefined)
  endif()
  set_target_properties(tavik PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
endif()
