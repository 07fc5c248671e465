// Throughput of the digests and ciphers on 64 MiB buffers, side by side with OpenSSL 3's EVP
// interface. Each benchmark times the library and OpenSSL alternately within the same iteration
// (the order swapped every iteration), so that the machine's slow and fast phases fall on both
// alike. Passes are timed in thread processor time and each side keeps its best pass: on a
// shared machine that is the pass least disturbed by other work. The counters give both throughputs
// and their ratio, and a summary table follows the run. Run: build-bench/bench/bench_crypto
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <sys/mman.h>

#include "crypto/cpu_dispatch.h"
#include "ztcommon/crypto.h"

#ifdef ZT_HAVE_OPENSSL
#include <openssl/evp.h>
#include <openssl/provider.h>
#endif

namespace {

constexpr size_t kSize = size_t{64} << 20;

// Two 64 MiB buffers from huge-page-backed memory, touched once before any timing.
unsigned char* bigBuffer(unsigned char fill) {
    constexpr size_t kAlign = size_t{2} << 20;
    void* p = nullptr;
    if (posix_memalign(&p, kAlign, kSize) != 0)
        std::abort();
    madvise(p, kSize, MADV_HUGEPAGE);
    std::memset(p, fill, kSize);
    auto* bytes = static_cast<unsigned char*>(p);
    for (size_t i = 0; i < kSize; i += 4096)
        bytes[i] = static_cast<unsigned char>(i * 2654435761u >> 24);
    return bytes;
}
unsigned char* const gIn = bigBuffer(0x5C);
unsigned char* const gOut = bigBuffer(0);

const unsigned char kKey[32] = {0x60, 0x3d, 0xeb, 0x10, 0x15, 0xca, 0x71, 0xbe, 0x2b, 0x73, 0xae,
                                0xf0, 0x85, 0x7d, 0x77, 0x81, 0x1f, 0x35, 0x2c, 0x07, 0x3b, 0x61,
                                0x08, 0xd7, 0x2d, 0x98, 0x10, 0xa3, 0x09, 0x14, 0xdf, 0xf4};
const unsigned char kIv[16] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};

using Op = std::function<void()>;

struct Result {
    double ours = 0, peer = 0; // bytes per second
};
// In the order the benchmarks ran.
std::vector<std::pair<std::string, Result>>& results() {
    static std::vector<std::pair<std::string, Result>> r;
    return r;
}
Result& resultFor(const std::string& name) {
    for (auto& [n, r] : results())
        if (n == name)
            return r;
    return results().emplace_back(name, Result()).second;
}

// The thread's processor time, which leaves out the time the thread waited while other work
// ran on the machine's two shared cores.
double threadSeconds() {
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) * 1e-9;
}

double seconds(const Op& op) {
    const double t0 = threadSeconds();
    op();
    return threadSeconds() - t0;
}

void compare(benchmark::State& state, const std::string& name, const Op& ours, const Op& peer) {
    double tOurs = 1e30, tPeer = 1e30;
    bool peerFirst = false;
    for (auto _ : state) {
        if (peer && peerFirst)
            tPeer = std::min(tPeer, seconds(peer));
        tOurs = std::min(tOurs, seconds(ours));
        if (peer && !peerFirst)
            tPeer = std::min(tPeer, seconds(peer));
        peerFirst = !peerFirst;
        benchmark::DoNotOptimize(gOut[0]);
    }
    const double bytes = static_cast<double>(kSize);
    Result& r = resultFor(name);
    r.ours = bytes / tOurs;
    state.counters["ZtCommon_MB/s"] = r.ours / 1e6;
    if (peer) {
        r.peer = bytes / tPeer;
        state.counters["OpenSSL_MB/s"] = r.peer / 1e6;
        state.counters["ratio"] = r.ours / r.peer;
    }
}

// ----- the library's side

template <class Ctx> Op ourDigest() {
    return [] {
        Ctx ctx;
        ctx.Update(gIn, kSize);
        ctx.Final(gOut);
    };
}

Op ourSha1() {
    return [] {
        ZtCommonNS::SHA1_CTX ctx;
        ctx.Update(gIn, static_cast<uint32_t>(kSize));
        ctx.Final(gOut);
    };
}

Op ourAes(bool encrypt, ZtCommonNS::AES_Mode mode, int keyLength) {
    auto enc = std::make_shared<ZtCommonNS::AES_Encryption>(mode, kKey, keyLength, kIv);
    auto dec = std::make_shared<ZtCommonNS::AES_Decryption>(mode, kKey, keyLength, kIv);
    if (encrypt)
        return [enc] { enc->blockEncrypt(gIn, static_cast<int>(kSize), gOut); };
    return [dec] { dec->blockDecrypt(gIn, static_cast<int>(kSize), gOut); };
}

Op ourRc4() {
    auto key = std::make_shared<ZtCommonNS::RC4_KEY>(16, kKey);
    return [key] { key->RC4(static_cast<int>(kSize), gIn, gOut); };
}

// ----- OpenSSL's side

#ifdef ZT_HAVE_OPENSSL
Op peerDigest(const EVP_MD* md) {
    return [md] { EVP_Digest(gIn, kSize, gOut, nullptr, md, nullptr); };
}

