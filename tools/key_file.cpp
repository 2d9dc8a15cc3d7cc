#include "key_file.h"

#include "algorithms.h"
#include "input.h"
#include "pem.h"

#include <array>

namespace morvane::tool {
namespace {

constexpr std::size_t kMostFileBytes = 1 << 16;  // the longest key takes 7 KiB of PEM
constexpr std::array<std::uint8_t, 3> kVersion0 = {der::kInteger, 1, 0};
constexpr std::array<std::uint8_t, 1> kNoUnusedBits = {0};

Secret read_file(const std::string& name, std::string& label) {
    const auto fail = [&](const std::string& why) { return InputError(display_name(name) + ": " + why); };
    Secret file = read_short(name, kMostFileBytes);
    if ((*file).size() > kMostFileBytes) throw fail("is too long for a key");
    try {
        std::optional<PemBlock> block = read_pem({reinterpret_cast<const char*>((*file).data()), (*file).size()});
        if (!block) return file;
        label = block->label;
        return std::move(block->bytes);
    } catch (const PemError& error) {
        throw fail(error.what());
    }
}

Secret algorithm_of(Bytes algorithm, Bytes parameters) {
    const Secret oid = der::element(der::kOid, {algorithm});
    return der::element(der::kSequence, {*oid, parameters});
}

}  // namespace

KeyFile::KeyFile(const std::string& name) : bytes_(read_file(name, label_)) {
    unwrap_public();
    if (wrapping_ == Wrapping::kNone) unwrap_private();
}

bool KeyFile::may_be(std::string_view kind) const {
    if (wrapping_ != Wrapping::kNone) return false;
    const std::string_view first_word = std::string_view(label_).substr(0, label_.find(' '));
    return first_word.empty() || first_word == "PUBLIC" || first_word == "PRIVATE" || same_name(first_word, kind);
}

bool KeyFile::take_algorithm(Bytes& bytes) {
    std::optional<Bytes> identifier = der::take(bytes, der::kSequence);
    if (!identifier) return false;
    const std::optional<Bytes> oid = der::take(*identifier, der::kOid);
    if (!oid) return false;
    algorithm_ = *oid;
    parameters_ = *identifier;
    return true;
}

// The algorithm, and the key in a BIT STRING of whole octets.
void KeyFile::unwrap_public() {
    Bytes file = all();
    std::optional<Bytes> info = der::take(file, der::kSequence);
    if (!info || !file.empty() || !take_algorithm(*info)) return;
    const std::optional<Bytes> key = der::take(*info, der::kBitString);
    if (!key || !info->empty() || key->empty() || key->front() != 0) return;
    key_ = key->subspan(1);
    wrapping_ = Wrapping::kPublic;
}

// Version 0 or 1, the algorithm, and the key in an OCTET STRING. Attributes may follow.
void KeyFile::unwrap_private() {
    Bytes file = all();
    std::optional<Bytes> info = der::take(file, der::kSequence);
    if (!info || !file.empty()) return;
    const std::optional<Bytes> version = der::take(*info, der::kInteger);
    if (!version || version->size() != 1 || version->front() > 1 || !take_algorithm(*info)) return;
    const std::optional<Bytes> key = der::take(*info, der::kOctetString);
    if (!key) return;
    key_ = *key;
    wrapping_ = Wrapping::kPrivate;
}

Secret wrap_public(Bytes algorithm, Bytes parameters, Bytes key) {
    const Secret string = der::element(der::kBitString, {kNoUnusedBits, key});
    const Secret identifier = algorithm_of(algorithm, parameters);
    return der::element(der::kSequence, {*identifier, *string});
}

Secret wrap_private(Bytes algorithm, Bytes parameters, Bytes key) {
    const Secret string = der::element(der::kOctetString, {key});
    const Secret identifier = algorithm_of(algorithm, parameters);
    return der::element(der::kSequence, {kVersion0, *identifier, *string});
}

}  // namespace morvane::tool
