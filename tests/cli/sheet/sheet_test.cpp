#include <nlohmann/json.hpp>

#include "cli/control/sweep.h"
#include "cli/text/failure.h"
#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

using headless::World;
using Json = nlohmann::json;

class Sheets : public CommandLine {
 protected:
  void SetUp() override {
    writeText("k.pbk",
              kernelText("dst = float4(amount, float(n) / 4.0, mode == 1 ? 1.0 : 0.0, 1.0);",
                         "parameter float amount < aeDisplayName : \"The = Amount\"; minValue : "
                         "0.0; maxValue : 1.0; >; parameter int n < minValue : 1; maxValue : 4; >;"
                         "parameter bool on; parameter float2 offset;"
                         "parameter int mode < aeUIControl : \"aePopup\"; enumValues : \"a, b|c\"; "
                         ">; parameter float2 place < aeUIControl : \"aePoint\"; >;"
                         "parameter float4 tint < aeUIControl : \"aeColor\"; >;"));
    writeText("broken.pbk", kernelText("dst = missing(src);"));
    World clear(40, 20, PF_PixelFormat_ARGB32);
    writeImageFile(file("clear.png"), clear, 1, {});
    clear.setPixel(0, 0, 0, 1, 0, 1);
    writeImageFile(file("in.png"), clear, 2, {});
  }
  // The cells that `sheet ARGUMENTS -o s.png --json` lists.
  Json cells(const std::string& arguments, int status = 0) {
    const Outcome outcome = run("sheet " + arguments + " -o s.png --json");
    EXPECT_EQ(outcome.status, status) << arguments << outcome.error;
    return Json::parse(outcome.out)["cells"];
  }
  // The middle of a cell on the sheet.
  void expectCell(const Json& cell, std::vector<double> rgba) {
    const World sheet = readImageFile(file("s.png")).pixels;
    SCOPED_TRACE(cell.dump());
    expectPixel(sheet, cell["x"].get<int>() + cell["width"].get<int>() / 2,
                cell["y"].get<int>() + cell["height"].get<int>() / 2, rgba, 0.003);
  }
};

TEST_F(Sheets, SweepsAreReadByTheKindOfControl) {
  using Values = std::vector<std::string>;
  const Program program = readProgram(file("k.pbk"));
  const struct {
    const char *text, *name;
    Values values;
  } kSweeps[] = {
      {"The = Amount=0.1,0.5", "The = Amount", {"0.1", "0.5"}},
      {"amount=0..1/3|0.9", "amount", {"0", "0.5", "1", "0.9"}},
      {"amount=1..0x0.3", "amount", {"1", "0.7", "0.4", "0.1"}},
      {"amount=-1..1", "amount", {"-1", "-0.5", "0", "0.5", "1"}},
      {"The = Amount", "The = Amount", {"0", "0.25", "0.5", "0.75", "1"}},
      {"n", "n", {"1", "2", "3", "4"}},
      {"on", "on", {"off", "on"}},
      {"mode", "mode", {"a, b", "c"}},
      {"mode=a, b", "mode", {"a, b"}},
      {"mode=2,1", "mode", {"2", "1"}},
      {"offset=1,2|3,4", "offset", {"1,2", "3,4"}},
      {"offset y=1,2", "offset y", {"1", "2"}},
      {"place=0,0..10,-4/3", "place", {"0,0", "5,-2", "10,-4"}},
      {"tint=#000000|1,1,1", "tint", {"#000000", "1,1,1"}},
  };
  for (const auto& [text, name, values] : kSweeps) {
    const Sweep sweep = parseSweep(text, program);
    EXPECT_EQ(sweep.name, name);
    EXPECT_EQ(sweep.values, values) << text;
  }
  for (const char* bad : {"nothing=1", "n=", "n=1,,2", "amount=0..1x0", "amount=0..1/0",
                          "amount=0..1/2.5", "place=0,0..1,1x2", "amount=0..1/1001", "place"}) {
    EXPECT_THROW(parseSweep(bad, program), Failure) << bad;
  }
}

TEST_F(Sheets, CellsShowTheSweptValuesInTheirPlaces) {
  const Json grid = cells("k.pbk -i clear.png -s amount=0,0.4,1 -s mode -p n=2");
  ASSERT_EQ(grid.size(), 6u);
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(grid[i]["column"], i % 3);
    EXPECT_EQ(grid[i]["row"], i / 3);
    EXPECT_EQ(grid[i]["width"], 40);
    expectCell(grid[i], {std::vector<double>{0, 0.4, 1}[i % 3], 0.5, i < 3 ? 0.0 : 1.0, 1});
  }
  EXPECT_EQ(grid[4]["settings"], Json::parse(R"({"amount": "0.4", "mode": "c"})"));

  const Json wrapped = cells("k.pbk --size 600x400 -s n --columns 3 --cell 150x150");
  ASSERT_EQ(wrapped.size(), 4u);
  EXPECT_EQ(wrapped[3]["row"], 1);
  EXPECT_EQ(wrapped[3]["width"], 150);
  EXPECT_EQ(wrapped[3]["height"], 100);
  expectCell(wrapped[3], {0, 1, 0, 1});
}

TEST_F(Sheets, ProgramsThatFailSaySoAndTheOthersAreDrawn) {
  const Json mixed = cells("in.png broken.pbk k.pbk -i clear.png -p n=2 --background '#ff0000'", 3);
  ASSERT_EQ(mixed.size(), 3u);
  EXPECT_EQ(mixed[0]["width"], 80);  // twice as wide as its pixels are many
  expectCell(mixed[0], {1, 0, 0, 1});
  EXPECT_EQ(mixed[1]["status"], "failed");
  EXPECT_NE(mixed[1]["error"].get<std::string>().find("missing"), std::string::npos);
  expectCell(mixed[2], {0, 0.5, 0, 1});
  const Json several = cells("broken.pbk k.pbk gone.png -i clear.png", 1);
  EXPECT_EQ(several[2]["error"], "there is no such file");

  std::filesystem::remove(file("s.png"));
  expectEndings("sheet -o s.png ",
                {
                    {"broken.pbk -i clear.png", 3, "broken.pbk: "},
                    {"k.pbk", 2, "-i"},
                    {"k.pbk -i gone.png", 4, "gone.png"},
                    {"k.pbk -i clear.png -s amount=4e4", 2,
                     "--sweep amount=4e4: expected a number from -32767"},
                    {"k.pbk -i clear.png -s n -s on -s mode", 2, "two directions"},
                    {"k.pbk clear.png -s n -i clear.png", 2, "clear.png is no program"},
                    {"k.pbk -i clear.png -i clear.png", 2, "takes 1 image"},
                    {"k.pbk -i clear.png --font k.pbk", 1, "k.pbk: cannot be used as a font"},
                    {"k.pbk --size 2000x2000 --cell full -s amount=0..1/999", 4, "--cell"},
                });
  EXPECT_EQ(filesLike("s.png"), "");
}

}  // namespace
}  // namespace vellumtide::cli
