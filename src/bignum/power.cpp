#include "bignum/power.h"

#include "bignum/power_engines.h"
#include "bignum/power_lanes.h"
#include "cpu/cpu.h"

#include <algorithm>

namespace morvane::bignum {
namespace {

constexpr cpu::Features kIfma = cpu::kAvx512 | cpu::kIfma;

bool is_odd(const Power& power) noexcept { return (power.modulus[0] & 1) != 0; }

}  // namespace

#if defined(__x86_64__)
constinit cpu::Dispatch<PowerFn, kPowerVariants> power_odd{{{{kIfma, power_ifma}, {cpu::kNone, power_limbs}}}};
constinit cpu::Dispatch<PowerProductFn, kPowerVariants> power_product{
    {{{kIfma, power_product_ifma}, {cpu::kNone, power_product_limbs}}}};
#else
constinit cpu::Dispatch<PowerFn, kPowerVariants> power_odd{
    {{{kIfma, power_ifma}, {cpu::kAvx2, power_avx2}, {cpu::kSse2, power_sse2}, {cpu::kNone, power_limbs}}}};
constinit cpu::Dispatch<PowerProductFn, kPowerVariants> power_product{{{{kIfma, power_product_ifma},
                                                                        {cpu::kAvx2, power_product_avx2},
                                                                        {cpu::kSse2, power_product_sse2},
                                                                        {cpu::kNone, power_product_limbs}}}};
#endif
constinit cpu::Dispatch<PowerPairFn, 2> power_pair{{{{kIfma, power_pair_ifma}, {cpu::kNone, power_pair_apart}}}};

bool power_pair_apart(const std::array<Power, 2>& powers) noexcept {
    PowerFn* const run = power_odd.get();
    return run(powers[0]) && run(powers[1]);
}

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
