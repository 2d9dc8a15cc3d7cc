// OpenSSL by its older interface, which works on schedules of the caller.
#include "ciphers.h"

#define OPENSSL_SUPPRESS_DEPRECATED
#include <openssl/blowfish.h>
#include <openssl/des.h>
#include <openssl/rc2.h>
#include <openssl/rc4.h>
#include <openssl/seed.h>
#include <memory>

namespace morvane::bench {
namespace {

constexpr const char* kLibrary = "openssl-low";

using In = const std::uint8_t*;
using Out = std::uint8_t*;

// The calls of a cipher in one shape. `used` counts the bytes used of a block of the key stream.
template <typename Key, auto SetUp, auto Ecb, auto Cbc, auto Cfb, auto Ofb>
struct Calls {
    using Schedule = Key;
    static void set_up(Key& ks) { SetUp(&ks); }
    static void ecb(In in, Out out, Key& ks, bool encrypt) { Ecb(in, out, &ks, encrypt); }
    static void cbc(In in, Out out, std::size_t size, Key& ks, Out iv, bool encrypt) {
        Cbc(in, out, size, &ks, iv, encrypt);
    }
    static void cfb(In in, Out out, std::size_t size, Key& ks, Out iv, bool encrypt) {
        int used = 0;
        Cfb(in, out, size, &ks, iv, &used, encrypt);
    }
    static void ofb(In in, Out out, std::size_t size, Key& ks, Out iv) {
        int used = 0;
        Ofb(in, out, size, &ks, iv, &used);
    }
};

DES_cblock* block(Out bytes) { return reinterpret_cast<DES_cblock*>(bytes); }
const_DES_cblock* block(In bytes) { return reinterpret_cast<const_DES_cblock*>(const_cast<Out>(bytes)); }

struct Des {
    using Schedule = DES_key_schedule;
    static void set_up(Schedule& ks) { DES_set_key_unchecked(block(kDes.key.data()), &ks); }
    static void ecb(In in, Out out, Schedule& ks, bool encrypt) { DES_ecb_encrypt(block(in), block(out), &ks, encrypt); }
    static void cbc(In in, Out out, std::size_t size, Schedule& ks, Out iv, bool encrypt) {
        DES_ncbc_encrypt(in, out, size, &ks, block(iv), encrypt);
    }
    static void cfb(In in, Out out, std::size_t size, Schedule& ks, Out iv, bool encrypt) {
        int used = 0;
        DES_cfb64_encrypt(in, out, size, &ks, block(iv), &used, encrypt);
    }
    static void cfb8(In in, Out out, std::size_t size, Schedule& ks, Out iv, bool encrypt) {
        DES_cfb_encrypt(in, out, 8, size, &ks, block(iv), encrypt);
    }
    static void ofb(In in, Out out, std::size_t size, Schedule& ks, Out iv) {
        int used = 0;
        DES_ofb64_encrypt(in, out, size, &ks, block(iv), &used);
    }
};

struct Des3Schedule {
    DES_key_schedule k[3];
};

// Two keys are three of which the first is also the last, which costs no third schedule.
template <bool ThreeKeys>
struct Des3 {
    using Schedule = Des3Schedule;
    static void set_up(Schedule& ks) {
        DES_set_key_unchecked(block(kThreeKeys), &ks.k[0]);
        DES_set_key_unchecked(block(kThreeKeys + 8), &ks.k[1]);
        if (ThreeKeys) DES_set_key_unchecked(block(kThreeKeys + 16), &ks.k[2]);
    }
    static DES_key_schedule* last(Schedule& ks) { return &ks.k[ThreeKeys ? 2 : 0]; }
    static void ecb(In in, Out out, Schedule& ks, bool encrypt) {
        DES_ecb3_encrypt(block(in), block(out), &ks.k[0], &ks.k[1], last(ks), encrypt);
    }
    static void cbc(In in, Out out, std::size_t size, Schedule& ks, Out iv, bool encrypt) {
        DES_ede3_cbc_encrypt(in, out, size, &ks.k[0], &ks.k[1], last(ks), block(iv), encrypt);
    }
    static void cfb(In in, Out out, std::size_t size, Schedule& ks, Out iv, bool encrypt) {
        int used = 0;
        DES_ede3_cfb64_encrypt(in, out, size, &ks.k[0], &ks.k[1], last(ks), block(iv), &used, encrypt);
    }
    static void cfb8(In in, Out out, std::size_t size, Schedule& ks, Out iv, bool encrypt) {
        DES_ede3_cfb_encrypt(in, out, 8, size, &ks.k[0], &ks.k[1], last(ks), block(iv), encrypt);
    }
    static void ofb(In in, Out out, std::size_t size, Schedule& ks, Out iv) {
        int used = 0;
        DES_ede3_ofb64_encrypt(in, out, size, &ks.k[0], &ks.k[1], last(ks), block(iv), &used);
    }
};

constexpr auto set_up_seed = [](SEED_KEY_SCHEDULE* ks) { SEED_set_key(kSeed.key.data(), ks); };
constexpr auto set_up_blowfish = [](BF_KEY* ks) { BF_set_key(ks, kBlowfish.key.size(), kBlowfish.key.data()); };
constexpr auto set_up_rc2 = [](RC2_KEY* ks) { RC2_set_key(ks, kRc2.key.size(), kRc2.key.data(), kRc2Bits); };

using Seed =
    Calls<SEED_KEY_SCHEDULE, set_up_seed, SEED_ecb_encrypt, SEED_cbc_encrypt, SEED_cfb128_encrypt, SEED_ofb128_encrypt>;
using Blowfish = Calls<BF_KEY, set_up_blowfish, BF_ecb_encrypt, BF_cbc_encrypt, BF_cfb64_encrypt, BF_ofb64_encrypt>;
using Rc2 = Calls<RC2_KEY, set_up_rc2, RC2_ecb_encrypt, RC2_cbc_encrypt, RC2_cfb64_encrypt, RC2_ofb64_encrypt>;

template <typename C>
void add(Rows& all, const Cipher& cipher) {
    const auto ks = std::make_shared<typename C::Schedule>();
    C::set_up(*ks);
    for (const ModeRow& row : kModes) {
        const auto push = [&](auto run) {
            all.push_back({cipher.name + std::string(row.suffix), kLibrary, run, Kind::kCipher});
        };
        const auto push_chained = [&]<typename Call>(Call call) {
            push([ks, call, encrypt = row.encrypt](Out out, In in, std::size_t size) {
                Iv iv = kIv;
                call(in, out, size, *ks, iv.data(), encrypt);
            });
        };
        switch (row.mode) {
            case Mode::kEcb:
                push([ks, bytes = cipher.block_bytes, encrypt = row.encrypt](Out out, In in, std::size_t size) {
                    for (std::size_t at = 0; at < size; at += bytes) C::ecb(in + at, out + at, *ks, encrypt);
                });
                break;
            case Mode::kCbc:
                push_chained(C::cbc);
                break;
            case Mode::kCfb:
                push_chained(C::cfb);
                break;
            case Mode::kCfb8:
                if constexpr (requires { C::cfb8; }) push_chained(C::cfb8);
                break;
            case Mode::kOfb:
                push([ks](Out out, In in, std::size_t size) {
                    Iv iv = kIv;
                    C::ofb(in, out, size, *ks, iv.data());
                });
                break;
        }
    }
    add_key_setup(all, cipher, kLibrary, [ks] { C::set_up(*ks); });
}

}  // namespace

void add_openssl_low_ciphers(Rows& all) {
    add<Des>(all, kDes);
    add<Des3<false>>(all, kDes3);
    add<Des3<true>>(all, kDes33Key);
    add<Seed>(all, kSeed);
    add<Blowfish>(all, kBlowfish);
    add<Rc2>(all, kRc2);

    const auto stream = std::make_shared<RC4_KEY>();
    RC4_set_key(stream.get(), kRc4.key.size(), kRc4.key.data());
    all.push_back({kRc4.name, kLibrary, [stream](Out out, In in, std::size_t size) { RC4(stream.get(), size, in, out); },
                   Kind::kCipher, true});
    const auto keyed = std::make_shared<RC4_KEY>();
    add_key_setup(all, kRc4, kLibrary, [keyed] { RC4_set_key(keyed.get(), kRc4.key.size(), kRc4.key.data()); });
}

}  // namespace morvane::bench
