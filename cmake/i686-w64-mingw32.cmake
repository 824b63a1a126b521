# Cross build for 32-bit x86 Windows.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)

set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)

# Loops are vectorised for the processors of today. Floats are in SSE registers, as in every other build; a host's
# stack may be aligned to 4 bytes only.
set(frame_flags "-march=i686 -mtune=generic -msse2 -mfpmath=sse -mstackrealign -mincoming-stack-boundary=2")
set(CMAKE_C_FLAGS_INIT "${frame_flags}")
set(CMAKE_CXX_FLAGS_INIT "${frame_flags}")

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../scripts/wine")
