// Machines that lack something: the message says what, about which path, in the system's words, and
// no status blames the job.
#include "attack.h"

#define RENDER "$V render k.pbk -i in.png -o out.png"

namespace vellumtide::cli {
namespace {

const Attack kMachine[] = {
    {.name = "NoTemporaryFolder",
     .command = "TMPDIR=/no/tmp " RENDER,
     .status = 1,
     .message = "/no/tmp (TMPDIR): No such file or directory"},
    {.name = "NoTemporaryFolderForCheck",
     .command = "TMPDIR=/no/tmp $V check k.pbk",
     .status = 1,
     .message = "/no/tmp (TMPDIR): No such file or directory"},
    {.name = "ForbiddenTemporaryFolder",
     .setUp = "mkdir -m 500 locked",
     .command = "TMPDIR=locked " RENDER,
     .status = 1,
     .message = "locked (TMPDIR): Permission denied",
     .by = Attack::By::Ordinary},
    {.name = "ForbiddenImage",
     .setUp = "chmod 0 in.png",
     .command = RENDER,
     .status = 4,
     .message = "in.png: cannot be opened: Permission denied",
     .by = Attack::By::Ordinary},
    {.name = "ForbiddenFolder",
     .setUp = "chmod 0 sub",
     .command = "$V render k.pbk -i sub/in.png -o out.png; S=$?; chmod 755 sub; exit $S",
     .status = 4,
     .message = "sub/in.png: Permission denied",
     .changes = "~sub ",
     .by = Attack::By::Ordinary},
    {.name = "ForbiddenProgram",
     .setUp = "chmod 0 k.pbk",
     .command = RENDER,
     .status = 3,
     .message = "k.pbk: cannot be read: Permission denied",
     .by = Attack::By::Ordinary},
    {.name = "LinkInACircle",
     .setUp = "ln -s a.png c.png; ln -s c.png a.png",
     .command = "$V render k.pbk -i a.png -o out.png",
     .status = 4,
     .message = "a.png: Too many levels of symbolic links"},
    {.name = "NameTooLong",
     .command = "$V render k.pbk -i $(printf %0300d 1).png -o out.png",
     .status = 4,
     .message = "File name too long"},
    {.name = "FileUnderAFile",
     .command = "$V render k.pbk -i in.png/in.png -o out.png",
     .status = 4,
     .message = "in.png/in.png: Not a directory"},
    {.name = "FolderGone",
     .setUp = "mkdir gone",
     .command = "K=$PWD/k.pbk; I=$PWD/in.png; cd gone; rmdir ../gone; $V render $K -i $I -o o.png",
     .status = 4,
     .message = "No such file or directory",
     .changes = "-gone "},
    {.name = "FolderGoneThatIsNotNeeded",
     .setUp = "mkdir gone",
     .command = "T=$PWD; cd gone; rmdir ../gone; $V render $T/k.pbk -i $T/in.png -o $T/out.png",
     .changes = "-gone +out.png "},
    {.name = "FileTooLarge",
     .command = "ulimit -f 1; $V render grey.pbk --size 600x600 --sample-type uint16 --compression "
                "0 -o out.png",
     .status = 4,
     .message = "File too large"},
    {.name = "FullDisk",
     .setUp = "mkdir small",
     .command =
         "mount -t tmpfs -o size=64k none small || exit 98; $V render grey.pbk --size 600x600 "
         "--compression 0 -o small/out.png; S=$?; ls -A "
         "small | grep . && exit 99; umount small; exit $S",
     .status = 4,
     .message = "No space left on device",
     .by = Attack::By::Root},
#ifndef VELLUMTIDE_SANITIZED  // sanitizers take more addresses than any limit leaves
    {.name = "LittleMemory",
     .command = "ulimit -v 300000; " RENDER,
     .status = 1,
     .message = "Cannot allocate memory"},
    // Its header says 16000 x 16000.
    {.name = "LittleMemoryForAPicture",
     .setUp =
         R"(printf '\211PNG\r\n\032\n\0\0\0\rIHDR\0\0\076\200\0\0\076\200\010\006\0\0\0A\176\337)"
         R"(\336\0\0\0\0IDAT5\257\006\036' >huge.png)",
     .command = "ulimit -v 600000; $V compare huge.png in.png",
     .status = 1,
     .message = "there is not enough memory"},
#endif
};
INSTANTIATE_TEST_SUITE_P(Machine, AttackTest, testing::ValuesIn(kMachine), attackName);

#ifndef VELLUMTIDE_SANITIZED  // sanitizers take files, too, and misjudge when there are none
// What runs the tests may hand on files of its own.
const std::string kOwnFilesOnly = "exec 3>&- 4>&- 5>&- 6>&- 7>&- 8>&- 9>&-; ";

// Whatever few files a process may have open, its end is either the picture or a reason.
TEST(Machine, FewDescriptors) {
  AttackedTree tree(Person::Root);
  int lacking = 0;
  for (int files = 4; files <= 40; ++files) {
    const AttackedTree::Result result =
        tree.run(kOwnFilesOnly + ("(ulimit -n " + std::to_string(files) + "; ") + RENDER +
                 "); S=$?; rm -f out.png; exit $S");
    EXPECT_EQ(result.changes, "") << files;
    // Even the system's loader needs some, and ends with a status of its own.
    if (result.status == 0 || result.status == 127) continue;
    ++lacking;
    EXPECT_TRUE(result.status == 1 || result.status == 4) << files << ": " << result.error;
    EXPECT_NE(result.error.find("Too many open files"), std::string::npos)
        << files << ": " << result.error;
  }
  EXPECT_GT(lacking, 0);
  EXPECT_LT(lacking, 30);
}
#endif

}  // namespace
}  // namespace vellumtide::cli
