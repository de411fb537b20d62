// Runs the tests. Also fails if a test was skipped or none ran.
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const bool listing = testing::GTEST_FLAG(list_tests);
  const int result = RUN_ALL_TESTS();
  const testing::UnitTest& all = *testing::UnitTest::GetInstance();
  const bool complete = all.test_to_run_count() > 0 && all.skipped_test_count() == 0;
  return result == 0 && !listing && !complete ? 1 : result;
}
