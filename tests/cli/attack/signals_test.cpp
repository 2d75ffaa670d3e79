// Every signal that ends a process, at every stage of a job that hangs there: the program ends by
// the signal, says so once, reports it and leaves nothing behind.
#include "attack.h"

#define TRAPPED "ulimit -c 0; ASAN_OPTIONS=verify_asan_link_order=0 LD_PRELOAD=" VELLUMTIDE_TRAP " "
#define READING TRAPPED "TRAP_CALL=open TRAP_NAME=in.png "
#define BUILDING TRAPPED "TRAP_CALL=eglInitialize "
#define RENDERING TRAPPED "TRAP_CALL=glReadPixels "
#define WRITING TRAPPED "TRAP_CALL=open TRAP_NAME=.out "
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
    {"TermReading", "", READING "TRAP_SIGNALS=15" JOB, 143, kNothing, "+r.json ", REPORTS("143")},
    {"IntReading", "", READING "TRAP_SIGNALS=2" JOB, 130,
     "interrupted by SIGINT: nothing was written", "+r.json ", REPORTS("130")},
    {"HupReading", "", READING "TRAP_SIGNALS=1" JOB, 129,
     "interrupted by SIGHUP: nothing was written", "+r.json ", REPORTS("129")},
    {"QuitReading", "", READING "TRAP_SIGNALS=3" JOB, 131, "interrupted by SIGQUIT", "+r.json "},
    {"TimeUsedUpReading", "", READING "TRAP_SIGNALS=24" JOB, 152, "interrupted by SIGXCPU",
     "+r.json "},
    {"WarnedReading", "", READING "TRAP_SIGNALS=10" JOB, 138, "interrupted by SIGUSR1", "+r.json "},
    {"TermTwiceReading", "", SEEN(READING "TRAP_SIGNALS='15 15'" JOB "--progress openjd"), 143,
     kNothing, "+r.json ", SAYS_ONCE("interrupted by") "; test $(grep -c openjd_fail $OUT) = 1"},
    {"TermReadingTheProgram", "",
     TRAPPED "TRAP_CALL=open TRAP_NAME=k.pbk TRAP_SIGNALS=15" JOB "--progress json", 143, kNothing,
     "+r.json ", REPORTS("143") "; tail -n 1 $OUT | grep -q '\"exitStatus\":143'"},
    {"TermBuilding", "", BUILDING "TRAP_SIGNALS=15" JOB, 143, kNothing, "+r.json ", REPORTS("143")},
    {"IntRendering", "", RENDERING "TRAP_SIGNALS=2" JOB, 130,
     "interrupted by SIGINT: nothing was written", "+r.json ", REPORTS("130")},
    {"TermTwiceRendering", "", SEEN(RENDERING "TRAP_SIGNALS='15 15'" JOB), 143, kNothing,
     "+r.json ", SAYS_ONCE("interrupted by")},
    {"HupWriting", "", WRITING "TRAP_SIGNALS=1" JOB, 129,
     "interrupted by SIGHUP: nothing was written", "+r.json ", REPORTS("129")},
    {"TermNaming", "", TRAPPED "TRAP_CALL=rename TRAP_NAME=out.png TRAP_SIGNALS=15" JOB, 143,
     kNothing, "+r.json "},
    // Nobody can write the report that hangs; the picture is done.
    {"TermReporting", "", REPORTING "TRAP_SIGNALS=15" JOB, 143, "interrupted by SIGTERM",
     "+out.png "},
    {"TermOfASequenceNamesWhatIsLeft", "",
     SEEN(TRAPPED "TRAP_CALL=open TRAP_NAME=s.2.png TRAP_SIGNALS=15 $V render k.pbk "
                  "-i s.#.png -o o.#.exr --threads 1 --frames 2,1,3"),
     143, "with --frames 2,1,3", "", SAYS_ONCE("0 of 3 frames are complete")},
    {"CrashRendering", "", RENDERING "TRAP_SIGNALS=11" JOB, 139},
    {"CrashWriting", "", TRAPPED "TRAP_CALL=rename TRAP_NAME=out.png TRAP_SIGNALS=6" JOB, 134},
    // Signals that were ignored stay so.
    {"NoHup", "",
     "trap '' HUP; " READING "TRAP_PASSES=1 TRAP_SIGNALS=1 $V render k.pbk -i in.png "
     "-o out.png",
     0, "", "+out.png "},
    {"TermSheet", "", SEEN(RENDERING "TRAP_SIGNALS=15 $V sheet k.pbk -i in.png -o out.png"), 143,
     "interrupted by SIGTERM", "", SAYS_ONCE("interrupted by")},
    {"IntCompare", "", READING "TRAP_SIGNALS=2 $V compare b.png in.png -o out.png", 130,
     "interrupted by SIGINT"},
    {"TermCheck", "",
     TRAPPED "TRAP_CALL=eglInitialize $V check k.pbk & "
             "until pgrep -P $! >/dev/null; do :; done; C=$(pgrep -P $!); "
             "kill -TERM $!; wait $!; S=$?; kill -0 $C 2>/dev/null && exit 99; exit $S",
     143, "interrupted by SIGTERM"},
    {"CheckLimit", "", BUILDING "$V check --limit 1 k.pbk", 3, "1 of 1 programs failed", "",
     "grep -q 'took longer than 1 second' $OUT"},
    {"TermWatch", "", READING "TRAP_SIGNALS=15" JOB "--watch", 143, kNothing, "+r.json "},
    {"TermProjectRender", "$V project new p.json k.pbk -i in.png",
     RENDERING "TRAP_SIGNALS=15 $V project render p.json -o out.png", 143,
     "interrupted by SIGTERM"},
    {"TermInspect", "", TRAPPED "TRAP_CALL=open TRAP_NAME=k.pbk TRAP_SIGNALS=15 $V inspect k.pbk",
     143, "interrupted by SIGTERM"},
    // A reader of the messages that hangs: nobody empties the pipe.
    {"TermWithStuckMessages", "",
     "mkfifo ../streams/p; exec 7<>../streams/p; head -c 65536 /dev/zero >&7; " READING
     "TRAP_SIGNALS=15" JOB "2>&7",
     143, "", "+r.json ", REPORTS("143")},
};
INSTANTIATE_TEST_SUITE_P(Signals, AttackTest, testing::ValuesIn(kSignals), attackName);

// What is written to has no reader any more.
const Attack kReaders[] = {
    {"PlainProgress", "",
     "set -o pipefail; $V render k.pbk -i s.#.png -o o.#.png --progress plain 2>&1 | "
     "true",
     0, "", "+o.1.png +o.2.png +o.3.png "},
    {"JsonProgress", "",
     "set -o pipefail; $V render k.pbk -i s.#.png -o o.#.png --progress json --report "
     "r.json | true",
     0, "", "+o.1.png +o.2.png +o.3.png +r.json ", "grep -q '\"done\"' r.json"},
    {"Inspection", "",
     "set -o pipefail; $V inspect --json k.pbk | true; test ${PIPESTATUS[0]} = 141 -o "
     "${PIPESTATUS[0]} = 0"},
    {"FullDiskForProgress", "", "$V render k.pbk -i in.png -o out.png --progress json >/dev/full",
     0, "standard output cannot be written: No space left on device; the progress ends",
     "+out.png "},
};
INSTANTIATE_TEST_SUITE_P(Readers, AttackTest, testing::ValuesIn(kReaders), attackName);

}  // namespace
}  // namespace vellumtide::cli
