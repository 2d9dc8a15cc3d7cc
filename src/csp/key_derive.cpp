// CSP_DeriveKey: secret keys from Diffie-Hellman secrets.
#include "bignum/record.h"
#include "bignum/work_record.h"
#include "csp/cipher_table.h"
#include "csp/error.h"
#include "csp/key_pair.h"
#include "csp/key_service.h"

namespace {

using namespace morvane;
using namespace morvane::bignum;
using namespace morvane::csp;

constexpr std::size_t kBytes = std::size_t{4} * E_DH_WORDS;

bool load(ENUM& x, const CSSM_DATA& octets) noexcept {
    if (octets.Data == nullptr || octets.Length == 0 || octets.Length > kBytes) return false;
    EN_U8ToENUM(&x, octets.Data, octets.Length);
    return true;
}

}  // namespace

int32_t MORVANE_STDCALL CSP_DeriveKey(uint32_t /*csp*/, CspHandle handle, const CSSM_CONTEXT* context,
                                      const CSSM_KEY* base_key, const CSSM_DATA* param, uint32_t usage, uint32_t attributes,
                                      const CSSM_DATA* /*label*/, CSSM_KEY* derived) {
    const CspSession* const session = resolve(handle, context);
    if (session == nullptr) return fail(CSP_ERR_NO_CONTEXT);
    if (session->context_type != CSP_CONTEXT_KEYGEN) return fail(CSP_ERR_WRONG_CONTEXT_TYPE);
    if (base_key == nullptr || param == nullptr || derived == nullptr) return fail(CSP_ERR_NULL_POINTER);
    if (session->algorithm != CSP_ALG_DH) return fail(CSP_ERR_UNKNOWN_ALGORITHM);

    const std::uint32_t algorithm = derived->KeyHeader.AlgorithmId;
    const CipherChoice cipher = find_cipher_table(algorithm, CSP_MODE_ECB);
    E_DH_KEY dh = dh_parameters;
    E_DH_Init(&dh);
    WorkRecord peer(E_DH_WORDS);
    if (cipher.table == nullptr || dh_parameters.p.words == nullptr || !load(dh.x, base_key->KeyData) ||
        !load(*peer, *param)) {
        wipe(&dh, sizeof dh);
        return fail(CSP_ERR_DERIVE_KEY);
    }
    const std::uint32_t key_bytes = integer_attribute(*session, CSP_ATTR_BLOCK_SIZE, cipher.table->key_bytes);
    SecretArray<std::uint8_t, kBytes> secret;
    const std::int32_t size = E_DH_ComputeKey(secret.items.data(), peer.get(), &dh);
    wipe(&dh, sizeof dh);
    if (size <= 0 || static_cast<std::uint32_t>(size) < key_bytes) return fail(CSP_ERR_DH_COMPUTATION);
    const std::uint32_t code =
        make_secret_key(*derived, *session, algorithm, secret.items.data(), key_bytes, usage, attributes);
    return code == 0 ? kSuccess : fail(code);
}
