// Every signal that ends a process, at every stage of a job that hangs there: the program ends by
// the signal, says so once, reports it and leaves nothing behind.
#include "attack.h"

#define TRAPPED                                                                      \
  "ulimit -c 0; ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0:handle_segv=0 " \
  "LD_PRELOAD=" VELLUMTIDE_TRAP " "
#define READING TRAPPED "TRAP_CALL=open TRAP_NAME=in.png "
#define BUILDING TRAPPED "TRAP_CALL=eglInitialize "
#define RENDERING TRAPPED "TRAP_CALL=glReadPixels "
#define WRITING TRAPPED "TRAP_CALL=open TRAP_NAME=.out "
#define NAMING TRAPPED "TRAP_CALL=rename TRAP_NAME=out.png "
#define REPORTING TRAPPED "TRAP_CALL=open TRAP_NAME=.r. "
#define JOB " $V render k.pbk -i in.png -o out.png --report r.json "
#define SEEN(command) "{ " command "; } 2>../seen; S=$?; cat ../seen >&2; exit $S"
#define SAYS_ONCE(text) "test $(grep -c '" text "' ../seen) = 1"
#define REPORTS(status) \
  "grep -q '\"interrupted\"' r.json; grep -q '\"exitStatus\": " status "' r.json"

namespace vellumtide::cli {
namespace {

constexpr const char* kNothing = "interrupted by SIGTERM: nothing was written";

const Attack kSignals[] = {
    {.name = "TermReading",
     .command = READING "TRAP_SIGNALS=15" JOB,
     .status = 143,
     .message = kNothing,
     .changes = "+r.json ",
     .check = REPORTS("143")},
    {.name = "IntReading",
     .command = READING "TRAP_SIGNALS=2" JOB,
     .status = 130,
     .message = "interrupted by SIGINT: nothing was written",
     .changes = "+r.json ",
     .check = REPORTS("130")},
    {.name = "HupReading",
     .command = READING "TRAP_SIGNALS=1" JOB,
     .status = 129,
     .message = "interrupted by SIGHUP: nothing was written",
     .changes = "+r.json ",
     .check = REPORTS("129")},
    {.name = "QuitReading",
     .command = READING "TRAP_SIGNALS=3" JOB,
     .status = 131,
     .message = "interrupted by SIGQUIT",
     .changes = "+r.json "},
    {.name = "TimeUsedUpReading",
     .command = READING "TRAP_SIGNALS=24" JOB,
     .status = 152,
     .message = "interrupted by SIGXCPU",
     .changes = "+r.json "},
    {.name = "WarnedReading",
     .command = READING "TRAP_SIGNALS=10" JOB,
     .status = 138,
     .message = "interrupted by SIGUSR1",
     .changes = "+r.json "},
    {.name = "TermTwiceReading",
     .command = SEEN(READING "TRAP_SIGNALS='15 15'" JOB "--progress openjd"),
     .status = 143,
     .message = kNothing,
     .changes = "+r.json ",
     .check = SAYS_ONCE("interrupted by") "; test $(grep -c openjd_fail $OUT) = 1"},
    // The job ends by itself while the watch over signals still tries to report for it.
    {.name = "TermReadingForLongerThanTheGrace",
     .command = SEEN("mkfifo ../streams/p; " READING "TRAP_SIGNALS=15 TRAP_PASSES=2200 $V render "
                     "k.pbk -i in.png -o out.png --report ../streams/p"),
     .status = 143,
     .message = kNothing,
     .check = SAYS_ONCE("interrupted by")},
    // What is on its way is finished in peace when a signal comes twice, but not when Ctrl-C does.
    {.name = "TermTwiceNaming",
     .command = NAMING "TRAP_SIGNALS='15 15' TRAP_PASSES=500" JOB,
     .changes = "+out.png +r.json ",
     .check = "grep -q '\"done\"' r.json"},
    {.name = "IntTwiceNaming",
     .command = NAMING "TRAP_SIGNALS='2 2' TRAP_GAP=600 TRAP_PASSES=400" JOB,
     .status = 130,
     .message = "interrupted by SIGINT: nothing was written",
     .changes = "+r.json ",
     .check = REPORTS("130")},
    {.name = "TermReadingTheProgram",
     .command = TRAPPED "TRAP_CALL=open TRAP_NAME=k.pbk TRAP_SIGNALS=15" JOB "--progress json",
     .status = 143,
     .message = kNothing,
     .changes = "+r.json ",
     .check = REPORTS("143") "; tail -n 1 $OUT | grep -q '\"exitStatus\":143'"},
    {.name = "TermBuilding",
     .command = BUILDING "TRAP_SIGNALS=15" JOB,
     .status = 143,
     .message = kNothing,
     .changes = "+r.json ",
     .check = REPORTS("143")},
    {.name = "IntRendering",
     .command = RENDERING "TRAP_SIGNALS=2" JOB,
     .status = 130,
     .message = "interrupted by SIGINT: nothing was written",
     .changes = "+r.json ",
     .check = REPORTS("130")},
    {.name = "TermTwiceRendering",
     .command = SEEN(RENDERING "TRAP_SIGNALS='15 15'" JOB),
     .status = 143,
     .message = kNothing,
     .changes = "+r.json ",
     .check = SAYS_ONCE("interrupted by")},
    {.name = "HupWriting",
     .command = WRITING "TRAP_SIGNALS=1" JOB,
     .status = 129,
     .message = "interrupted by SIGHUP: nothing was written",
     .changes = "+r.json ",
     .check = REPORTS("129")},
    {.name = "TermNaming",
     .command = NAMING "TRAP_SIGNALS=15" JOB,
     .status = 143,
     .message = kNothing,
     .changes = "+r.json "},
    // Nobody can write the report that hangs; the picture is done.
    {.name = "TermReporting",
     .command = REPORTING "TRAP_SIGNALS=15" JOB,
     .status = 143,
     .message = "interrupted by SIGTERM",
     .changes = "+out.png "},
    {.name = "TermOfASequenceNamesWhatIsLeft",
     .command = SEEN(TRAPPED "TRAP_CALL=open TRAP_NAME=s.2.png TRAP_SIGNALS=15 $V render k.pbk "
                             "-i s.#.png -o o.#.exr --threads 1 --frames 2,1,3"),
     .status = 143,
     .message = "with --frames 2,1,3",
     .check = SAYS_ONCE("0 of 3 frames are complete")},
    {.name = "CrashRendering", .command = RENDERING "TRAP_SIGNALS=11" JOB, .status = 139},
    {.name = "CrashWriting", .command = NAMING "TRAP_SIGNALS=6" JOB, .status = 134},
    // Signals that were ignored stay so.
    {.name = "NoHup",
     .command = "trap '' HUP; " READING "TRAP_PASSES=1 TRAP_SIGNALS=1 $V render k.pbk -i in.png "
                "-o out.png",
     .changes = "+out.png "},
    {.name = "TermSheet",
     .command = SEEN(RENDERING "TRAP_SIGNALS=15 $V sheet k.pbk -i in.png -o out.png"),
     .status = 143,
     .message = "interrupted by SIGTERM",
     .check = SAYS_ONCE("interrupted by")},
    {.name = "IntCompare",
     .command = READING "TRAP_SIGNALS=2 $V compare b.png in.png -o out.png",
     .status = 130,
     .message = "interrupted by SIGINT"},
    {.name = "TermCheck",
     .command = TRAPPED "TRAP_CALL=eglInitialize $V check k.pbk & "
                        "until pgrep -P $! >/dev/null; do :; done; C=$(pgrep -P $!); "
                        "kill -TERM $!; wait $!; S=$?; kill -0 $C 2>/dev/null && exit 99; exit $S",
     .status = 143,
     .message = "interrupted by SIGTERM"},
    {.name = "CheckLimit",
     .command = BUILDING "$V check --limit 1 k.pbk",
     .status = 3,
     .message = "1 of 1 programs failed",
     .check = "grep -q 'took longer than 1 second' $OUT"},
    {.name = "TermWatch",
     .command = READING "TRAP_SIGNALS=15" JOB "--watch",
     .status = 143,
     .message = kNothing,
     .changes = "+r.json "},
    {.name = "TermProjectRender",
     .setUp = "$V project new p.json k.pbk -i in.png",
     .command = RENDERING "TRAP_SIGNALS=15 $V project render p.json -o out.png",
     .status = 143,
     .message = "interrupted by SIGTERM"},
    {.name = "TermInspect",
     .command = TRAPPED "TRAP_CALL=open TRAP_NAME=k.pbk TRAP_SIGNALS=15 $V inspect k.pbk",
     .status = 143,
     .message = "interrupted by SIGTERM"},
    // A reader of the messages that hangs: nobody empties the pipe.
    {.name = "TermWithStuckMessages",
     .command = "mkfifo ../streams/p; exec 7<>../streams/p; head -c 65536 /dev/zero >&7; " READING
                "TRAP_SIGNALS=15" JOB "2>&7",
     .status = 143,
     .changes = "+r.json ",
     .check = REPORTS("143")},
};
INSTANTIATE_TEST_SUITE_P(Signals, AttackTest, testing::ValuesIn(kSignals), attackName);

// What is written to has no reader any more.
const Attack kReaders[] = {
    {.name = "PlainProgress",
     .command = "set -o pipefail; $V render k.pbk -i s.#.png -o o.#.png --progress plain 2>&1 | "
                "true",
     .changes = "+o.1.png +o.2.png +o.3.png "},
    {.name = "JsonProgress",
     .command = "set -o pipefail; $V render k.pbk -i s.#.png -o o.#.png --progress json --report "
                "r.json | true",
     .changes = "+o.1.png +o.2.png +o.3.png +r.json ",
     .check = "grep -q '\"done\"' r.json"},
    {.name = "Inspection",
     .command = "set -o pipefail; $V inspect --json k.pbk | true; test ${PIPESTATUS[0]} = 141 -o "
                "${PIPESTATUS[0]} = 0"},
    {.name = "FullDiskForProgress",
     .command = "$V render k.pbk -i in.png -o out.png --progress json >/dev/full",
     .message = "standard output cannot be written: No space left on device; the progress ends",
     .changes = "+out.png "},
};
INSTANTIATE_TEST_SUITE_P(Readers, AttackTest, testing::ValuesIn(kReaders), attackName);

}  // namespace
}  // namespace vellumtide::cli
