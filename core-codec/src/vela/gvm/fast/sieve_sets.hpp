#pragma once

#include <vela/gvm/fast/sieve.hpp>

/// The instruction sets, each in a source file of its own that is compiled for it.
namespace vela::gvm::fast::sieve {

// Two lanes are in every x86-64, and what compilers make of them elsewhere is plain code.
namespace sse2 {
extern const Functions<1> one;
extern const Functions<2> two;
}  // namespace sse2

namespace avx2 {
extern const Functions<1> one;
extern const Functions<2> two;
}  // namespace avx2

namespace avx512 {
extern const Functions<1> one;
extern const Functions<2> two;
}  // namespace avx512

}  // namespace vela::gvm::fast::sieve
