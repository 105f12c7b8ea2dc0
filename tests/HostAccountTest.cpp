// How the list of what a model lacks is kept short.
#include <gtest/gtest.h>

#include "model/Account.h"

namespace {

TEST(HostAccount, EntriesAreCountedCutAndLimited) {
  Account account(2);
  const SkippedItem item{Severity::kLost, "Note", "5", "5", std::string(5000, 'x'), 7};
  for (int i = 0; i < 3; ++i) account.Add(item);
  for (const char* id : {"6", "7", "8"}) {
    account.Add({Severity::kReduced, std::string(59, 'y') + "\u00FC", id, "", "r", 9});
  }
  ASSERT_EQ(account.Items().size(), 3U);
  EXPECT_EQ(account.Items()[0].count, 3);
  EXPECT_EQ(account.Items()[0].line, 7);
  EXPECT_LT(account.Items()[0].reason.size(), 300U);
  EXPECT_EQ(account.Items()[1].kind, std::string(59, 'y') + "...");  // no half of a character
  EXPECT_EQ(account.Items()[2].count, 2);
  EXPECT_EQ(account.Items()[2].severity, Severity::kReduced);
}

}  // namespace
