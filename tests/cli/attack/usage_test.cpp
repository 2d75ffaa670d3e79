// Values that say nothing, and reports that tell of the earliest failures.
#include "attack.h"

#define RENDER "$V render k.pbk -i in.png -o out.png "
#define OLD_REPORT "echo '{\"status\": \"done\", \"exitStatus\": 0}' >r.json"
#define FAILED(status) "grep -q '\"failed\"' r.json; grep -q '\"exitStatus\": " status "' r.json"

namespace vellumtide::cli {
namespace {

Attack empty(const char* name, const char* command) {
  return {.name = name, .command = command, .status = 2, .message = "the value is empty"};
}

const Attack kEmpty[] = {
    empty("Frames", "$V render k.pbk -i s.#.png -o o.#.png --frames ''"),
    empty("FramesWithEquals", "$V render k.pbk -i s.#.png -o o.#.png --frames= --keep-going"),
    empty("Size", "$V render grey.pbk -o out.png --size 8x6 --size '' -i in.png"),
    empty("Fps", RENDER "--fps ''"),
    empty("PixelAspect", RENDER "--pixel-aspect ''"),
    empty("SampleType", RENDER "--progress none --module ''"),
    empty("Report", RENDER "--report ''"),
    empty("Setting", RENDER "-p ''"),
    empty("Input", "$V render k.pbk -i '' -o out.png"),
    empty("Output", "$V render k.pbk -i in.png -o ''"),
    empty("Program", "$V render '' -i in.png -o out.png"),
    empty("Cell", "$V sheet k.pbk -i in.png -o out.png --cell=''"),
    empty("Background", "$V sheet k.pbk -i in.png -o out.png --background ''"),
    empty("Difference", "$V compare in.png b.png -o ''"),
    empty("CompareFrames", "$V compare in.png b.png --frames ''"),
    empty("Drawing", "$V inspect k.pbk --graph dot -o ''"),
    empty("RootFolder", "$V project show p.json --root-folder ''"),
};
INSTANTIATE_TEST_SUITE_P(Empty, AttackTest, testing::ValuesIn(kEmpty), attackName);

const Attack kMeant[] = {
    {"NoTitle", "",
     "$V sheet k.pbk -i in.png -o out.png --title '' && "
     "$V sheet k.pbk -i in.png -o same.png --title= && cmp out.png same.png",
     0, "", "+out.png +same.png "},
};
INSTANTIATE_TEST_SUITE_P(Meant, AttackTest, testing::ValuesIn(kMeant), attackName);

// An earlier report becomes one of the failure.
Attack reported(const char* name, const char* command, int status, const char* message,
                const char* check) {
  return {name, OLD_REPORT, command, status, message, "~r.json ", check};
}

const Attack kReports[] = {
    reported("UnknownOption", RENDER "--bogus --report r.json --progress openjd", 2,
             "there is no option --bogus",
             FAILED("2") "; grep -q 'openjd_fail: there is no option --bogus' $OUT"),
    reported("BadValue", RENDER "--report=r.json --depth 9 --progress json", 2, "--depth",
             FAILED("2") "; tail -n 1 $OUT | grep -q '\"event\":\"end\".*\"exitStatus\":2'"),
    reported("BadFrames", RENDER "--frames x --report r.json --progress json", 2, "--frames x",
             FAILED("2") "; tail -n 1 $OUT | grep -q '\"exitStatus\":2'"),
    reported("UnknownEnding",
             "$V render k.pbk -i in.png -o out.bmp --report r.json --progress openjd", 4,
             "the name has to end in", FAILED("4") "; grep -q openjd_fail $OUT"),
    reported("NoFolder", "$V render k.pbk -i in.png -o no/out.png --report r.json", 4,
             "there is no folder no", FAILED("4")),
    reported("NoProgram", "$V render no.pbk -i in.png -o out.png --report r.json", 3,
             "no.pbk: there is no such file", FAILED("3")),
    reported("UnknownControl", RENDER "-p No=1 --report r.json", 2, "there is no control",
             FAILED("2")),
    // What the words do not tell apart is not written over.
    {"OverTheInputOfWrongWords", "", RENDER "--bogus --report in.png", 2,
     "--report in.png: not written"},
    {"OverKeysOfWrongWords", "", RENDER "--bogus --animation keys.json --report keys.json", 2,
     "--report keys.json: not written"},
};
INSTANTIATE_TEST_SUITE_P(Reports, AttackTest, testing::ValuesIn(kReports), attackName);

}  // namespace
}  // namespace vellumtide::cli
