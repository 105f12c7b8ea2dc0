#pragma once

// Asks for the memory at an address ahead of its use. Does nothing for compilers that have no such
// request.
inline void Prefetch(const void* address) {
#ifdef __GNUC__
  __builtin_prefetch(address);
#else
  static_cast<void>(address);
#endif
}
