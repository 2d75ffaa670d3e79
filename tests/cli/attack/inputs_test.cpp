// What is read is never written over, and only files are read.
#include "attack.h"

namespace vellumtide::cli {
namespace {

const Attack kOverInputs[] = {
    {"Input", "", "$V render k.pbk -i in.png -o ./sub/../in.png", 2,
     "would overwrite the input in.png"},
    {"FramesThroughALinkedFolder", "ln -s . l", "$V render k.pbk -i 's.#.png' -o 'l/s.#.png'", 2,
     "-o l/s.1.png: would overwrite the input s.1.png"},
    {"FramesByAnotherSpelling", "",
     "$V render k.pbk -i 's.#.png' -o \"../$(basename $PWD)/s.%d.png\"", 2,
     "would overwrite the input s.1.png"},
    {"LastFrameByHardLink", "ln s.3.png out.3.png", "$V render k.pbk -i 's.#.png' -o 'out.#.png'",
     2, "-o out.3.png: would overwrite the input s.3.png"},
    {"FrameThatStandsIn", "ln -s s.3.png out.7.png",
     "$V render k.pbk -i 's.#.png' -o 'out.#.png' --frames 7 --missing hold", 2,
     "-o out.7.png: would overwrite the input s.3.png"},
    {"OneFileForTwoFrames", "ln -s new.png out.1.png; ln -s new.png out.3.png",
     "$V render k.pbk -i 's.#.png' -o 'out.#.png'", 2,
     "-o out.3.png: is the same file as -o out.1.png"},
    {"Program", "ln k.pbk k.png", "$V render k.pbk -i in.png -o k.png", 2,
     "would overwrite the program k.pbk"},
    {"ReportOverTheInput", "ln -s in.png r.json",
     "$V render k.pbk -i in.png -o new.png --report r.json", 2,
     "--report r.json: would overwrite the input in.png"},
    {"ReportOverAFrame", "", "$V render no.pbk -i 's.#.png' -o 'out.#.png' --report s.2.png", 2,
     "--report s.2.png: would overwrite the input s.2.png"},
    {"ReportOverTheProgram", "", "$V render k.pbk -i in.png -o new.png --report k.pbk", 2,
     "--report k.pbk: would overwrite the program k.pbk"},
    {"ReportOverTheAnimation", "",
     "$V render k.pbk -i in.png -o new.png --animation keys.json --report keys.json", 2,
     "--report keys.json: would overwrite the animation keys.json"},
    {"ReportOverThePicture", "", "$V render k.pbk -i in.png -o old.png --report sub/../old.png", 2,
     "would overwrite the picture old.png"},
    {"ReportOverAPictureNotYetThere", "ln -s . l",
     "$V render k.pbk -i 's.#.png' -o 'out.#.png' --report l/out.2.png", 2,
     "would overwrite the picture out.2.png"},
    {"ReportOverTheModule", "cp $(dirname $V)/Vellumtide.so m.png",
     "$V render k.pbk -i in.png -o new.png --module ./m.png --report m.png", 2,
     "would overwrite the effect module"},
    {"SheetOverItsSource", "ln -s in.png link.png", "$V sheet in.png b.png -o link.png", 2,
     "-o link.png: would overwrite the source in.png"},
    {"DifferenceOverALaterFrame", "for i in 1 2 3; do ln -s s.$i.png t.$((i - 1)).png; done",
     "$V compare 's.#.png' 's.#.png' --frames 1-3 -o 't.#.png'", 2,
     "-o t.1.png: would overwrite the image s.2.png"},
    {"DrawingOverTheProgram", "ln -s k.pbk k.dot", "$V inspect k.pbk --graph dot -o k.dot", 2,
     "-o k.dot: would overwrite the program k.pbk"},
    {"ProjectOverItsProgram", "", "$V project new k.pbk k.pbk -i in.png", 2,
     "PROJECT k.pbk: would overwrite the program k.pbk"},
    {"ProjectRenderedOverItsLayer", "$V project new p.json k.pbk -i in.png; ln in.png link.png",
     "$V project render p.json -o link.png", 2, "-o link.png: would overwrite the input"},
    {"StandardOutputIsTheInput", "", "$V render k.pbk -i in.png -o - >> in.png", 2,
     "would overwrite the input in.png"},
};
INSTANTIATE_TEST_SUITE_P(OverInputs, AttackTest, testing::ValuesIn(kOverInputs), attackName);

const Attack kPipes[] = {
    {"InputIsStandardInput", "", "cat in.png | $V render k.pbk -i /dev/stdin -o new.png", 4,
     "/dev/stdin: is a pipe or a device; images are read from files alone"},
    {"InputIsASubstitution", "", "$V render k.pbk -i <(cat in.png) -o new.png", 4,
     "is a pipe or a device"},
    {"NobodyWritesToTheInput", "mkfifo p.png", "$V compare p.png in.png", 4,
     "p.png: is a pipe or a device"},
    {"NobodyWritesToTheInputThatGivesTheShape", "mkfifo p.png",
     "$V render k.pbk -i p.png -o old.png --skip-existing", 0, ""},
    {"NobodyWritesToTheProgram", "mkfifo p.pbk", "$V render p.pbk -i in.png -o new.png", 3,
     "p.pbk: is a pipe or a device, not a program file"},
    {"NobodyWritesToTheProject", "mkfifo p.json", "$V project show p.json", 1,
     "p.json is a folder, a pipe or a device"},
    {"NobodyWritesToTheFont", "mkfifo p.ttf", "$V sheet in.png b.png -o new.png --font p.ttf", 1,
     "p.ttf: cannot be used as a font"},
    {"AnimationIsReadOnce", "", "$V render k.pbk -i in.png -o new.png --animation <(echo '{}')", 0,
     "", "+new.png "},
};
INSTANTIATE_TEST_SUITE_P(Pipes, AttackTest, testing::ValuesIn(kPipes), attackName);

// Messages that are true, and what an earlier run left.
const Attack kSmall[] = {
    {"OtherPadding", "mv s.2.png s.0002.png", "$V render k.pbk -i 's.####.png' -o 'new.#.png'", 0,
     "s.####.png: s.1.png and 1 more left out", "+new.2.png "},
    {"OtherPaddingOfAMissingFrame", "", "$V render k.pbk -i 's.##.png' -o 'new.#.png' --frames 1",
     4, "s.##.png: s.1.png and 2 more left out"},
    {"MoreThanAll", "", "$V compare in.png b.png --allow 101%", 2,
     "--allow 101%: a share is at most 100%"},
    {"NoThreads", "", "$V render k.pbk -i in.png -o new.png --threads abc", 2,
     "--threads: \"abc\" is no whole number from 1 to 64"},
    {"NoDepth", "", "$V sheet in.png -o new.png --depth x", 2, "--depth: x not in {8,16,32}"},
    {"WidePixels", "", "$V render k.pbk -i in.png -o new.png --pixel-aspect 1e30", 2,
     "--pixel-aspect 1e30: expected a number from 0.0001 to 1e9"},
    {"FrameBeyondTheLast", "", "$V render k.pbk -i in.png -o 'new.#.png' --frames 1-999999999999",
     2, "frame 999999999999 is beyond the last that there can be"},
    {"OtherDepthIsNotComplete", "",
     "$V render k.pbk -i in.png -o old.png --skip-existing --depth 16", 0, "", "~old.png "},
    {"OtherFormatIsNotComplete", "$V render k.pbk -i in.png -o t.tif; mv t.tif new.png",
     "$V render k.pbk -i in.png -o new.png --skip-existing", 0, "", "~new.png "},
    {"CompleteStays", "", "$V render k.pbk -i in.png -o old.png --skip-existing"},
};
INSTANTIATE_TEST_SUITE_P(Small, AttackTest, testing::ValuesIn(kSmall), attackName);

}  // namespace
}  // namespace vellumtide::cli
