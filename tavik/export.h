// Linkage of every exported function: C names, callee-pops frames on 32-bit x86 Windows, the platform's
// own convention elsewhere. One export takes its argument in a register there. The headers are C99 and C++.
#ifndef TAVIK_EXPORT_H
#define TAVIK_EXPORT_H

#include <stdint.h>

#ifdef __cplusplus
#define TAVIK_C_LINKAGE extern "C"
#else
#define TAVIK_C_LINKAGE extern
#endif

#if defined(_WIN32) && (defined(__i386__) || defined(_M_IX86))
#define TAVIK_CALL __stdcall
#define TAVIK_REGISTER_CALL __fastcall
#else
#define TAVIK_CALL
#define TAVIK_REGISTER_CALL
#endif

#if defined(__GNUC__) && !defined(_WIN32)
#define TAVIK_VISIBLE __attribute__((visibility("default")))
#else
#define TAVIK_VISIBLE
#endif

// The compiler's own name of a function with so many bytes of arguments, both as texts, for a second name of it.
#if defined(_WIN32) && (defined(__i386__) || defined(_M_IX86))
#define TAVIK_SYMBOL(name, bytes) name "@" bytes
#else
#define TAVIK_SYMBOL(name, bytes) name
#endif

#define TAVIK_EXPORT(type) TAVIK_C_LINKAGE TAVIK_VISIBLE type TAVIK_CALL
#define TAVIK_REGISTER_EXPORT(type) TAVIK_C_LINKAGE TAVIK_VISIBLE type TAVIK_REGISTER_CALL

#endif
