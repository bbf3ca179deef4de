#include "core/processor_features.h"

// The compiler's own question for features asks for all of them whenever a program starts, used or not: some 20 times
// CPUID, each of which leaves the guest and takes microseconds on a virtual machine.
#if defined(_MSC_VER) && defined(_M_X64) && !defined(_M_ARM64EC)
#define VELMORA_X86 1
#include <intrin.h>
#elif defined(__x86_64__) || defined(__i386__)
#define VELMORA_X86 1
#include <cpuid.h>
#endif

#ifdef VELMORA_X86

#include <array>

#include <immintrin.h>

namespace velmora {

namespace {

struct Leaf {
    unsigned eax = 0;
    unsigned ebx = 0;
    unsigned ecx = 0;
    unsigned edx = 0;
};

/// All 0 where the processor does not know the leaf.
Leaf leaf(unsigned number) noexcept
{
    Leaf result;
#ifdef _MSC_VER
    std::array<int, 4> registers{};
    __cpuid(registers.data(), 0);
    if (unsigned(registers[0]) < number)
        return result;
    __cpuidex(registers.data(), int(number), 0);
    result = {unsigned(registers[0]), unsigned(registers[1]), unsigned(registers[2]), unsigned(registers[3])};
#else
    __get_cpuid_count(number, 0, &result.eax, &result.ebx, &result.ecx, &result.edx);
#endif
    return result;
}

constexpr bool has(unsigned bits, unsigned bit) noexcept
{
    return ((bits >> bit) & 1U) != 0;
}

/// Whether the system saves all that AVX-512 has when it switches between threads.
bool keepsWideRegisters(const Leaf &first) noexcept
{
    constexpr unsigned osxsave = 27;
    constexpr unsigned long long states = 0xE6; // XMM, upper halves of YMM, masks, upper halves of ZMM, ZMM16 to 31
    return has(first.ecx, osxsave) && (_xgetbv(0) & states) == states;
}

ProcessorFeatures asked() noexcept
{
    // Source of the bits: Intel 64 and IA-32 Architectures Software Developer's Manual, volume 2, CPUID.
    const Leaf first = leaf(1);
    const Leaf extended = leaf(7);
    const bool sse41 = has(first.ecx, 19);
    ProcessorFeatures features;
    features.carrylessMultiply = sse41 && has(first.ecx, 1);
    features.shaRounds = sse41 && has(extended.ebx, 29);
    features.wideMultiply = has(extended.ebx, 16) && has(extended.ecx, 10) && keepsWideRegisters(first);
    return features;
}

} // namespace

const ProcessorFeatures &processorFeatures() noexcept
{
    static const ProcessorFeatures features = asked();
    return features;
}

} // namespace velmora

#else

namespace velmora {

const ProcessorFeatures &processorFeatures() noexcept
{
    static const ProcessorFeatures none;
    return none;
}

} // namespace velmora

#endif
