#include <filesystem>
#include <gtest/gtest.h>

#include "SystemApi.h"
#include "support/TempDirectory.h"

namespace {

namespace fs = std::filesystem;

// The name that a host on Windows would give finds the shared object.
constexpr const char* kResources = "Resources\\QZTUtlRes.dll";

TEST(LoadLibrary, FindsTheModuleBesideTheExecutableWhateverDirectoryIsCurrent) {
  const fs::path before = fs::current_path();
  const support::TempDirectory elsewhere;
  fs::current_path(elsewhere.Path());
  const HMODULE library = LoadLibraryA(kResources);
  fs::current_path(before);
  ASSERT_NE(library, nullptr);
  EXPECT_TRUE(FreeLibrary(library));
}

TEST(LoadLibrary, FindsTheModuleInTheCurrentDirectoryWhenItIsNotBesideTheExecutable) {
  const fs::path before = fs::current_path();
  const support::TempDirectory elsewhere;
  fs::copy_file(fs::read_symlink("/proc/self/exe").parent_path() / "Resources/QZTUtlRes.so",
                elsewhere.Path() / "OnlyHere.so");
  EXPECT_EQ(LoadLibraryA("OnlyHere.dll"), nullptr);
  fs::current_path(elsewhere.Path());
  const HMODULE library = LoadLibraryA("OnlyHere.dll");
  fs::current_path(before);
  ASSERT_NE(library, nullptr);
  EXPECT_TRUE(FreeLibrary(library));
}

TEST(LoadLibrary, FileThatIsNoLibraryGivesNull) {
  const support::TempDirectory directory;
  support::WriteWholeFile(directory.Path() / "text.so", "not a library");
  EXPECT_EQ(LoadLibraryA((directory.Path() / "text.dll").c_str()), nullptr);
  EXPECT_EQ(LoadLibraryA(""), nullptr);
}

TEST(FreeLibrary, RefusesNull) { EXPECT_FALSE(FreeLibrary(nullptr)); }

}  // namespace
