// Processor feature detection and the choice of crypto kernels.
#include "crypto/cpu_dispatch.h"

#include <atomic>

#include <cpuid.h>

namespace ZtCommonNS::crypto {

namespace {

CpuFeatures detect() {
    CpuFeatures f;
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    if (!__get_cpuid(1, &eax, &ebx, &ecx, &edx))
        return f;
    const bool ssse3 = (ecx & bit_SSSE3) != 0;
    const bool sse41 = (ecx & bit_SSE4_1) != 0;
    f.aesni = ssse3 && sse41 && (ecx & bit_AES) != 0;
    // AVX needs the operating system to save the YMM state: OSXSAVE, then XCR0 bits 1 and 2.
    if ((ecx & bit_OSXSAVE) != 0 && (ecx & bit_AVX) != 0) {
        unsigned xcr0Low = 0, xcr0High = 0;
        asm("xgetbv" : "=a"(xcr0Low), "=d"(xcr0High) : "c"(0));
        f.avx = (xcr0Low & 6) == 6;
    }
    if (__get_cpuid_max(0, nullptr) >= 7) {
        __cpuid_count(7, 0, eax, ebx, ecx, edx);
        f.shani = ssse3 && sse41 && (ebx & bit_SHA) != 0;
        f.bmi2 = (ebx & bit_BMI2) != 0 && (ebx & bit_BMI) != 0;
    }
    return f;
}

const Kernels& portableTable() {
    static const Kernels table{&sha1Portable, &sha256Portable, &sha512Portable,
                               &aesPortableKernels};
    return table;
}

const Kernels& bestTable() {
    static const Kernels table = [] {
        const CpuFeatures& f = cpuFeatures();
        Kernels k = portableTable();
        if (f.shani) {
            k.sha1 = &sha1ShaNi;
            k.sha256 = &sha256ShaNi;
        }
        if (f.avx && f.bmi2)
            k.sha512 = &sha512Avx;
        if (f.aesni)
            k.aes = &aesNiKernels;
        return k;
    }();
    return table;
}

std::atomic<bool> portableForced{false};

} // namespace

const CpuFeatures& cpuFeatures() {
    static const CpuFeatures features = detect();
    return features;
}

const Kernels& kernels() {
    return portableForced.load(std::memory_order_relaxed) ? portableTable() : bestTable();
}

void forcePortable(bool on) {
    portableForced.store(on, std::memory_order_relaxed);
}

} // namespace ZtCommonNS::crypto
