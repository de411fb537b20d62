// Runs the tests; an executable in which no test ran has failed.
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const bool listing = testing::GTEST_FLAG(list_tests);
  const int result = RUN_ALL_TESTS();
  return result == 0 && !listing && testing::UnitTest::GetInstance()->test_to_run_count() == 0 ? 1 : result;
}
