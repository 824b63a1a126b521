# Header-only libraries of the system, for every target. A cross compiler must not see the system's include folder
# itself, whose C library is not its own: it gets a folder of the build tree that holds nothing but links to the
# libraries.
#
# add_header_only(TARGET HEADER PACKAGE): an interface target for the library whose header is FOLDER/HEADER.
function(add_header_only target header package)
  find_path(${target}_parent ${header} PATHS /usr/local/include /usr/include NO_CMAKE_FIND_ROOT_PATH)
  if(NOT ${target}_parent)
    message(FATAL_ERROR "${header} is missing: install ${package}")
  endif()
  string(REGEX REPLACE "/.*" "" folder ${header})
  set(links ${CMAKE_BINARY_DIR}/header_only)
  file(MAKE_DIRECTORY ${links})
  file(CREATE_LINK ${${target}_parent}/${folder} ${links}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${links})
endfunction()
