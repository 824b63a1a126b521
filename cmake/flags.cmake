# How all of the project's own code is compiled.
add_library(tavik_flags INTERFACE)
target_compile_options(
  tavik_flags
  INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wno-sign-conversion -Wshadow -Werror -fvisibility=hidden -fvisibility-inlines-hidden
            # One rounding per operation on every target.
            -ffp-contract=off
            # No code reads errno or the float exception flags; saying so changes no result and lets square roots
            # and float selects vectorise.
            -fno-math-errno -fno-trapping-math)
if(TAVIK_SANITIZE)
  target_compile_options(tavik_flags INTERFACE -fsanitize=${TAVIK_SANITIZE} -fno-sanitize-recover=all
                                               -fno-omit-frame-pointer -g)
  target_link_options(tavik_flags INTERFACE -fsanitize=${TAVIK_SANITIZE})
endif()
if(TAVIK_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "TAVIK_FUZZ needs Clang, and the compiler is ${CMAKE_CXX_COMPILER_ID}")
  endif()
  # The library's branches guide the fuzzer, whose own program brings main.
  target_compile_options(tavik_flags INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(tavik_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
set(CMAKE_CXX_FLAGS_RELEASE "-O3 -DNDEBUG")
