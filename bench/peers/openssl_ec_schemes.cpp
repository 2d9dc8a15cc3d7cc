#define OPENSSL_SUPPRESS_DEPRECATED  // the operations without an EVP context around them, which costs more
#include "ec_schemes.h"

#include <openssl/ec.h>
#include <openssl/ecdh.h>
#include <openssl/ecdsa.h>
#include <openssl/obj_mac.h>
#include <openssl/sha.h>

namespace morvane::bench {
namespace {

class Schemes {
public:
    explicit Schemes(const EcKey& from) : from_(from) {
        EC_KEY_set_private_key(key_.get(), BN_bin2bn(from.pair.d.data(), static_cast<int>(from.pair.d.size()), nullptr));
        EC_KEY_set_public_key(key_.get(), point_of(from.pair.q));
        EC_KEY_precompute_mult(key_.get(), nullptr);
    }

    Octets sign(bool) const {
        unsigned char digest[SHA_DIGEST_LENGTH];
        SHA1(from_.message.data(), from_.message.size(), digest);
        Octets signature(static_cast<std::size_t>(ECDSA_size(key_.get())));
        unsigned size = 0;
        ECDSA_sign(0, digest, sizeof digest, signature.data(), &size, key_.get());
        signature.resize(size);
        return signature;
    }
    bool verify(bool, const Octets& signature) const {
        unsigned char digest[SHA_DIGEST_LENGTH];
        SHA1(from_.message.data(), from_.message.size(), digest);
        return ECDSA_verify(0, digest, sizeof digest, signature.data(), static_cast<int>(signature.size()), key_.get()) ==
               1;
    }
    // With the point from its octets, as it arrives; that it is on the curve is checked with that.
    Octets agree() const {
        EC_POINT* const other = point_of(from_.other_q);
        Octets secret(from_.pair.d.size());
        ECDH_compute_key(secret.data(), secret.size(), other, key_.get(), nullptr);
        EC_POINT_free(other);
        return secret;
    }
    Octets generate() const {
        EC_KEY* const key = EC_KEY_new();
        EC_KEY_set_group(key, EC_KEY_get0_group(key_.get()));
        EC_KEY_generate_key(key);
        Octets point(from_.pair.q.size());
        EC_POINT_point2oct(EC_KEY_get0_group(key), EC_KEY_get0_public_key(key), POINT_CONVERSION_UNCOMPRESSED, point.data(),
                           point.size(), nullptr);
        EC_KEY_free(key);
        return point;
    }

private:
    EC_POINT* point_of(const Octets& octets) const {
        const EC_GROUP* const group = EC_KEY_get0_group(key_.get());
        EC_POINT* const point = EC_POINT_new(group);
        EC_POINT_oct2point(group, point, octets.data(), octets.size(), nullptr);
        return point;
    }
    static EC_KEY* new_key(std::int32_t id) {
        return EC_KEY_new_by_curve_name(id == 3 ? NID_sect163k1 : id == 5 ? NID_X9_62_c2pnb163v1 : NID_secp160r1);
    }

    EcKey from_;
    std::unique_ptr<EC_KEY, decltype(&EC_KEY_free)> key_{new_key(from_.curve.id), EC_KEY_free};
};

}  // namespace

void add_openssl_ec_schemes(Rows& all) { add_ec_schemes<Schemes>(all, "openssl"); }

}  // namespace morvane::bench
