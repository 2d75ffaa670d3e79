// Every option that names a file to write, against every kind of thing that can stand there.
#include "attack.h"

namespace vellumtide::cli {
namespace {

constexpr auto kRoot = Attack::By::Root, kOrdinary = Attack::By::Ordinary;

const Attack kTargets[] = {
    {"NewFile", "umask 077", "$V render k.pbk -i in.png -o new.png", 0, "", "+new.png ",
     "[ $(stat -c %a new.png) = 644 ]"},
    {"PermissionsAreKept", "chmod 640 old.png; chmod 4705 old.json",
     "$V render k.pbk -i in.png -o old.png --report old.json", 0, "", "~old.json ~old.png ",
     "[ \"$(stat -c %a old.png old.json | xargs)\" = '640 4705' ]"},
    {"OwnersAreKeptWhereAllowed", "chown 1234:4321 old.png", "$V render k.pbk -i in.png -o old.png",
     0, "", "~old.png ", "[ $(stat -c %u:%g old.png) = 1234:4321 ]", kRoot},
    {"OtherHardLinksKeepTheOldPicture", "ln old.png second.png",
     "$V render k.pbk -i in.png -o old.png", 0, "", "~old.png "},
    {"LinkIsFollowed", "ln -s ../old.png sub/link.png", "$V render k.pbk -i in.png -o sub/link.png",
     0, "", "~old.png "},
    {"LinkToWhatIsNotYetThere", "ln -s two.png one.png; ln -s sub/new.png two.png",
     "$V render k.pbk -i in.png -o one.png", 0, "", "+sub/new.png "},
    {"LinkToNoFolder", "ln -s no/new.png link.png", "$V render k.pbk -i in.png -o link.png", 4,
     "link.png: cannot be written: there is no folder no"},
    {"LinksInACircle", "ln -s two.png one.png; ln -s one.png two.png",
     "$V render k.pbk -i in.png -o one.png", 4,
     "one.png: cannot be written: its links lead in a circle"},
    {"NoFolder", "", "$V render k.pbk -i in.png -o no/new.png", 4, "there is no folder no"},
    {"FileAsFolder", "", "$V render k.pbk -i in.png -o in.png/new.png", 4,
     "there is no folder in.png"},
    {"Folder", "mkdir new.png", "$V render k.pbk -i in.png -o new.png", 4,
     "new.png: cannot be written: it is a folder"},
    {"Pipe", "mkfifo p.png", "cat p.png > new.png & $V render k.pbk -i in.png -o p.png && wait $!",
     0, "", "+new.png "},
    {"DeviceIsWrittenInto", "mknod null.png c 1 3; ln -s null.png link.png",
     "$V render k.pbk -i in.png -o link.png --report null.png", 0, "", "", "", kRoot},
    {"DeviceOfTheSystem", "ln -s /dev/null null.png",
     "$V render k.pbk -i in.png -o null.png --report /dev/null", 0, "", "", "[ -c /dev/null ]",
     kOrdinary},
    {"FullDevice", "ln -s /dev/full full.png", "$V render k.pbk -i in.png -o full.png", 4,
     "full.png: cannot be written: No space left on device", "", "", kOrdinary},
    {"BlockDevice", "mknod disk.png b 240 240", "$V render k.pbk -i in.png -o disk.png", 4,
     "it is a block device", "", "", kRoot},
    {"WriteProtectedFile", "chmod 444 old.png", "$V render k.pbk -i in.png -o old.png", 4,
     "old.png: cannot be written: Permission denied", "", "", kOrdinary},
    {"WriteProtectedFolder", "chmod 555 sub", "$V render k.pbk -i in.png -o sub/new.png", 4,
     "the folder sub takes no new file: Permission denied", "", "", kOrdinary},
    {"LongestName", "",
     "$V render k.pbk -i in.png -o $(printf '%0251d' 0).png && mv 0*.png new.png", 0, "",
     "+new.png "},
    {"TooLongName", "", "$V render k.pbk -i in.png -o $(printf '%0252d' 0).png", 4,
     "File name too long"},
    {"StandardOutput", "", "$V render k.pbk -i in.png -o -", 0, "", "", "cmp -n 8 $OUT in.png"},
};
INSTANTIATE_TEST_SUITE_P(Targets, AttackTest, testing::ValuesIn(kTargets), attackName);

const Attack kOptions[] = {
    {"ReportToStandardError", "",
     "$V render k.pbk -i in.png -o new.png --report /dev/stderr 2>&1 | cat > log", 0, "",
     "+log +new.png ", "grep -q '\"status\": \"done\"' log"},
    {"ReportIntoAnOpenFile", "",
     "(echo first; $V render k.pbk -i in.png -o new.png --report /dev/stdout) > log", 0, "",
     "+log +new.png ", "grep -qx first log; grep -q '\"status\": \"done\"' log"},
    {"ReportToStandardOutput", "", "$V render k.pbk -i in.png -o new.png --report -", 0, "",
     "+new.png ", "grep -q '\"status\": \"done\"' $OUT"},
    {"ReportBehindALink", "ln -s sub/r.json r.json",
     "$V render k.pbk -i in.png -o new.png --report r.json", 0, "", "+new.png +sub/r.json "},
    {"ReportIsAFolder", "", "$V render k.pbk -i in.png -o new.png --report sub", 1,
     "--report sub: cannot be written: it is a folder"},
    {"ReportFolderIsProtected", "chmod 555 sub",
     "$V render k.pbk -i in.png -o new.png --report sub/r.json", 1,
     "--report sub/r.json: cannot be written: the folder sub takes no new file", "", "", kOrdinary},
    {"DrawingBehindALink", "ln -s new.dot link.dot", "$V inspect k.pbk --graph dot -o link.dot", 0,
     "", "+new.dot "},
    {"DrawingToAPipe", "", "$V inspect k.pbk --graph dot -o >(cat > new.dot); sleep 0.2", 0, "",
     "+new.dot "},
    {"DrawingToStandardOutput", "", "$V inspect k.pbk --graph dot -o -", 0, "", "",
     "grep -q digraph $OUT"},
    {"DrawingToAFolder", "", "$V inspect k.pbk --graph dot -o sub", 4,
     "sub: cannot be written: it is a folder"},
    {"SheetToStandardOutput", "", "$V sheet in.png b.png -o -", 0, "", "", "cmp -n 8 $OUT in.png"},
    {"SheetAndItsListShareNoStream", "", "$V sheet in.png b.png -o - --json", 2,
     "-o -: standard output is for the list of --json"},
    {"SheetIntoAPipe", "mkfifo p.png",
     "cat p.png > new.png & $V sheet in.png b.png -o p.png && wait $!", 0, "", "+new.png "},
    {"DifferenceBehindALink", "ln -s new.png link.png", "$V compare in.png b.png -o link.png", 1,
     "differ in 48 of 48 pixels", "+new.png "},
    {"DifferenceAndFiguresShareNoStream", "", "$V compare in.png b.png -o -", 2,
     "-o -: standard output tells the figures"},
    {"PictureAndProgressShareNoStream", "", "$V render k.pbk -i in.png -o - --progress json", 2,
     "-o -: standard output is for the lines of --progress"},
    {"PictureAndReportShareNoStream", "", "$V render k.pbk -i in.png -o - --report -", 2,
     "is the same file as"},
    {"ProjectBehindALink",
     "ln -s sub/p.json p.json; chmod 600 old.json; touch p.json.part; touch old.json.part",
     "$V project new p.json k.pbk -i in.png && $V project new old.json k.pbk -i in.png", 0, "",
     "~old.json +sub/p.json ", "[ $(stat -c %a old.json) = 600 ]"},
    {"ProjectIsAFolder", "", "$V project new sub k.pbk -i in.png", 1,
     "sub: cannot be written: it is a folder"},
    {"ProjectRenderedIntoAPipe", "mkfifo p.png; $V project new p.json k.pbk -i in.png",
     "cat p.png > new.png & $V project render p.json -o p.png && wait $!", 0, "", "+new.png "},
};
INSTANTIATE_TEST_SUITE_P(Options, AttackTest, testing::ValuesIn(kOptions), attackName);

// What KILL left is removed by the next run of the same output, unless somebody still writes it.
const Attack kLeftovers[] = {
    {"LeftByKill", "touch .new.unfinished0.png .new.unfinished1.png .other.unfinished0.png",
     "$V render k.pbk -i in.png -o new.png", 0, "",
     "-.new.unfinished0.png -.new.unfinished1.png +new.png "},
    {"StillWritten", "touch .new.unfinished0.png .new.unfinished1.png",
     "exec 9<.new.unfinished0.png; flock 9; $V render k.pbk -i in.png -o new.png", 0, "",
     "-.new.unfinished1.png +new.png "},
    {"NoFileOfThatName", "mkdir .new.unfinished0.png; ln -s ../old.png .new.unfinished1.png",
     "$V render k.pbk -i in.png -o new.png", 0, "", "+new.png "},
    {"KilledInTheMiddle", "",
     "$V render grey.pbk --size 4000x4000 -o new.png --compression 9 & "
     "until ls .new.unfinished0.png; do sleep 0.05; done 2>/dev/null >&2; "
     "kill -KILL $!; wait $! 2>/dev/null; ls .new.unfinished0.png >/dev/null && "
     "$V render k.pbk -i in.png -o new.png && rm -r $TMPDIR/*",
     0, "", "+new.png "},
};
INSTANTIATE_TEST_SUITE_P(Leftovers, AttackTest, testing::ValuesIn(kLeftovers), attackName);

}  // namespace
}  // namespace vellumtide::cli
