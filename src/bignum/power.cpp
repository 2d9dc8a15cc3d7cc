#include "bignum/power.h"

#include "bignum/power_engines.h"
#include "bignum/power_lanes.h"
#include "cpu/cpu.h"

#include <algorithm>

namespace morvane::bignum {
namespace {

bool is_odd(const Power& power) noexcept { return (power.modulus[0] & 1) != 0; }

}  // namespace

constinit cpu::Dispatch<PowerFn, 2> power_odd{{{{cpu::kAvx512 | cpu::kIfma, power_ifma}, {cpu::kNone, power_limbs}}}};
constinit cpu::Dispatch<PowerPairFn, 2> power_pair{
    {{{cpu::kAvx512 | cpu::kIfma, power_pair_ifma}, {cpu::kNone, power_pair_limbs}}}};
constinit cpu::Dispatch<PowerProductFn, 2> power_product{
    {{{cpu::kAvx512 | cpu::kIfma, power_product_ifma}, {cpu::kNone, power_product_limbs}}}};

constinit cpu::Dispatch<PowerLanesFn, 2> power_lanes{
    {{{cpu::kAvx512 | cpu::kIfma, power_lanes_ifma}, {cpu::kNone, power_lanes_apart}}}};

bool power_lanes_apart(std::span<const Power> powers) noexcept { return std::ranges::all_of(powers, power_mod); }

bool power_mod(const Power& power) noexcept { return is_odd(power) ? power_odd.get()(power) : power_division(power); }

bool power_mod_pair(const std::array<Power, 2>& powers) noexcept {
    const auto [p, q] = powers;
    const bool alike =
        p.modulus.size() == q.modulus.size() && p.exponent.size() == q.exponent.size() && p.exponent.size() > 1;
    return alike ? power_pair.get()(powers) : power_mod(p) && power_mod(q);
}

bool power_product_vt(const Power& a, const Power& b) noexcept { return power_product.get()(a, b); }

}  // namespace morvane::bignum
