// Powers side by side, for whoever has several to compute.
#pragma once

#include "bignum/power.h"
#include "cpu/cpu.h"

namespace morvane::bignum {

// Where a vector's lanes can hold a power each, so many cost little more than one.
inline constexpr std::size_t kLanePowers = 8;

// Up to kLanePowers powers modulo odd numbers, at least one. False if there is no memory; some may be written then. The
// time tells no more than that of power_mod(). Quicker where every base is 2.
using PowerLanesFn = bool(std::span<const Power> powers) noexcept;

PowerLanesFn power_lanes_ifma;
PowerLanesFn power_lanes_apart;  // one after the other

extern constinit cpu::Dispatch<PowerLanesFn, 2> power_lanes;

inline bool has_power_lanes() noexcept { return power_lanes.get() != power_lanes_apart; }

}  // namespace morvane::bignum
