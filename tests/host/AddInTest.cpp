#include <gtest/gtest.h>
#include <string>

#include "host/qzhost/AddIn.h"
#include "host/qzhost/AddInLibrary.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostSystem.h"
#include "platform/QZCore.h"
#include "support/TempDirectory.h"

namespace {

std::string TestAddIn() {
  std::string name = host::AddInFileName();
  return host::ExecutableDirectory() + name.replace(0, std::string("QZTUtlA").size(), "TestAddIn");
}

class AddInTest : public testing::Test {
 protected:
  void TearDown() override { host::SetEnvironmentText("QZ_TEST_ADDIN", ""); }

  // The one line that the loader gives; empty when it loads the add-in.
  std::string LoadError(const std::string& path) {
    try {
      const host::AddIn addIn(path);
    } catch (const host::CommandError& error) {
      EXPECT_EQ(error.Code(), host::kBadInput);
      return error.what();
    }
    return "";
  }
};

TEST_F(AddInTest, LoadsInitialisesAndFindsOperationsByName) {
  post_args[0][0] = 0;
  const host::AddIn addIn(TestAddIn());
  EXPECT_EQ(post_args[0][0], 1);
  EXPECT_EQ(addIn.Export<int()>("m_version")(), 1500);
}

TEST_F(AddInTest, MissingOperationIsNamed) {
  const host::AddIn addIn(TestAddIn());
  try {
    addIn.Export<void()>("qztutlNoSuchOperation");
    FAIL() << "found an operation that is not there";
  } catch (const host::CommandError& error) {
    EXPECT_NE(std::string(error.what()).find("qztutlNoSuchOperation"), std::string::npos);
  }
}

TEST_F(AddInTest, RefusalOfTheEntryRoutineIsTheReason) {
  host::SetEnvironmentText("QZ_TEST_ADDIN", "refuse");
  EXPECT_NE(LoadError(TestAddIn()).find("entry routine refuses"), std::string::npos);
}

TEST_F(AddInTest, OtherProtocolVersionIsRefused) {
  host::SetEnvironmentText("QZ_TEST_ADDIN", "version=1499");
  EXPECT_NE(LoadError(TestAddIn()).find("version 1499"), std::string::npos);
}

TEST_F(AddInTest, FailureOfTheMainEntryIsRefused) {
  host::SetEnvironmentText("QZ_TEST_ADDIN", "main=1");
  EXPECT_NE(LoadError(TestAddIn()).find("refuses to start"), std::string::npos);
}

TEST_F(AddInTest, MissingFileIsNamed) {
  const std::string error = LoadError("NoSuchAddIn.dll");
  EXPECT_NE(error.find("NoSuchAddIn"), std::string::npos);
}

TEST_F(AddInTest, FileThatIsNoLibraryIsRefused) {
  const support::TempDirectory directory;
  const auto path = directory.Path() / host::AddInFileName();
  support::WriteWholeFile(path, "not a library");
  EXPECT_FALSE(LoadError(path.string()).empty());
}

}  // namespace
