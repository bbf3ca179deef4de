#pragma once

namespace velmora {

/// What a processor may be able to do beyond what every one of its kind can.
struct ProcessorFeatures {
    bool carrylessMultiply = false; ///< PCLMULQDQ and SSE4.1
    bool shaRounds = false;         ///< SHA-NI and SSE4.1
    bool wideMultiply = false;      ///< VPCLMULQDQ on registers of AVX-512, which the system keeps
};

/// Of the processor that this runs on; asked once. All false on those that are no x86.
[[nodiscard]] const ProcessorFeatures &processorFeatures() noexcept;

} // namespace velmora
