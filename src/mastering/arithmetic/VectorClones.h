#pragma once

/// In front of a hot function: builds it for AVX-512, for AVX2 with fused multiply-add and for any processor, and picks
/// at start-up. Sanitizers instrument the picking, which runs before they are ready, so that they get the plain form.
#if defined(__x86_64__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define ORVANE_VECTOR_CLONES [[gnu::target_clones("default", "arch=x86-64-v3", "arch=x86-64-v4")]]
#else
#define ORVANE_VECTOR_CLONES
#endif
