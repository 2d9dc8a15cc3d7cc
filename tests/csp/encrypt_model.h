// Encryption and decryption in pieces beside a slow model of what the header says, which knows only the mode functions.
#pragma once

#include "cipher/cipher_table.h"
#include "csp/test_session.h"

#include <cstdlib>
#include <optional>

namespace morvane::test {

using Data = std::vector<CSSM_DATA>;

inline constexpr std::uint32_t kUntouched = 77;
inline constexpr std::uint32_t kCspModes[] = {CSP_MODE_ECB, CSP_MODE_CBC, 12345, CSP_MODE_CFB, CSP_MODE_OFB};

// A cipher in a mode. RC4 and the null cipher are no rows of the table of ciphers; their mode is one that does not exist.
struct Kind {
    std::uint32_t algorithm;
    Mode mode = kNoPad;
    const Cipher* cipher = nullptr;

    std::uint32_t block() const { return cipher == nullptr ? 0 : static_cast<std::uint32_t>(cipher->block); }
};

inline Kind des_cbc() { return {CSP_ALG_DES, kCbc, &cipher_named("des")}; }

inline std::vector<Kind> kinds_with_key() {
    constexpr std::pair<std::uint32_t, const char*> kNames[] = {
        {CSP_ALG_DES, "des"}, {CSP_ALG_DES3, "two-key triple des"}, {CSP_ALG_IDEA, "idea"}, {CSP_ALG_RC2, "rc2"},
        {CSP_ALG_RC5, "rc5"}, {CSP_ALG_BLOWFISH, "blowfish"},       {CSP_ALG_SEED, "seed"}};
    std::vector<Kind> kinds = {{CSP_ALG_RC4}};
    for (const Mode mode : {kEcb, kCbc, kCfb, kOfb}) {
        for (const auto& [algorithm, name] : kNames) kinds.push_back({algorithm, mode, &cipher_named(name)});
    }
    return kinds;
}

inline CSSM_DATA buffer_of(Bytes& bytes) { return {size32(bytes), bytes.data()}; }

// A session with a random key, at any address, and what its mode needs besides.
struct Stream : Session {
    const Kind kind;
    const bool decrypting;
    Bytes schedule, iv_bytes, key_room;
    CSSM_DATA iv;
    CSSM_KEY key{};

    Stream(const Kind& of, bool decrypts, Random& random)
        : Session(random.below(2) == 0 ? CSP_CONTEXT_SYMMETRIC : CSP_CONTEXT_CIPHER_ALT, of.algorithm),
          kind(of),
          decrypting(decrypts),
          iv_bytes(random.bytes(20)) {
        if (kind.cipher != nullptr) {
            constexpr std::int32_t kBitsOrRounds = 12;
            schedule = kind.cipher->scheduled(random.bytes(kind.cipher->key == 0 ? 16 : kind.cipher->key), kBitsOrRounds);
        } else {
            schedule.resize(sizeof(E_RC4_STATE));
            E_RC4_KeySchedule(reinterpret_cast<E_RC4_STATE*>(schedule.data()), random.bytes(16).data(), 16);
        }
        key_room = Bytes(random.below(4));
        const std::size_t shift = key_room.size();
        key_room.insert(key_room.end(), schedule.begin(), schedule.end());
        key.KeyHeader.BlobType = 2;
        key.KeyHeader.AlgorithmId = kind.algorithm;
        key.KeyData = {size32(schedule), key_room.data() + shift};
        iv = buffer_of(iv_bytes);  // longer than any block
        with(&key).with(CSP_ATTR_MODE, kCspModes[kind.mode]);
        with(kind.cipher == nullptr || kind.mode == kEcb ? nullptr : &iv).with(CSP_ATTR_PADDING, 0);
    }
    std::int32_t init() { return (decrypting ? CSP_DecryptDataInit : CSP_EncryptDataInit)(100, handle(), nullptr); }
    std::int32_t update(const CSSM_DATA* in, std::size_t ins, const CSSM_DATA* out, std::size_t outs,
                        std::uint32_t* written) {
        return (decrypting ? CSP_DecryptDataUpdate : CSP_EncryptDataUpdate)(
            0, handle(), in, static_cast<std::uint32_t>(ins), out, static_cast<std::uint32_t>(outs), written);
    }
    std::int32_t final(CSSM_DATA* to) {
        return (decrypting ? CSP_DecryptDataFinal : CSP_EncryptDataFinal)(0xffffffff, handle(), to);
    }
    Job job() const {
        return {*kind.cipher, schedule, kind.mode, decrypting, static_cast<std::int32_t>(8 * kind.cipher->block)};
    }
    Bytes key_data() const { return {key.KeyData.Data, key.KeyData.Data + schedule.size()}; }
    Bytes kept() const { return {carried, carried + carried_bytes}; }
};

inline bool is_bad(const CSSM_DATA& output) { return (output.Length == 0) != (output.Data == nullptr); }

inline std::uint32_t total(const Data& buffers) {
    std::uint32_t sum = 0;
    for (const CSSM_DATA& buffer : buffers) sum += buffer.Length;
    return sum;
}

inline Bytes last(const Bytes& bytes, std::size_t size) {
    return {bytes.data() + bytes.size() - size, bytes.data() + bytes.size()};
}

struct Result {
    std::uint32_t code;
    std::uint32_t written;
    Bytes out = {};  // as far as it reached the buffers
};

class Model {
public:
    explicit Model(const Stream& of) : key_data(of.key_data()), stream_(of), chain_(of.iv_bytes) { chain_.resize(block_); }

