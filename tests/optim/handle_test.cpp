// The handle: creation, validation (reasons 100, 101, 102) and destruction.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "common/testing.hpp"
#include "zeb.h"

namespace {

std::string c_message(void (*call)(void**, ZebError*), void** h) {
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  call(h, &fail);
  return fail.message;
}

TEST(Handle, CreationValidationAndDestruction) {
  void* h = nullptr;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  e04rac(&h, 0, &fail);
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, nvar = 0.\n  Constraint: nvar > 0.");
  EXPECT_EQ(fail.errnum, 6);
  EXPECT_EQ(h, nullptr) << "nothing the caller owns is touched on an error";
  e04rac(nullptr, 1, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter handle had an illegal value.");
  e04rac(&h, 1, &fail);
  ASSERT_EQ(fail.code, NE_NOERROR);
  ASSERT_NE(h, nullptr);
  e04rzc(&h, &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_EQ(h, nullptr);
  e04rzc(&h, &fail);
  EXPECT_EQ(fail.code, NE_NOERROR) << "a null handle is freed without complaint";

  // What is not a handle of the suite.
  int64_t foreign[9] = {65535, 'Z', 'P', 'U', 'X', 0, 0, 0, 0};
  int64_t no_record[9] = {65535, 'Z', 'P', 'U', 'I', 0, 0, 0, 0};
  void* p = foreign;
  EXPECT_EQ(c_message(e04rzc, &p),
            "NE_HANDLE:\n  handle does not belong to the ZEB optimization modelling suite,\n"
            "  has not been initialized properly or is corrupted.");
  p = no_record;
  EXPECT_EQ(c_message(e04rzc, &p),
            "NE_HANDLE:\n  handle has not been initialized properly or is corrupted.");
  EXPECT_EQ(p, static_cast<void*>(no_record));

  int64_t ifail = -1;
  p = foreign;
  const std::string out = zebtest::capture_stdout([&] { e04rzf_(&p, &ifail); });
  EXPECT_EQ(ifail, 1);
  EXPECT_EQ(out,
            " ** handle does not belong to the ZEB optimization modelling suite,\n"
            " ** has not been initialized properly or is corrupted.\n"
            " ** ABNORMAL EXIT from ZEB Library routine e04rzf: IFAIL =     1\n"
            " ** ZEB soft failure - control returned\n");
}

}  // namespace
