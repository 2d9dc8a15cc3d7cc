#include "csp/cipher_table.h"
#include "csp/error.h"
#include "csp/session.h"

#include <gtest/gtest.h>

namespace {

using namespace morvane::csp;

TEST(ErrorCell, MovesForeignCodesAbove2000) {
    EXPECT_EQ(fail(5), -1);
    EXPECT_EQ(GetError(), 2005U);
    EXPECT_EQ(fail(999), -1);
    EXPECT_EQ(GetError(), 2999U);
    EXPECT_EQ(fail(1000), -1);
    EXPECT_EQ(GetError(), 1000U);
    EXPECT_EQ(fail(0xffffffff), -1);
    EXPECT_EQ(GetError(), 0xffffffffU);
}

TEST(Attributes, FirstOfATypeCountsAndAnAbsentOneIsRecorded) {
    const CSSM_CONTEXT_ATTRIBUTE attributes[] = {{7, 0, {1}}, {9, 0, {2}}, {9, 0, {3}}};
    CspSession session{};
    session.attributes = attributes;
    session.number_of_attributes = 3;
    EXPECT_EQ(find_attribute(session, 9), &attributes[1]);
    store_error(1);
    EXPECT_EQ(find_attribute(session, 8), nullptr);
    EXPECT_EQ(GetError(), CSP_ERR_NO_ATTRIBUTE);
    session.attributes = nullptr;
    session.number_of_attributes = 0;
    store_error(1);
    EXPECT_EQ(find_attribute(session, 9), nullptr);
    EXPECT_EQ(GetError(), CSP_ERR_NO_ATTRIBUTE);
}

TEST(Resolve, CopiesTheContextIntoAFreshRecord) {
    const CSSM_CONTEXT_ATTRIBUTE attribute = {7, 0, {1}};
    const CSSM_CONTEXT context = {11, 22, 33, 1, &attribute};
    CspSession handle_session{};
    const CspSession* const fresh = resolve(reinterpret_cast<CspHandle>(&handle_session), &context);
    ASSERT_NE(fresh, nullptr);
    EXPECT_NE(fresh, &handle_session);
    EXPECT_EQ(fresh->context_type, 11U);
    EXPECT_EQ(fresh->algorithm, 22U);
    EXPECT_EQ(fresh->number_of_attributes, 1U);
    EXPECT_EQ(fresh->attributes, &attribute);
    EXPECT_EQ(fresh->state, nullptr);
    EXPECT_EQ(resolve(reinterpret_cast<CspHandle>(&handle_session), nullptr), &handle_session);
}

}  // namespace
