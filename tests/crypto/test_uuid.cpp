// ZtUUID: the version and variant bits where the GUID layout puts them, the text in memory
// order, the 32-bit fold, and that draws are distinct and look random.
#include <regex>
#include <set>

#include "crypto_test_util.h"
#include "ztcommon/crypto.h"

using namespace crypto_test;
using namespace ZtCommonNS;

namespace {
std::string utf8(const UnicodeString& s) {
    std::string out;
    return s.toUTF8String(out);
}
} // namespace

TEST(Uuid, KnownBytesAsTextAndWord) {
    const unsigned char bytes[16] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77,
                                     0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF};
    const ZtUUID uuid(bytes);
    EXPECT_EQ(utf8(uuid.toString(true)), "00112233-4455-6677-8899-AABBCCDDEEFF");
    EXPECT_EQ(utf8(uuid.toString(false)), "00112233445566778899AABBCCDDEEFF");
    // Little-endian words 0x33221100, 0x77665544, 0xBBAA9988, 0xFFEEDDCC folded by xor: 0.
    EXPECT_EQ(uuid.toUint32(), 0x00000000u);
    const unsigned char other[16] = {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x80};
    EXPECT_EQ(ZtUUID(other).toUint32(), 0x80000001u);
    EXPECT_TRUE(ZtUUID(bytes) == uuid);
    EXPECT_FALSE(ZtUUID(other) == uuid);
}

TEST(Uuid, RandomDrawsCarryVersionAndVariantAndFormat) {
    const std::regex dashed("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{2}4[0-9A-F]-[89AB][0-9A-F]{3}-"
                            "[0-9A-F]{12}");
    std::set<std::string> seen;
    int ones[128] = {};
    constexpr int kDraws = 4000;
    for (int i = 0; i < kDraws; ++i) {
        const ZtUUID uuid;
        const unsigned char* b = uuid.getBytes();
        ASSERT_EQ(b[7] >> 4, 4) << "version nibble";
        ASSERT_EQ(b[8] >> 6, 2) << "variant bits";
        const std::string text = utf8(uuid.toString(true));
        ASSERT_EQ(text.size(), 36u);
        ASSERT_TRUE(std::regex_match(text, dashed)) << text;
        std::string plain = text;
        std::erase(plain, '-');
        ASSERT_EQ(utf8(uuid.toString(false)), plain);
        ASSERT_TRUE(seen.insert(text).second) << "repeated " << text;
        for (int bit = 0; bit < 128; ++bit)
            ones[bit] += b[bit / 8] >> (bit % 8) & 1;
    }
    // Every bit that is not fixed is set in roughly half of the draws (the bound is about
    // eleven standard deviations: a stuck or biased byte fails, chance does not).
    for (int bit = 0; bit < 128; ++bit) {
        if ((bit / 8 == 7 && bit % 8 >= 4) || (bit / 8 == 8 && bit % 8 >= 6))
            continue;
        EXPECT_GT(ones[bit], kDraws / 2 - 350) << "bit " << bit;
        EXPECT_LT(ones[bit], kDraws / 2 + 350) << "bit " << bit;
    }
}
