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
    {.name = "NoTitle",
     .command = "$V sheet k.pbk -i in.png -o out.png --title '' && "
                "$V sheet k.pbk -i in.png -o same.png --title= && cmp out.png same.png",
     .changes = "+out.png +same.png "},
};
INSTANTIATE_TEST_SUITE_P(Meant, AttackTest, testing::ValuesIn(kMeant), attackName);

const Attack kReports[] = {
    {.name = "UnknownOption",
     .setUp = OLD_REPORT,
     .command = RENDER "--bogus --report r.json --progress openjd",
     .status = 2,
     .message = "there is no option --bogus",
     .changes = "~r.json ",
     .check = FAILED("2") "; grep -q 'openjd_fail: there is no option --bogus' $OUT"},
    {.name = "BadValue",
     .setUp = OLD_REPORT,
     .command = RENDER "--report=r.json --depth 9 --progress json",
     .status = 2,
     .message = "--depth",
     .changes = "~r.json ",
     .check = FAILED("2") "; tail -n 1 $OUT | grep -q '\"event\":\"end\".*\"exitStatus\":2'"},
    {.name = "BadFrames",
     .setUp = OLD_REPORT,
     .command = RENDER "--frames x --report r.json --progress json",
     .status = 2,
     .message = "--frames x",
     .changes = "~r.json ",
     .check = FAILED("2") "; tail -n 1 $OUT | grep -q '\"exitStatus\":2'"},
    {.name = "UnknownEnding",
     .setUp = OLD_REPORT,
     .command = "$V render k.pbk -i in.png -o out.bmp --report r.json --progress openjd",
     .status = 4,
     .message = "the name has to end in",
     .changes = "~r.json ",
     .check = FAILED("4") "; grep -q openjd_fail $OUT"},
    {.name = "NoFolder",
     .setUp = OLD_REPORT,
     .command = "$V render k.pbk -i in.png -o no/out.png --report r.json",
     .status = 4,
     .message = "there is no folder no",
     .changes = "~r.json ",
     .check = FAILED("4")},
    {.name = "NoProgram",
     .setUp = OLD_REPORT,
     .command = "$V render no.pbk -i in.png -o out.png --report r.json",
     .status = 3,
     .message = "no.pbk: there is no such file",
     .changes = "~r.json ",
     .check = FAILED("3")},
    {.name = "UnknownControl",
     .setUp = OLD_REPORT,
     .command = RENDER "-p No=1 --report r.json",
     .status = 2,
     .message = "there is no control",
     .changes = "~r.json ",
     .check = FAILED("2")},
    // What the words do not tell apart is not written over.
    {.name = "OverTheInputOfWrongWords",
     .command = RENDER "--bogus --report in.png",
     .status = 2,
     .message = "--report in.png: not written"},
    {.name = "OverKeysOfWrongWords",
     .command = RENDER "--bogus --animation keys.json --report keys.json",
     .status = 2,
     .message = "--report keys.json: not written"},
    {.name = "OverKeysThatLookLikeAReport",
     .setUp = "echo '{\"status\": [{\"frame\": 1, \"value\": 1}]}' >keys.json",
     .command = RENDER "--bogus --animation keys.json --report keys.json",
     .status = 2,
     .message = "--report keys.json: not written"},
};
INSTANTIATE_TEST_SUITE_P(Reports, AttackTest, testing::ValuesIn(kReports), attackName);

}  // namespace
}  // namespace vellumtide::cli
