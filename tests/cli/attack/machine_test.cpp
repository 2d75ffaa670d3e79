// Machines that lack something: the message says what, about which path, in the system's words, and
// no status blames the job.
#include "attack.h"

#define RENDER "$V render k.pbk -i in.png -o out.png"

namespace vellumtide::cli {
namespace {

const Attack kMachine[] = {
    {"NoTemporaryFolder", "", "TMPDIR=/no/tmp " RENDER, 1,
     "/no/tmp (TMPDIR): No such file or directory"},
    {"NoTemporaryFolderForCheck", "", "TMPDIR=/no/tmp $V check k.pbk", 1, "1 of 1 programs failed",
     "", "grep -q '/no/tmp (TMPDIR): No such file' $OUT"},
    {"ForbiddenTemporaryFolder", "mkdir -m 500 locked", "TMPDIR=locked " RENDER, 1,
     "locked (TMPDIR): Permission denied", "", "", Attack::By::Ordinary},
    {"ForbiddenImage", "chmod 0 in.png", RENDER, 4, "in.png: cannot be opened: Permission denied",
     "", "", Attack::By::Ordinary},
    {"ForbiddenFolder", "chmod 0 sub",
     "$V render k.pbk -i sub/in.png -o out.png; S=$?; chmod 755 sub; exit $S", 4,
     "sub/in.png: Permission denied", "~sub ", "", Attack::By::Ordinary},
    {"ForbiddenProgram", "chmod 0 k.pbk", RENDER, 3, "k.pbk: cannot be read: Permission denied", "",
     "", Attack::By::Ordinary},
    {"LinkInACircle", "ln -s a.png c.png; ln -s c.png a.png", "$V render k.pbk -i a.png -o out.png",
     4, "a.png: Too many levels of symbolic links"},
    {"NameTooLong", "", "$V render k.pbk -i $(printf %0300d 1).png -o out.png", 4,
     "File name too long"},
    {"FileUnderAFile", "", "$V render k.pbk -i in.png/in.png -o out.png", 4,
     "in.png/in.png: Not a directory"},
    {"FolderGone", "mkdir gone",
     "K=$PWD/k.pbk; I=$PWD/in.png; cd gone; rmdir ../gone; $V render $K -i $I -o o.png", 4,
     "No such file or directory", "-gone "},
    {"FolderGoneThatIsNotNeeded", "mkdir gone",
     "T=$PWD; cd gone; rmdir ../gone; $V render $T/k.pbk -i $T/in.png -o $T/out.png", 0, "",
     "-gone +out.png "},
    {"FileTooLarge", "",
     "ulimit -f 1; $V render grey.pbk --size 600x600 --sample-type uint16 --compression "
     "0 -o out.png",
     4, "File too large"},
    {"FullDisk", "mkdir small",
     "mount -t tmpfs -o size=64k none small || exit 98; $V render grey.pbk --size 600x600 "
     "--compression 0 -o small/out.png; S=$?; ls -A "
     "small | grep . && exit 99; umount small; exit $S",
     4, "No space left on device", "", "", Attack::By::Root},
    {"LittleMemory", "", "ulimit -v 300000; " RENDER, 1, "Cannot allocate memory"},
};
INSTANTIATE_TEST_SUITE_P(Machine, AttackTest, testing::ValuesIn(kMachine), attackName);

// Whatever few files a process may have open, its end is either the picture or a reason.
TEST(Machine, FewDescriptors) {
  AttackedTree tree(Person::Root);
  int lacking = 0;
  for (int files = 4; files <= 40; ++files) {
    const AttackedTree::Result result =
        tree.run("ulimit -n " + std::to_string(files) + "; " + RENDER +
                 "; S=$?; rm -f out.png; "
                 "exit $S");
    EXPECT_EQ(result.changes, "") << files;
    if (result.status == 0) continue;
    ++lacking;
    EXPECT_TRUE(result.status == 1 || result.status == 4) << files << ": " << result.error;
    EXPECT_NE(result.error.find("Too many open files"), std::string::npos)
        << files << ": " << result.error;
  }
  EXPECT_GT(lacking, 0);
  EXPECT_LT(lacking, 30);
}

}  // namespace
}  // namespace vellumtide::cli
