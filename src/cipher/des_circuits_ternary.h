// The S-boxes of DES as circuits of gates of three inputs. Made by scripts/des_circuits.
//
// Included behind definitions of Lanes, MORVANE_INLINE and lut<Table>.
#pragma once

#include <cstddef>

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

struct TernaryCircuits {
    // y are the four bits of a box's value for the six of x, in both the high one first.
    template <std::size_t Box>
    MORVANE_INLINE static void run(const Lanes (&x)[6], Lanes (&y)[4]) noexcept {
        if constexpr (Box == 0) {  // 28 gates
            const Lanes t0 = lut<0x29>(x[2], x[1], x[0]);
            const Lanes t1 = lut<0x69>(t0, x[4], x[5]);
            const Lanes t2 = lut<0x16>(x[3], x[4], x[0]);
            const Lanes t3 = lut<0x10>(x[4], t2, x[2]);
            const Lanes t4 = lut<0xad>(t1, x[5], t3);
            const Lanes t5 = lut<0xdb>(x[2], x[4], x[5]);
            const Lanes t6 = lut<0x96>(x[5], x[1], t5);
            const Lanes t7 = lut<0x3e>(x[2], x[1], t4);
            const Lanes t8 = lut<0x74>(t7, x[4], t5);
            const Lanes t9 = lut<0x6c>(x[0], t6, t8);
            const Lanes t10 = lut<0x63>(x[0], t7, t9);
            const Lanes t11 = lut<0xe4>(t9, t4, x[3]);
            const Lanes t12 = lut<0x42>(x[0], x[4], t9);
            const Lanes t13 = lut<0xcb>(t12, t6, x[3]);
            const Lanes t14 = lut<0x72>(t5, x[2], t13);
            const Lanes t15 = lut<0x63>(t14, t10, x[4]);
            const Lanes t16 = lut<0x1e>(t14, t6, t2);
            const Lanes t17 = lut<0x65>(t15, t16, t4);
            const Lanes t18 = lut<0x65>(x[3], t17, t10);
            const Lanes t19 = lut<0x7c>(t18, t5, t17);
            const Lanes t20 = lut<0x96>(t19, x[3], x[0]);
            const Lanes t21 = lut<0x46>(t2, x[2], t20);
            const Lanes t22 = lut<0x27>(t16, t21, x[5]);
            const Lanes t23 = lut<0x78>(x[3], t6, t22);
            const Lanes t24 = lut<0x63>(t11, t22, t17);
            const Lanes t25 = lut<0x95>(t23, t13, t1);
            const Lanes t26 = lut<0xad>(t24, t10, t18);
            const Lanes t27 = lut<0xac>(x[1], t25, t26);
            y[0] = t11;
            y[1] = t22;
            y[2] = t18;
            y[3] = t27;
        } else if constexpr (Box == 1) {  // 25 gates
            const Lanes t0 = lut<0x69>(x[3], x[5], x[0]);
            const Lanes t1 = lut<0xda>(x[5], x[3], x[1]);
            const Lanes t2 = lut<0x54>(x[0], t1, x[5]);
            const Lanes t3 = lut<0x61>(t1, t0, x[4]);
            const Lanes t4 = lut<0x6d>(x[0], x[1], x[5]);
            const Lanes t5 = lut<0xa7>(t2, x[4], x[0]);
            const Lanes t6 = lut<0x79>(t2, t4, x[3]);
            const Lanes t7 = lut<0x2c>(t6, x[4], x[1]);
            const Lanes t8 = lut<0xb4>(t7, t5, x[2]);
            const Lanes t9 = lut<0x60>(t4, t5, t8);
            const Lanes t10 = lut<0xae>(x[3], t9, t3);
            const Lanes t11 = lut<0xa9>(x[4], t4, t8);
            const Lanes t12 = lut<0x3b>(x[2], x[5], t8);
            const Lanes t13 = lut<0x57>(x[4], t11, t4);
            const Lanes t14 = lut<0x69>(t13, t5, x[2]);
            const Lanes t15 = lut<0x3d>(x[5], t13, t0);
            const Lanes t16 = lut<0xd2>(t10, t15, t11);
            const Lanes t17 = lut<0x8d>(t10, t16, x[2]);
            const Lanes t18 = lut<0x67>(t15, x[3], t9);
            const Lanes t19 = lut<0x84>(t14, t12, t18);
            const Lanes t20 = lut<0x78>(t0, x[1], t19);
            const Lanes t21 = lut<0x69>(t20, t12, x[4]);
            const Lanes t22 = lut<0x63>(t21, t9, x[4]);
            const Lanes t23 = lut<0x47>(t22, t2, t19);
            const Lanes t24 = lut<0xc6>(x[1], t14, t23);
            y[0] = t11;
            y[1] = t21;
            y[2] = t17;
            y[3] = t24;
        } else if constexpr (Box == 2) {  // 24 gates
            const Lanes t0 = lut<0x1d>(x[2], x[4], x[3]);
            const Lanes t1 = lut<0x47>(x[3], x[0], x[5]);
            const Lanes t2 = lut<0x69>(t0, x[1], x[5]);
            const Lanes t3 = lut<0x4d>(t0, x[5], t1);
            const Lanes t4 = lut<0x64>(x[5], x[0], x[3]);
            const Lanes t5 = lut<0x06>(t3, x[4], x[0]);
            const Lanes t6 = lut<0x6b>(t3, x[1], x[4]);
            const Lanes t7 = lut<0x61>(t5, t1, x[1]);
            const Lanes t8 = lut<0x36>(x[2], t6, t7);
            const Lanes t9 = lut<0x27>(t4, t8, x[5]);
            const Lanes t10 = lut<0x14>(t1, t6, t4);
            const Lanes t11 = lut<0x66>(t1, t4, t8);
            const Lanes t12 = lut<0x07>(x[2], t10, t2);
            const Lanes t13 = lut<0x6c>(x[3], t2, t9);
            const Lanes t14 = lut<0x69>(t13, t12, x[0]);
            const Lanes t15 = lut<0x18>(t14, t1, t12);
            const Lanes t16 = lut<0xf8>(t15, x[2], t9);
            const Lanes t17 = lut<0x76>(t16, x[3], t5);
            const Lanes t18 = lut<0x4f>(t17, t13, t8);
            const Lanes t19 = lut<0xac>(x[4], t16, t18);
            const Lanes t20 = lut<0x8c>(x[1], x[4], x[3]);
            const Lanes t21 = lut<0x39>(x[1], t20, t14);
            const Lanes t22 = lut<0xb3>(t3, t21, t19);
            const Lanes t23 = lut<0x6c>(x[0], t2, t22);
            y[0] = t11;
            y[1] = t14;
            y[2] = t19;
            y[3] = t23;
        } else if constexpr (Box == 3) {  // 23 gates
            const Lanes t0 = lut<0x96>(x[2], x[3], x[0]);
            const Lanes t1 = lut<0x0d>(x[2], t0, x[3]);
            const Lanes t2 = lut<0x66>(x[3], x[1], t1);
            const Lanes t3 = lut<0xc9>(x[1], t0, t1);
            const Lanes t4 = lut<0x43>(t2, x[3], x[2]);
            const Lanes t5 = lut<0x47>(x[3], t0, t3);
            const Lanes t6 = lut<0x66>(x[5], x[1], t5);
            const Lanes t7 = lut<0x53>(t5, x[0], t0);
            const Lanes t8 = lut<0x74>(x[0], t7, x[1]);
            const Lanes t9 = lut<0x69>(t8, t2, x[5]);
            const Lanes t10 = lut<0x72>(t4, t8, x[4]);
            const Lanes t11 = lut<0x63>(t4, t9, t3);
            const Lanes t12 = lut<0x84>(t11, x[4], t7);
            const Lanes t13 = lut<0x54>(x[5], x[4], t12);
            const Lanes t14 = lut<0x81>(x[5], t13, t0);
            const Lanes t15 = lut<0x78>(t14, t7, x[4]);
            const Lanes t16 = lut<0x99>(x[0], t11, t15);
            const Lanes t17 = lut<0xd2>(t15, t9, t6);
            const Lanes t18 = lut<0x69>(t6, t13, t17);
            const Lanes t19 = lut<0xb4>(t16, t10, t5);
            const Lanes t20 = lut<0x39>(t13, t3, t10);
            const Lanes t21 = lut<0x6c>(x[4], t20, t19);
            const Lanes t22 = lut<0x69>(t13, t10, t21);
            y[0] = t22;
            y[1] = t21;
            y[2] = t18;
            y[3] = t17;
        } else if constexpr (Box == 4) {  // 26 gates
            const Lanes t0 = lut<0x39>(x[3], x[5], x[0]);
            const Lanes t1 = lut<0x52>(x[0], t0, x[2]);
            const Lanes t2 = lut<0x69>(x[1], x[0], x[5]);
            const Lanes t3 = lut<0xe3>(t1, x[1], t2);
            const Lanes t4 = lut<0x89>(t3, x[2], t0);
            const Lanes t5 = lut<0x61>(x[3], t2, t4);
            const Lanes t6 = lut<0x7e>(x[2], t5, x[1]);
            const Lanes t7 = lut<0x0b>(t6, x[0], t3);
            const Lanes t8 = lut<0x19>(x[0], t7, t4);
            const Lanes t9 = lut<0x4a>(t3, x[5], t8);
            const Lanes t10 = lut<0x47>(x[0], t8, x[1]);
            const Lanes t11 = lut<0x1d>(x[0], t4, t2);
            const Lanes t12 = lut<0x61>(t9, t11, t5);
            const Lanes t13 = lut<0xa9>(t12, x[4], t8);
            const Lanes t14 = lut<0x49>(t7, x[2], t11);
            const Lanes t15 = lut<0x74>(t3, x[3], t14);
            const Lanes t16 = lut<0x69>(t14, t2, t15);
            const Lanes t17 = lut<0x4b>(t16, x[3], x[2]);
            const Lanes t18 = lut<0x74>(t17, t1, t5);
            const Lanes t19 = lut<0x7b>(t10, x[2], t11);
            const Lanes t20 = lut<0x5c>(x[4], t17, t18);
            const Lanes t21 = lut<0x60>(t18, t15, x[3]);
            const Lanes t22 = lut<0x56>(t21, t4, t19);
            const Lanes t23 = lut<0x1d>(t10, x[4], t19);
            const Lanes t24 = lut<0xa6>(x[4], t22, t15);
            const Lanes t25 = lut<0x69>(t23, t18, t24);
            y[0] = t24;
            y[1] = t20;
            y[2] = t25;
            y[3] = t13;
        } else if constexpr (Box == 5) {  // 27 gates
            const Lanes t0 = lut<0x2a>(x[4], x[1], x[0]);
            const Lanes t1 = lut<0x96>(x[3], x[0], x[5]);
            const Lanes t2 = lut<0xc8>(t1, x[5], x[1]);
            const Lanes t3 = lut<0x57>(x[3], t0, t2);
            const Lanes t4 = lut<0x9e>(t3, x[4], t1);
            const Lanes t5 = lut<0x62>(x[5], t4, t1);
            const Lanes t6 = lut<0x66>(x[0], x[1], t5);
            const Lanes t7 = lut<0x54>(x[4], t3, t6);
            const Lanes t8 = lut<0xe1>(t4, t7, x[2]);
            const Lanes t9 = lut<0x0b>(t8, x[5], t6);
            const Lanes t10 = lut<0x8b>(t9, x[1], t7);
            const Lanes t11 = lut<0x71>(t2, t0, t9);
            const Lanes t12 = lut<0x47>(t9, x[4], x[0]);
            const Lanes t13 = lut<0x74>(t8, x[3], t3);
            const Lanes t14 = lut<0x7c>(x[5], t3, t11);
            const Lanes t15 = lut<0x51>(t12, t14, t5);
            const Lanes t16 = lut<0x96>(t14, t6, t13);
            const Lanes t17 = lut<0x6c>(x[2], t16, t15);
            const Lanes t18 = lut<0x08>(x[3], x[5], t5);
            const Lanes t19 = lut<0x67>(t13, x[4], t18);
            const Lanes t20 = lut<0x58>(x[2], t19, t10);
            const Lanes t21 = lut<0x09>(x[3], t20, t5);
            const Lanes t22 = lut<0x69>(t21, t4, t19);
            const Lanes t23 = lut<0x6a>(t11, x[0], t20);
            const Lanes t24 = lut<0x23>(x[0], t18, t23);
            const Lanes t25 = lut<0x6c>(x[2], t22, t24);
            const Lanes t26 = lut<0x61>(t25, t10, t6);
            y[0] = t8;
            y[1] = t26;
            y[2] = t23;
            y[3] = t17;
        } else if constexpr (Box == 6) {  // 28 gates
            const Lanes t0 = lut<0x34>(x[0], x[2], x[5]);
            const Lanes t1 = lut<0x69>(t0, x[5], x[1]);
            const Lanes t2 = lut<0xd6>(x[0], t1, x[2]);
            const Lanes t3 = lut<0xe4>(x[1], t2, t0);
            const Lanes t4 = lut<0x3a>(x[4], t2, t3);
            const Lanes t5 = lut<0x91>(t4, x[0], t3);
            const Lanes t6 = lut<0xe4>(t2, t5, x[1]);
            const Lanes t7 = lut<0x35>(x[2], t6, x[5]);
            const Lanes t8 = lut<0x86>(t6, t7, x[0]);
            const Lanes t9 = lut<0x1b>(t8, t6, x[4]);
            const Lanes t10 = lut<0x53>(x[3], t9, t4);
            const Lanes t11 = lut<0x1f>(x[3], t9, t2);
            const Lanes t12 = lut<0x4a>(x[3], t7, x[4]);
            const Lanes t13 = lut<0x69>(t7, t12, t3);
            const Lanes t14 = lut<0x26>(t3, t12, t1);
            const Lanes t15 = lut<0x36>(t11, t14, x[4]);
            const Lanes t16 = lut<0x25>(x[1], x[5], t13);
            const Lanes t17 = lut<0xe2>(t16, x[2], t15);
            const Lanes t18 = lut<0x11>(t11, t0, t17);
            const Lanes t19 = lut<0x86>(t18, t1, x[4]);
            const Lanes t20 = lut<0x6c>(t6, t13, t1);
            const Lanes t21 = lut<0xca>(x[3], t19, t20);
            const Lanes t22 = lut<0x4e>(t4, t17, x[3]);
            const Lanes t23 = lut<0xd6>(t22, t19, t2);
            const Lanes t24 = lut<0xe2>(t15, t5, t17);
            const Lanes t25 = lut<0xc4>(t13, x[3], t5);
            const Lanes t26 = lut<0xc6>(x[5], t25, t23);
            const Lanes t27 = lut<0x64>(t15, t1, t26);
            y[0] = t10;
            y[1] = t21;
            y[2] = t27;
            y[3] = t24;
        } else if constexpr (Box == 7) {  // 22 gates
            const Lanes t0 = lut<0x9e>(x[2], x[1], x[0]);
            const Lanes t1 = lut<0x69>(x[0], x[3], x[2]);
            const Lanes t2 = lut<0x1e>(t1, x[3], x[1]);
            const Lanes t3 = lut<0x1e>(x[3], t2, x[0]);
            const Lanes t4 = lut<0x48>(x[1], t1, x[2]);
            const Lanes t5 = lut<0x66>(x[2], t0, t3);
            const Lanes t6 = lut<0xb7>(x[4], t3, t4);
            const Lanes t7 = lut<0x69>(t4, t6, t0);
            const Lanes t8 = lut<0x8b>(t5, x[4], t1);
            const Lanes t9 = lut<0x1f>(t0, t8, x[5]);
            const Lanes t10 = lut<0x65>(t5, x[4], t2);
            const Lanes t11 = lut<0x2b>(x[1], x[4], t10);
            const Lanes t12 = lut<0x78>(x[5], x[0], t9);
            const Lanes t13 = lut<0x96>(t12, t11, x[3]);
            const Lanes t14 = lut<0x29>(t5, t13, t6);
            const Lanes t15 = lut<0x16>(x[1], t14, x[3]);
            const Lanes t16 = lut<0x68>(x[1], t6, t8);
            const Lanes t17 = lut<0x5b>(t8, t5, t13);
            const Lanes t18 = lut<0x56>(t16, x[5], t10);
            const Lanes t19 = lut<0xa6>(t15, x[5], t10);
            const Lanes t20 = lut<0xa3>(t17, t19, x[0]);
            const Lanes t21 = lut<0xc6>(x[5], t7, t20);
            y[0] = t18;
            y[1] = t13;
            y[2] = t21;
            y[3] = t19;
        }
    }
};

}  // namespace
}  // namespace morvane::cipher
