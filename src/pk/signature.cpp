#include "pk/signature.h"

#include "bignum/record.h"

namespace morvane::pk {

bool load_octets(ENUM& x, const std::uint8_t* octets, std::int32_t count) noexcept {
    if (count < 0 || static_cast<std::size_t>(count) > 4 * kGroupWords) return false;
    EN_U8ToENUM(&x, octets, static_cast<std::uint32_t>(count));
    return true;
}

std::int32_t put_integers(std::uint8_t* out, const ENUM& r, const ENUM& s) noexcept {
    return asn1::encode(out, [&](asn1::Writer& writer) {
        writer.put(asn1::kSequence, [&](asn1::Writer& content) {
            content.put_number(r);
            content.put_number(s);
        });
    });
}

bool get_integers(ENUM& r, ENUM& s, const std::uint8_t* in, std::int32_t length) noexcept {
    if (length < 0) return false;
    asn1::Reader input(in, static_cast<std::size_t>(length));
    asn1::Reader content;
    return input.get(asn1::kSequence, content) && content.get_number(r, kGroupWords) &&
           content.get_number(s, kGroupWords) && content.at_end() && input.at_end();
}

ScalarNumber::ScalarNumber(const Scalars& scalars, const Scalar& a) noexcept : number_{0, 0, words_.items.data()} {
    declare_known(a.get(), kGroupLimbs);
    bignum::set_normalised_length(number_, scalars.words(words_, a).size());
}

}  // namespace morvane::pk
