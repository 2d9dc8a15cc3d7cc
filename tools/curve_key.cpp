#include "curve_key.h"

#include "algorithms.h"
#include "input.h"
#include "json.h"
#include "usage.h"

#include <morvane/bignum.h>

#include <algorithm>
#include <array>

namespace morvane::tool {
namespace {

constexpr std::array<std::uint8_t, 5> kSect163k1 = {0x2b, 0x81, 0x04, 0x00, 0x01};  // 1.3.132.0.1
constexpr std::array<std::uint8_t, 8> kC2pnb163v1 = {0x2a, 0x86, 0x48, 0xce,
                                                     0x3d, 0x03, 0x00, 0x01};       // 1.2.840.10045.3.0.1
constexpr std::array<std::uint8_t, 5> kSecp160r1 = {0x2b, 0x81, 0x04, 0x00, 0x08};  // 1.3.132.0.8

constexpr Curve kCurves[] = {{"sect163k1", 3, kSect163k1}, {"c2pnb163v1", 5, kC2pnb163v1}, {"secp160r1", 7, kSecp160r1}};

constexpr std::uint8_t kCurveTag = 0xa0, kPointTag = 0xa1;  // in ECPrivateKey of SEC 1
constexpr std::array<std::uint8_t, 3> kVersion1 = {der::kInteger, 1, 1};
constexpr std::array<std::uint8_t, 1> kNoUnusedBits = {0};
constexpr std::uint32_t kOrderWords = E_EC_WORDS;
constexpr int kUncompressed = 1, kValid = 1;
constexpr std::size_t kBlockHead = 2;  // in front of the scalar of a private key, as the toolkit makes them
constexpr std::uint8_t kUncompressedOctet = 4;

// From the parameters of an algorithm, whole.
const Curve& find_curve(Bytes parameters) {
    const std::optional<Bytes> oid = der::take(parameters, der::kOid);
    const auto* const found =
        std::ranges::find_if(kCurves, [&](const Curve& curve) { return oid && std::ranges::equal(curve.oid, *oid); });
    if (found == std::end(kCurves) || !parameters.empty()) {
        throw KeyError("its curve is not given as sect163k1, c2pnb163v1 or secp160r1, by name");
    }
    return *found;
}

// As the library's functions take octets, whether to read or to fill them.
TORVA_V1_OPAQUE8 opaque(Bytes bytes) {
    return {static_cast<std::int32_t>(bytes.size()), const_cast<std::uint8_t*>(bytes.data())};
}

}  // namespace

void CurveKey::set_curve(const Curve& curve) {
    curve_ = &curve;
    E_ECParams_Init(curve.id, &params_);
}

void CurveKey::set_point(Bytes point) {
    const std::uint8_t form = point.empty() ? 0 : point.front();
    if (form == 2 || form == 3) throw KeyError("the point in it is compressed, which this command does not read");
    const TORVA_V1_OPAQUE8 octets = opaque(point);
    if (form != kUncompressedOctet || TORVA_V1_IsValidPoint(curve_->id, &params_, &octets) != kValid) {
        throw KeyError("holds no uncompressed point of " + std::string(curve_->name));
    }
    point_.assign(point.begin(), point.end());
}

// n is prime, so 1/d is d^(n - 2), in a time that does not tell d.
void CurveKey::set_private(Bytes d) {
    const Number scalar(kOrderWords);
    const bool fits = d.size() <= E_EC_SCALAR_OCTETS;
    if (fits) EN_U8ToENUM(scalar.get(), d.data(), static_cast<std::uint32_t>(d.size()));
    if (scalar.bits() == 0 || EN_UComp(scalar.get(), &params_.n) >= 0) {
        throw KeyError("the private number in it is not below the order of " + std::string(curve_->name));
    }
    (*d_).assign(E_EC_SCALAR_OCTETS, 0);
    std::ranges::copy_backward(d, (*d_).end());

    if (kind_.inverse) {
        const Number exponent(kOrderWords);
        EN_SubU32(exponent.get(), &params_.n, 2);
        EN_Mod_Exp(scalar.get(), scalar.get(), exponent.get(), &params_.n);
    }
    TORVA_V1_POINT point{};
    std::ranges::copy(params_.x_words, point.x);
    std::ranges::copy(params_.y_words, point.y);
    TORVA_V1_ScalarMultiplicationOnEllipticCurves(curve_->id, &params_, scalar.get()->words, scalar.get()->length, &point,
                                                  &point);
    point_.resize(E_EC_POINT_OCTETS);
    TORVA_V1_OPAQUE8 octets = opaque(point_);
    TORVA_V1_ECPointsToopaque8(curve_->id, kUncompressed, &point, &octets);
    point_.resize(static_cast<std::size_t>(octets.count));
    part_ = KeyPart::kPrivate;
}

// ECPrivateKey of SEC 1: version, d, [0] the curve, which a wrapping has named already, and [1] the point.
bool CurveKey::read_private(Bytes der) {
    std::optional<Bytes> fields = der::take(der, der::kSequence);
    if (!fields || !der.empty()) return false;
    const std::optional<Bytes> version = der::take(*fields, der::kInteger), d = der::take(*fields, der::kOctetString);
    if (!version || version->size() != 1 || version->front() != 1 || !d) return false;
    const std::optional<Bytes> parameters = der::take(*fields, kCurveTag), point = der::take(*fields, kPointTag);
    if (!fields->empty()) return false;
    if (parameters) {
        const Curve& named = find_curve(*parameters);
        if (curve_ != nullptr && curve_ != &named) throw KeyError("names two curves");
        set_curve(named);
    }
    if (curve_ == nullptr) throw KeyError("names no curve");
    set_private(*d);
    if (!point) return true;
    const std::vector<std::uint8_t> computed = point_;
    Bytes string = *point;
    const std::optional<Bytes> octets = der::take(string, der::kBitString);
    if (!octets || octets->empty() || octets->front() != 0 || !string.empty()) return false;
    set_point(octets->subspan(1));
    if (point_ != computed) throw KeyError("the numbers in it do not belong together");
    return true;
}

bool CurveKey::read(const KeyFile& file) {
    if (file.wrapping() == KeyFile::Wrapping::kNone) {
        return kind_.bare_private_keys && file.may_be("ec") && read_private(file.all());
    }
    if (!std::ranges::equal(file.algorithm(), kind_.oid)) return false;
    set_curve(find_curve(file.parameters()));
    if (file.wrapping() == KeyFile::Wrapping::kPrivate) return read_private(file.key());
    set_point(file.key());
    return true;
}

void CurveKey::generate(const Curve& curve) {
    set_curve(curve);
    const auto [point, block] = toolkit::make_pair(kind_.generate, curve.id);
    set_private(Bytes(*block).subspan(kBlockHead));
}

void CurveKey::tell(Json& json) const { json.member("curve", curve_->name); }

EncodedKey CurveKey::encode(KeyPart wanted) const {
    const Secret oid = der::element(der::kOid, {curve_->oid});
    if (wanted != KeyPart::kPrivate) return {"PUBLIC KEY", wrap_public(kind_.oid, *oid, point_)};
    const Secret string = der::element(der::kBitString, {kNoUnusedBits, point_});
    const Secret d = der::element(der::kOctetString, {*d_}), point = der::element(kPointTag, {*string});
    return {"PRIVATE KEY", wrap_private(kind_.oid, *oid, *der::element(der::kSequence, {kVersion1, *d, *point}))};
}

std::vector<std::uint8_t> CurveKey::data_to_sign(const SignatureOptions& options, const std::string& input) const {
    options.refuse_those_of_rsa();
    options.refuse_those_of_kcdsa();
    if (options.hash && !same_name(*options.hash, kind_.hash)) {
        throw UsageError("--hash of " + std::string(kind_.name) + " keys is " + std::string(kind_.hash));
    }
    return read_whole(input);
}

const Curve& chosen_curve(const KeyOptions& options, const Key* domain) {
    if (domain != nullptr || options.parameters_only) throw UsageError("keys on curves have no parameters but --curve");
    if (options.bits || options.subgroup_bits || options.exponent || options.generator || options.kind) {
        throw UsageError("--bits, --subgroup-bits, --exponent, --generator and --kind are not for keys on curves");
    }
    return find_row(kCurves, "--curve", options.curve.value_or(""));
}

}  // namespace morvane::tool