    Bytes carried;
    Bytes key_data;  // RC4 keeps its state there

    Result update(const Data& in, const Data& out) {
        if (total(out) < total(in)) return {CSP_ERR_OUTPUT_TOO_SHORT, kUntouched};
        Result result = {CSP_ERR_BAD_DATA, 0};
        if (is_bad(out[0])) return result;
        Bytes staged = carried;
        for (const CSSM_DATA& buffer : in) {
            if (buffer.Data == nullptr) return result;
            for (std::uint32_t i = 0; i < buffer.Length; ++i) {
                staged.push_back(buffer.Data[i]);
                if (staged.size() < 1000) continue;
                Bytes piece = mode(staged);
                if (!piece.empty()) piece.resize(1000);  // of SEED's 1008 or, fed back, 992
                staged.clear();
                if (!scatter(piece, out, result)) return result;
                result.written += size32(piece);
            }
        }
        const std::size_t rest = block_ == 0 ? 0 : staged.size() % block_;
        const Bytes kept = last(staged, rest);
        staged.resize(staged.size() - rest);
        const Bytes piece = mode(staged);
        result.written += size32(piece);
        if (!scatter(piece, out, result)) return result;
        carried = kept;
        return {0, result.written, result.out};
    }

    // After the stream's.
    Result final(std::uint32_t option) {
        if (block_ == 0) return {0, 0};
        const Bytes kept = stream_.kept();  // has the random padding
        while (option == 9 && carried.size() < block_) carried.push_back(kept.at(carried.size()));
        const auto missing = static_cast<std::uint8_t>(block_ - carried.size());
        const std::uint8_t fill[] = {0, 0, 0, 0x01, 0x55, 0xff, missing, missing};
        if (option != 0) carried.resize(block_, option < 8 ? fill[option] : 0);
        return {0, 0, mode(carried)};
    }

private:
    // The next call of the mode function; of its output, what counts.
    Bytes mode(Bytes in) {
        const std::size_t len = in.size();
        if (stream_.kind.cipher == nullptr) {
            if (stream_.kind.algorithm == CSP_ALG_NULL_CIPHER) return {};
            E_RC4_Encrypt(in.data(), in.data(), reinterpret_cast<E_RC4_STATE*>(key_data.data()), size32(in));
            return in;
        }
        const Job job = stream_.job();
        in.resize(job.rounded(len));
        Bytes out(in.size());
        job.call(in.data(), out.data(), len, chain_.data());
        const Bytes& ciphertext = job.decrypting ? in : out;
        if (job.mode == kCbc && len != 0) chain_ = job.cipher.cbc_iv(last(ciphertext, block_));
        out.resize(job.feeds_back() ? len - len % block_ : job.decrypting ? len : out.size());
        return out;
    }

    // Adds the piece to what has reached the buffers. On failure the code is CSP_ERR_BAD_DATA if a bad one is in the way.
    static bool scatter(const Bytes& piece, const Data& buffers, Result& result) {
        std::size_t room = 0, i = 0;
        while (i < buffers.size() && !is_bad(buffers[i])) room += buffers[i++].Length;
        const std::size_t now = std::min(piece.size(), room - result.out.size());
        result.out.insert(result.out.end(), piece.data(), piece.data() + now);
        if (now < piece.size() && i == buffers.size()) result.code = CSP_ERR_OUTPUT_TOO_SHORT;
        return now == piece.size();
    }