// A cipher context set up once; each run restarts it at the initialisation vector (stream
// ciphers simply continue, as the library's RC4 does).
Op peerCipher(const EVP_CIPHER* cipher, bool encrypt, bool restart) {
    std::shared_ptr<EVP_CIPHER_CTX> ctx(EVP_CIPHER_CTX_new(), EVP_CIPHER_CTX_free);
    if (cipher == nullptr ||
        EVP_CipherInit_ex(ctx.get(), cipher, nullptr, kKey, kIv, encrypt ? 1 : 0) != 1)
        return nullptr;
    EVP_CIPHER_CTX_set_padding(ctx.get(), 0);
    return [ctx, restart, encrypt] {
        if (restart)
            EVP_CipherInit_ex(ctx.get(), nullptr, nullptr, nullptr, kIv, encrypt ? 1 : 0);
        int n = 0;
        EVP_CipherUpdate(ctx.get(), gOut, &n, gIn, static_cast<int>(kSize));
    };
}

const EVP_CIPHER* rc4Cipher() {
    // RC4 lives in the legacy provider; loading any provider by hand also means the default
    // one must be loaded by hand.
    static const bool loaded = OSSL_PROVIDER_load(nullptr, "default") != nullptr &&
                               OSSL_PROVIDER_load(nullptr, "legacy") != nullptr;
    static EVP_CIPHER* rc4 = loaded ? EVP_CIPHER_fetch(nullptr, "RC4", nullptr) : nullptr;
    return rc4;
}
#endif

// The OpenSSL side of a case, or nothing when OpenSSL is not there.
#ifdef ZT_HAVE_OPENSSL
#define ZT_PEER(expr) [] { return expr; }
#else
#define ZT_PEER(expr) nullptr
#endif

void registerAll() {
    using namespace ZtCommonNS;
    struct Case {
        std::string name;
        Op ours, peer;
    };
    std::vector<Case> cases;
    auto add = [&](const std::string& name, Op ours, const std::function<Op()>& peer) {
        cases.push_back({name, std::move(ours), peer ? peer() : Op()});
    };
    add("MD5", ourDigest<MD5_CTX>(), ZT_PEER(peerDigest(EVP_md5())));
    add("SHA-1", ourSha1(), ZT_PEER(peerDigest(EVP_sha1())));
    add("SHA-256", ourDigest<SHA256_CTX>(), ZT_PEER(peerDigest(EVP_sha256())));
    add("SHA-512", ourDigest<SHA512_CTX>(), ZT_PEER(peerDigest(EVP_sha512())));
    add("AES-128-CBC encrypt", ourAes(true, AES_MODE_CBC, 16),
        ZT_PEER(peerCipher(EVP_aes_128_cbc(), true, true)));
    add("AES-128-CBC decrypt", ourAes(false, AES_MODE_CBC, 16),
        ZT_PEER(peerCipher(EVP_aes_128_cbc(), false, true)));
    add("AES-256-CBC encrypt", ourAes(true, AES_MODE_CBC, 32),
        ZT_PEER(peerCipher(EVP_aes_256_cbc(), true, true)));
    add("AES-256-CBC decrypt", ourAes(false, AES_MODE_CBC, 32),
        ZT_PEER(peerCipher(EVP_aes_256_cbc(), false, true)));
    add("AES-128-ECB encrypt", ourAes(true, AES_MODE_ECB, 16),
        ZT_PEER(peerCipher(EVP_aes_128_ecb(), true, true)));
    add("AES-128-CFB128 decrypt", ourAes(false, AES_MODE_CFB128, 16),
        ZT_PEER(peerCipher(EVP_aes_128_cfb128(), false, true)));
    add("RC4", ourRc4(), ZT_PEER(peerCipher(rc4Cipher(), true, false)));
    for (const Case& c : cases)
        benchmark::RegisterBenchmark(
            c.name.c_str(), [c](benchmark::State& s) { compare(s, c.name, c.ours, c.peer); })
            ->Unit(benchmark::kMillisecond)
            ->MinTime(1.0);
}

void printSummary(bool portableOnly) {
    const auto& f = ZtCommonNS::crypto::cpuFeatures();
    std::printf("\nProcessor offers: SHA extensions %s, AES-NI %s, AVX and BMI2 %s%s\n",
                f.shani ? "yes" : "no", f.aesni ? "yes" : "no", f.avx && f.bmi2 ? "yes" : "no",
                portableOnly ? " (not used: --portable)" : "");
    std::printf("%-24s %12s %12s %8s\n", "64 MiB buffer", "ZtCommon", "OpenSSL", "ratio");
    for (const auto& [name, r] : results()) {
        if (r.peer > 0)
            std::printf("%-24s %8.0f MB/s %7.0f MB/s %7.2fx\n", name.c_str(), r.ours / 1e6,
                        r.peer / 1e6, r.ours / r.peer);
        else
            std::printf("%-24s %8.0f MB/s %12s\n", name.c_str(), r.ours / 1e6, "-");
    }
}

} // namespace

int main(int argc, char** argv) {
    bool portable = false;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--portable") == 0) {
            portable = true;
            ZtCommonNS::crypto::forcePortable(true);
            std::copy(argv + i + 1, argv + argc, argv + i);
            --argc;
            break;
        }
    }
    registerAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    printSummary(portable);
    return 0;
}
