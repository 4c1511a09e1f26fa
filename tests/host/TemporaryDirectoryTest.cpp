#include <filesystem>
#include <gtest/gtest.h>
#include <optional>

#include "host/qzhost/TemporaryDirectory.h"
#include "support/TempDirectory.h"

namespace {

using host::TemporaryDirectory;

TEST(TemporaryDirectory, GoesWithEverythingInIt) {
  std::filesystem::path path;
  {
    const TemporaryDirectory directory;
    path = std::filesystem::path(directory.File("a.iff")).parent_path();
    EXPECT_TRUE(std::filesystem::is_directory(path));
    EXPECT_TRUE(std::filesystem::is_empty(path));
    support::WriteWholeFile(directory.File("a.iff"), "text");
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(TemporaryDirectory, TwoAtATimeAreTwo) {
  const TemporaryDirectory first;
  const TemporaryDirectory second;
  EXPECT_NE(first.File("a"), second.File("a"));
}

}  // namespace