    const Stream& stream_;
    const std::uint32_t block_ = stream_.kind.block();
    Bytes chain_;
};

inline void expect_code(std::int32_t result, std::uint32_t code) {
    ASSERT_EQ(result, code == 0 ? 0 : -1);
    ASSERT_TRUE(code == 0 || GetError() == code) << GetError() << " instead of " << code;
}

inline std::vector<std::uint32_t> cut(Random& random, std::uint32_t length) {
    std::vector<std::uint32_t> parts;
    for (std::uint32_t more = random.below(4); more != 0; --more) {
        parts.push_back(random.below(3) == 0 ? 0 : random.below(length + 1));
        length -= parts.back();
    }
    parts.push_back(length);
    return parts;
}

inline CSSM_DATA& any_of(Data& buffers, Random& random) {
    return buffers[random.below(static_cast<std::uint32_t>(buffers.size()))];
}

// One call with buffers of all shapes. False when the stream has failed half-way and cannot go on.
inline bool try_update(Stream& stream, Model& model, Random& random) {
    constexpr std::uint32_t kGap = 16;
    const std::uint32_t length = random.below(random.below(3) == 0 ? 40 : 3100);
    const bool in_place = model.carried.empty() && random.below(3) == 0, roomy = random.below(4) != 0;
    const std::uint32_t room = in_place ? length
                               : roomy  ? length + size32(model.carried) + random.below(20)
                                        : std::max(length, 1U) - random.below(2);
    Bytes memory = random.bytes(room + 7 * kGap);
    Data in, out;
    std::uint32_t place = kGap;
    for (const std::uint32_t part : cut(random, room)) {
        out.push_back({part, part == 0 ? nullptr : memory.data() + place});
        place += part + kGap;
    }
    std::vector<Bytes> pieces;  // each of its own length, so that reading beyond it is noticed
    for (const std::uint32_t part : cut(random, length)) pieces.push_back(random.bytes(part));
    for (Bytes& piece : pieces) in.push_back({size32(piece), piece.empty() ? memory.data() : piece.data()});
    if (in_place) {
        in = out;
        for (CSSM_DATA& buffer : in) buffer.Data = buffer.Data == nullptr ? memory.data() : buffer.Data;
        if (random.below(2) == 0) out.insert(out.begin(), {kGap, memory.data() + place});  // puts the output behind
    } else {
        if (random.below(10) == 0) any_of(in, random).Data = nullptr;
        CSSM_DATA& bad = any_of(out, random);
        if (random.below(8) == 0) bad.Data = bad.Length == 0 ? memory.data() : nullptr;
    }
    const Result expected = model.update(in, out);
    Bytes after = memory;
    for (std::size_t i = 0, at = 0; at < expected.out.size(); ++i) {
        for (std::uint32_t k = 0; k < out[i].Length && at < expected.out.size(); ++k) {
            after[static_cast<std::size_t>(out[i].Data - memory.data()) + k] = expected.out[at++];
        }
    }
    std::uint32_t written = kUntouched;
    expect_code(stream.update(in.data(), in.size(), out.data(), out.size(), &written), expected.code);
    EXPECT_EQ(written, expected.written);
    EXPECT_EQ(memory, after);
    EXPECT_EQ(stream.kept(), model.carried);
    EXPECT_EQ(stream.key_data(), model.key_data);
    return expected.code == 0 || written == kUntouched;
}

inline void try_final(Stream& stream, Model& model, Random& random) {
    const bool has_option = random.below(4) != 0, by_library = random.below(2) == 0;
    const std::uint32_t option = has_option ? random.below(12) : 0, block = stream.kind.block();
    stream.own[3].AttributeType = has_option ? CSP_ATTR_PADDING : 0;
    stream.own[3].Attribute.Uint32 = option;
    Bytes memory = random.bytes(block + 10), after = memory;
    CSSM_DATA remainder = {block + 1 + random.below(3), memory.data()};
    if (by_library) remainder = {0, nullptr};
    const CSSM_DATA before = remainder;
    const std::int32_t status = stream.final(&remainder);
    const Result expected = model.final(option);
    expect_code(status, expected.code);
    EXPECT_EQ(remainder.Length, expected.code == 0 ? expected.out.size() : before.Length);
    EXPECT_TRUE(has_option || GetError() == CSP_ERR_NO_ATTRIBUTE) << "the look-up leaves its code, the call succeeds";
    if (by_library && block != 0 && expected.code == 0) {
        ASSERT_NE(remainder.Data, nullptr);
        memory.assign(remainder.Data, remainder.Data + block);
        after.assign(block, 0);
        std::free(remainder.Data);
    } else {
        EXPECT_EQ(remainder.Data, before.Data);
    }
    std::copy(expected.out.begin(), expected.out.end(), after.begin());
    EXPECT_EQ(memory, after);
    EXPECT_EQ(stream.kept(), model.carried);
}

// So many calls on one stream, with buffers of all shapes.
inline void try_calls(const Kind& kind, bool decrypting, int calls, Random& random) {
    Stream stream(kind, decrypting, random);
    std::optional<Model> model;
    for (int call = 0; call < calls && !testing::Test::HasFailure(); ++call) {
        SCOPED_TRACE(testing::Message() << "algorithm " << kind.algorithm << ", mode " << kind.mode << ", decrypting "
                                        << decrypting << ", call " << call);
        if (!model) {
            model.emplace(stream);
            ASSERT_EQ(stream.init(), 0);
        }
        if (random.below(5) == 0) {
            try_final(stream, *model, random);
        } else if (!try_update(stream, *model, random)) {
            model.reset();
        }
    }
}

}  // namespace morvane::test
