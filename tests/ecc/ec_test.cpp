// Elliptic curves as programs see them: parameters, octets, validation, points with parameters of the caller, diagnostics.
#include <morvane/ecc.h>

#include "ecc/octet_records.h"
#include "support/integer.h"

#include <gtest/gtest.h>
#include <cstring>

namespace {

using namespace morvane::test;

using Words = std::vector<std::uint32_t>;

TORVA_V1_OPAQUE8 record(Bytes& octets) { return {static_cast<std::int32_t>(octets.size()), octets.data()}; }

std::string text(const TORVA_V1_OPAQUE8& octets) {
    std::string hex = to_hex(octets.octets, static_cast<std::size_t>(octets.count));
    for (char& digit : hex) digit = static_cast<char>(std::toupper(digit));
    return hex;
}

struct Params {
    explicit Params(std::int32_t curve) { EXPECT_EQ(E_ECParams_Init(curve, &record), 0); }
    E_EC_PARAMS record;
};

TORVA_V1_POINT decoded(std::int32_t curve, const std::string& hex) {
    Bytes octets = from_hex(hex);
    const TORVA_V1_OPAQUE8 in = record(octets);
    TORVA_V1_POINT point;
    EXPECT_EQ(TORVA_V1_opaque8ToECPoints(curve, &in, &point), 1);
    return point;
}

std::string encoded(std::int32_t curve, const TORVA_V1_POINT& point) {
    Bytes octets(E_EC_POINT_OCTETS);
    TORVA_V1_OPAQUE8 out{0, octets.data()};
    EXPECT_EQ(TORVA_V1_ECPointsToopaque8(curve, 1, &point, &out), 1);
    return text(out);
}

std::int32_t validated(std::int32_t curve, const std::string& hex, const E_EC_PARAMS* params = nullptr) {
    Bytes octets = from_hex(hex);  // of exactly that length: a byte beyond is seen by the sanitizer
    const TORVA_V1_OPAQUE8 in = record(octets);
    return TORVA_V1_IsValidPoint(curve, params, &in);
}

TEST(EcParams, AreThoseOfTheBuiltInCurves) {
    for (const std::int32_t curve : {0, 1, 2, 4, 6, 8, 11, 21, 22, -3}) {
        E_EC_PARAMS params;
        std::memset(&params, 0x5a, sizeof params);
        const E_EC_PARAMS before = params;
        EXPECT_EQ(E_ECParams_Init(curve, &params), -1);
        EXPECT_EQ(std::memcmp(&params, &before, sizeof params), 0);
    }
    for (const auto& [curve, field_bits] : {std::pair{3, 164}, {5, 164}, {7, 160}}) {
        const Params params(curve);
        EXPECT_EQ(params.record.overhead, curve == 7 ? 61 : 63);
        EXPECT_EQ(params.record.field.length, (field_bits + 31) / 32);
        EXPECT_EQ(params.record.n.words, params.record.n_words);
        EXPECT_EQ(Integer(params.record.n), Integer(order_of(curve)));
        EXPECT_EQ(validated(curve, encoded(curve, base_of(params.record))), 1);
        TORVA_V1_POINT r;
        EXPECT_EQ(TORVA_V1_ScalarMultiplicationOnEllipticCurves(curve, nullptr, nullptr, 0, &r, &r), 0);
        EXPECT_EQ(encoded(curve, r), encoded(curve, {}));
    }
}

TEST(EcOctets, BecomeWords) {
    Bytes octets = from_hex(
        "0102030405060708090a0b0c0d0e0f101112131415161718"
        "19");
    const auto words_of = [&](std::int32_t fixed, std::int32_t count) {
        Words words(7, 0x5a5a5a5a);
        const TORVA_V1_OPAQUE8 in{count, octets.data()};
        words.insert(words.begin(), static_cast<std::uint32_t>(TORVA_V1_opaque8ToLongs(fixed, &in, words.data())));
        return words;
    };
    constexpr std::uint32_t kLeft = 0x5a5a5a5a;
    const Words untouched(7, kLeft);
    const auto with = [](std::int32_t result, Words words) {
        words.insert(words.begin(), static_cast<std::uint32_t>(result));
        return words;
    };
    EXPECT_EQ(words_of(0, 0), with(-1, untouched));
    EXPECT_EQ(words_of(1, -5), with(-1, untouched));
    EXPECT_EQ(words_of(1, 25), with(-2, untouched));
    EXPECT_EQ(words_of(0, 5), with(2, {0x02030405, 0x01, kLeft, kLeft, kLeft, kLeft, kLeft}));
    EXPECT_EQ(words_of(0, 8), with(2, {0x05060708, 0x01020304, kLeft, kLeft, kLeft, kLeft, kLeft}));
    EXPECT_EQ(words_of(1, 7), with(6, {0x04050607, 0x010203, 0, 0, 0, 0, kLeft}));
    EXPECT_EQ(words_of(1, 24), with(6, {0x15161718, 0x11121314, 0x0d0e0f10, 0x090a0b0c, 0x05060708, 0x01020304, kLeft}));
    EXPECT_EQ(words_of(0, 25)[0], 7U);
}

TEST(EcOctets, ComeFromWordsWithoutUpToThreeZeros) {
    const auto octets_of = [](const Words& words) {
        Bytes octets(4 * words.size());
        TORVA_V1_OPAQUE8 out{-7, octets.data()};
        const std::int32_t result = TORVA_V1_LongsToopaque8(static_cast<std::int32_t>(words.size()), words.data(), &out);
        EXPECT_EQ(result, words.empty() ? -1 : out.count);
        return words.empty() ? std::to_string(out.count) : text(out);
    };
    const std::string low(40, '0');
    EXPECT_EQ(octets_of({}), "-7");
    EXPECT_EQ(octets_of({0, 0, 0, 0, 0, 0x12345678}), "12345678" + low);
    EXPECT_EQ(octets_of({0, 0, 0, 0, 0, 0x01000000}), "01000000" + low);
    EXPECT_EQ(octets_of({0, 0, 0, 0, 0, 0x00ffffff}), "FFFFFF" + low);
    EXPECT_EQ(octets_of({0, 0, 0, 0, 0, 0x0000ffff}), "FFFF" + low);
    EXPECT_EQ(octets_of({0, 0, 0, 0, 0, 0x000000ff}), "FF" + low);
    EXPECT_EQ(octets_of({0, 0, 0, 0, 0, 0}), "00" + low);
    EXPECT_EQ(octets_of({0, 0, 0, 0, 0}), low);
    EXPECT_EQ(octets_of({0xab}), "000000AB");
}

TEST(EcPoints, AreEncodedUncompressedOnly) {
    TORVA_V1_POINT point;
    for (std::uint32_t i = 0; i < 6; ++i) {
        point.x[i] = 0x11111111 * (i + 1);
        point.y[i] = 0x11111111 * (i + 7);
    }
    const std::string x = "5555555544444444333333332222222211111111";
    const std::string y = "BBBBBBBBAAAAAAAA999999998888888877777777";
    EXPECT_EQ(encoded(7, point), "04" + x + y);
    for (const std::int32_t curve : {3, 5, 11, 21, 22}) EXPECT_EQ(encoded(curve, point), "0466" + x + "CC" + y);

    Bytes octets(E_EC_POINT_OCTETS, 0x5a);
    TORVA_V1_OPAQUE8 out{-7, octets.data()};
    for (const auto& [form, result] : {std::pair{2, -1}, {3, -2}, {0, -3}, {4, -3}}) {
        EXPECT_EQ(TORVA_V1_ECPointsToopaque8(3, form, &point, &out), result);
    }
    EXPECT_EQ(TORVA_V1_ECPointsToopaque8(4, 2, &point, &out), 1);
    EXPECT_EQ(out.count, -7);
    EXPECT_EQ(octets, Bytes(E_EC_POINT_OCTETS, 0x5a));

    const TORVA_V1_POINT before = point;
    for (const auto& [first, result] : {std::pair{2, -1}, {6, -2}, {3, -3}, {5, -3}, {0, -3}}) {
        octets[0] = static_cast<std::uint8_t>(first);
        EXPECT_EQ(TORVA_V1_opaque8ToECPoints(7, &out, &point), result);
        EXPECT_EQ(TORVA_V1_opaque8ToECPoints(4, &out, &point), 1);
    }
    EXPECT_EQ(std::memcmp(&point, &before, sizeof point), 0);
    point = decoded(7, "04" + x + y);
    EXPECT_EQ(point.x[5] | point.y[5], 0U);
    EXPECT_EQ(encoded(7, point), "04" + x + y);
}

TEST(EcOwnParameters, ServeTheOtherCurves) {
    for (const std::int32_t model : {3, 5}) {
        Params params(model);
        const TORVA_V1_POINT base = base_of(params.record);
        const std::string point = encoded(21, base);
        std::string off = point;
        off.back() = off.back() == '9' ? '8' : '9';
        EXPECT_EQ(validated(model, off), -3);
        TORVA_V1_POINT wide = base;  // the same, not reduced
        for (std::size_t i = 0; i < E_EC_WORDS; ++i) wide.x[i] ^= params.record.field_words[i];
        TORVA_V1_PROJECTIVE reduced;
        EXPECT_EQ(TORVA_V1_toProjective(21, &params.record, &wide, &reduced), 0);
        EXPECT_TRUE(std::equal(base.x, base.x + E_EC_WORDS, reduced.x));
        Random random(20319);
        for (const std::int32_t curve : {11, 21, 22}) {
            EXPECT_EQ(validated(curve, point, &params.record), 1);
            EXPECT_EQ(validated(curve, off, &params.record), -4);
            EXPECT_EQ(validated(curve, point, nullptr), -4);
            EXPECT_EQ(validated(curve, "0400", &params.record), -1);
            EXPECT_EQ(validated(curve, point + "00", &params.record), -2);
            EXPECT_EQ(validated(curve, "0408" + point.substr(4), &params.record), -2);
            std::uint32_t k[6];
            for (std::uint32_t& word : k) word = random.below(0xffffffff);
            TORVA_V1_POINT ours;
            TORVA_V1_POINT theirs;
            EXPECT_EQ(TORVA_V1_ScalarMultiplicationOnEllipticCurves(curve, &params.record, k, 6, &base, &theirs), 0);
            EXPECT_EQ(TORVA_V1_ScalarMultiplicationOnEllipticCurves(model, nullptr, k, 6, &base, &ours), 0);
            EXPECT_EQ(encoded(curve, theirs), encoded(model, ours));
        }

        const auto spoil = [&](auto change) {
            Params spoilt(model);
            change(spoilt.record);
            TORVA_V1_POINT r;
            const std::uint32_t one = 1;
            EXPECT_EQ(TORVA_V1_ScalarMultiplicationOnEllipticCurves(21, &spoilt.record, &one, 1, &base, &r), -1);
            EXPECT_EQ(validated(21, point, &spoilt.record), -4);
        };
        spoil([](E_EC_PARAMS& p) { p.field.length = 0; });
        spoil([](E_EC_PARAMS& p) { p.field.words = nullptr; });
        spoil([](E_EC_PARAMS& p) { p.field_words[5] = 16; });
        spoil([](E_EC_PARAMS& p) { p.field_words[0] ^= 1; });
        spoil([](E_EC_PARAMS& p) { p.a.length = -1; });
        spoil([](E_EC_PARAMS& p) { p.a.length = 1 << 28; });
        spoil([](E_EC_PARAMS& p) { p.b.length = 0; });
        for (const std::int32_t length : {0, -1}) {
            params.record.n.length = length;
            EXPECT_EQ(validated(21, point, &params.record), -4);
        }
    }
    TORVA_V1_POINT r{};
    const std::uint32_t k[7]{};
    for (const std::int32_t words : {-1, 7}) {
        EXPECT_EQ(TORVA_V1_ScalarMultiplicationOnEllipticCurves(3, nullptr, k, words, &r, &r), -1);
    }
    EXPECT_EQ(TORVA_V1_ScalarMultiplicationOnEllipticCurves(4, nullptr, k, 6, &r, &r), -1);
    EXPECT_EQ(validated(4, encoded(3, r)), -1);
}

TEST(EcDiagnostics, PrintTheirLines) {
    testing::internal::CaptureStdout();
    const TORVA_V1_PROJECTIVE point{{1, 2, 3, 4, 0xabcdef}, {0, 0x10}, {1}};
    PrintECPointProjective(&point);
    EXPECT_EQ(ECC_BaseOrderExpTest(), 0);
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "x : ABCDEF4321\ny : 000100\nz : 00001\n"
              "result:\n4A96B5688EF573284664698968C38BB913CBFC82\nDC59D7AACE976B82A62336EDFBDCAEC853A04CD\n");
}

}  // namespace
