#include "nerio3d/core/nrGlobal.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "nerio3d/core/nrString.h"
#include "nrCapture.h"

TEST(nrGlobalNotify, PrintsSeverityTypeAndMessageVerbatim) {
  // Every severity is printed; the message is never used as a format.
  const struct {
    int severity, type;
    const char *message, *expected;
  } cases[] = {
      {nrGlobal::FATAL, nrGlobal::RESOURCE, "x", "(FATAL, RESOURCE): x\n"},
      {nrGlobal::DEBUG, nrGlobal::PRINT, "%d %s", "(DEBUG, PRINT): %d %s\n"},
      {nrGlobal::FP_DEBUG, nrGlobal::MORE, "m\n", "(FP_DEBUG, MORE): m\n\n"},
      {7, -1, nullptr, "(?, ?): \n"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(nrtest::captureStderr([&] {
                nrGlobal::notify(nrGlobal::NotifySeverityEnum(c.severity), nrGlobal::NotifyTypeEnum(c.type), c.message);
              }),
              c.expected);
}

namespace {
// A scratch directory that is the working directory while the test runs.
class nrFileSearch : public testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/nrFileSearchXXXXXX";
    root = mkdtemp(pattern);
    oldCwd = getcwd(nullptr, 0);
    ASSERT_EQ(chdir(root.c_str()), 0);
  }
  void TearDown() override {
    unsetenv("NR_DATAFILE_PATH");
    nrGlobal::setFilePath(nullptr);
    EXPECT_EQ(chdir(oldCwd), 0);
    free(oldCwd);
    std::string command = "rm -rf '" + root + "'";
    EXPECT_EQ(system(command.c_str()), 0);
  }

  void makeDir(const std::string& dir) { ASSERT_EQ(mkdir((root + "/" + dir).c_str(), 0755), 0); }
  void makeFile(const std::string& path) { fclose(fopen((root + "/" + path).c_str(), "w")); }
  bool exists(const std::string& path) { return access((root + "/" + path).c_str(), F_OK) == 0; }

  std::string found(const char* name, int expected, int mode = nrGlobal::READ_FMODE) {
    nrString result("stale");
    EXPECT_EQ(nrGlobal::findFile(name, result, mode), expected) << name;
    return result.isNull() ? "<null>" : result.getString();
  }

  std::string root;
  char* oldCwd = nullptr;
};
}  // namespace

TEST_F(nrFileSearch, FilePathKeepsWholeStringAndItsPieces) {
  nrGlobal::setFilePath("a::b");
  EXPECT_STREQ(nrGlobal::getFilePath(), "a::b");
  nrGlobal::setFilePath(nrGlobal::getFilePath());
  EXPECT_STREQ(nrGlobal::getFilePath(), "a::b");
  nrGlobal::setFilePath("");
  EXPECT_EQ(nrGlobal::getFilePath(), nullptr);

  // Pieces, not the whole string, are searched: a directory literally named
  // "p1:p2" is never looked into, while p2 is.
  makeDir("p1:p2");
  makeFile("p1:p2/whole.wrl");
  makeDir("p2");
  makeFile("p2/piece.wrl");
  nrGlobal::setFilePath(":p1:p2:");
  EXPECT_EQ(found("piece.wrl", 1), "p2/piece.wrl");
  EXPECT_EQ(found("whole.wrl", 0), "p2/whole.wrl");
}

TEST_F(nrFileSearch, SearchOrderIsNameEnvironmentThenFilePath) {
  for (const char* d : {"dir1", "dir2", "list1", "list2"}) makeDir(d);
  setenv("NR_DATAFILE_PATH", (root + "/dir1::" + root + "/dir2/").c_str(), 1);
  nrGlobal::setFilePath("list1:list2");

  // Each file made hides the ones before it; no second slash after "dir2/".
  for (std::string made : {"list2/x.wrl", "list1/x.wrl", "/dir2/x.wrl", "/dir1/x.wrl", "x.wrl"}) {
    makeFile(made);
    EXPECT_EQ(found("x.wrl", 1), made[0] == '/' ? root + made : made);
  }

  EXPECT_EQ(found("missing.wrl", 0), "list2/missing.wrl");
  EXPECT_EQ(found("", 0), "<null>");
  EXPECT_EQ(found(nullptr, 0), "<null>");

  // The name may be the result's own text.
  nrString result("x.wrl");
  EXPECT_EQ(nrGlobal::findFile(result.getString(), result, nrGlobal::READ_FMODE), 1);
  EXPECT_TRUE(result == "x.wrl");
}

TEST_F(nrFileSearch, DirectoryPartIsDroppedOnSecondTry) {
  for (const char* d : {"dir1", "dir2"}) makeDir(d);
  setenv("NR_DATAFILE_PATH", (root + "/dir1:" + root + "/dir2/").c_str(), 1);

  for (std::string dir : {"/dir2/", "/dir1/"}) {
    makeFile(dir + "x.wrl");
    EXPECT_EQ(found("models/x.wrl", 1), root + dir + "/x.wrl");
  }
  makeDir("models");
  makeFile("models/x.wrl");
  EXPECT_EQ(found("models/x.wrl", 1), "models/x.wrl");

  EXPECT_EQ(found("models/y.wrl", 0), root + "/dir2//y.wrl");
  EXPECT_EQ(found("y.wrl", 0), root + "/dir2/y.wrl");
}

TEST_F(nrFileSearch, WriteModeProbesByCreating) {
  EXPECT_EQ(found("new.wrl", 0, nrGlobal::READ_BINARY_FMODE), "new.wrl");
  EXPECT_FALSE(exists("new.wrl"));
  EXPECT_EQ(found("new.wrl", 1, nrGlobal::WRITE_FMODE), "new.wrl");
  EXPECT_TRUE(exists("new.wrl"));
  EXPECT_EQ(found("new.wrl", 1, nrGlobal::READ_TEXT_FMODE), "new.wrl");
  EXPECT_EQ(found("new.wrl", 0, 4), "<null>") << "a mode outside the enumeration finds nothing";
}
