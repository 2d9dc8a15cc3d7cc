// RC5 keys that need memory, when there is none.
#include <morvane/cipher.h>

#include "support/bytes.h"
#include "support/failing_heap.h"

#include <gtest/gtest.h>

namespace {

using namespace morvane::test;

TEST(Rc5, WithoutMemoryForALongKeyLeavesZeros) {
    const Bytes key(257, 'k');
    Bytes schedule(sizeof(E_RC5_KEY_SCHEDULE), 1);
    E_RC5_KEY_SCHEDULE short_key;
    {
        const FailingHeap heap(0);
        E_RC5_KeySchedule(reinterpret_cast<E_RC5_KEY_SCHEDULE*>(schedule.data()), key.data(), 257, 12);
        E_RC5_KeySchedule(&short_key, key.data(), 256, 12);
    }
    EXPECT_EQ(schedule, Bytes(schedule.size()));
    EXPECT_EQ(short_key.rounds, 12U);
}

}  // namespace
