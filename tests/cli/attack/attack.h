// Commands that try to make the program lose somebody's files: each is a row of a table and runs in
// a fresh tree of files, which is compared whole with what it was before.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "cli/files/scratch_folder.h"
#include "file_tree.h"

namespace vellumtide::cli {

enum class Person { Root, Ordinary };

struct Attack {
  enum class By { Both, Root, Ordinary };

  const char* name;        // letters and digits
  const char* setUp = "";  // shell lines, run in the tree before it is looked at
  // Shell lines that take no longer than half a minute; $V is the program. Standard input is empty.
  const char* command;
  int status = 0;
  const char* message = "";  // part of standard error; "": the program says nothing of its own
  // Every file that the command makes (+), changes (~) or removes (-), in the order of the names:
  // "+out.png ~r.json ". New and changed pictures and reports have to be whole.
  const char* changes = "";
  const char* check = "";  // shell lines that have to succeed afterwards; $OUT is standard output
  By by = By::Both;
};

// How a failing test prints a row.
void PrintTo(const Attack& row, std::ostream* stream);

// The tree and the program in it. What the tree holds at first:
//   k.pbk              a kernel that shows its picture; grey.pbk one that needs none
//   in.png b.png       8 x 6 pixels; b.png differs
//   s.1.png ... s.3.png  a sequence
//   keys.json          an animation file that holds no keys
//   old.png old.json   what an earlier run left
//   sub/               a folder with in.png in it
// Beside the tree lie tmp/ and home/, which have to stay empty.
class AttackedTree {
 public:
  struct Result {
    int status = 0;
    std::string out, error;
    std::string changes;
    std::string broken;  // new and changed files that are not whole
  };

  explicit AttackedTree(Person person);
  ~AttackedTree();

  // Whether this process can act as that person; if not, `reason` says why.
  static bool canActAs(Person person, std::string& reason);

  void setUp(const std::string& lines);
  Result run(const std::string& lines);
  bool check(const std::string& lines);

  std::filesystem::path file(const std::string& name) const { return root_ / name; }

 private:
  int shell(const std::string& lines, int seconds) const;

  ScratchFolder folder_;
  std::filesystem::path root_;
  Person person_;
};

// Runs a row as root and as an ordinary user. Tables are INSTANTIATE_TEST_SUITE_P(Table,
// AttackTest, testing::ValuesIn(kRows), attackName), each in a file of its own.
class AttackTest : public testing::TestWithParam<Attack> {};

std::string attackName(const testing::TestParamInfo<Attack>& row);

}  // namespace vellumtide::cli
