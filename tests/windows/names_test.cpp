#include <gtest/gtest.h>

#include "cli/render/render_job.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"
#include "tests/support/instances.h"

namespace vellumtide {
namespace {

using headless::Effect;
using headless::World;
using instances::Session;

// Names that no single code page holds.
const std::string kFolder = "\xE6\x97\xA5\xE6\x9C\xAC \xC3\xA9";
const std::string kKernel = "\xD0\xB2\xD1\x8B\xD1\x85-\xF0\x9F\xA7\x80.pbk";

const std::string kCopy =
    instances::kernelText("input image4 src;", "dst = sampleNearest(src, outCoord());");

std::string info(headless::Host& host) {
  std::string text;
  for (const headless::InfoText& shown : host.infoPanel()) {
    for (const auto& line : shown.lines)
      text += line.value_or("") + "\n";
  }
  return text;
}

TEST(WindowsNames, ProgramsRootAndExportFoldersOfAnyName) {
  Session session;
  const std::string path = session.file(kFolder + "/" + kKernel, kCopy);
  EXPECT_EQ(session.effect(instances::smallWorld(), path).title, "VTD: Sample");

  // Moved, and found again below a root folder of such a name.
  session.host.preferences().set("Settings_cs_VTD_Launcher", "rootFolder",
                                 session.folder.path(kFolder));
  Effect& moved = session.host.openInstance(session.comp.addLayer("l", instances::smallWorld()),
                                            instances::savedData("C:\\gone\\" + kKernel));
  EXPECT_EQ(session.host.updateParamsUi(moved), PF_Err_NONE);
  EXPECT_EQ(moved.title, "VTD: Sample");

  const std::string broken =
      session.file("broken.pbk", instances::kernelText("", "dst = nothing(1.0);"));
  Effect& effect = session.effect(instances::smallWorld(), broken);
  headless::ScriptEngine& scripts = session.host.scripts();
  scripts.confirmAnswers = {true};
  scripts.folderAnswers = {session.folder.path(kFolder)};
  EXPECT_EQ(session.host.about(&effect), PF_Err_NONE);
  EXPECT_NE(session.folder.get(kFolder + "/Vellumtide_error_log.txt").find("nothing"),
            std::string::npos);
}

TEST(WindowsNames, PathsTooLongForThePlatformAreAnError) {
  for (const std::size_t length : {259u, 260u, 300u, 5000u, 40000u}) {
    Session session;
    const std::string path = "C:\\" + std::string(length - 7, 'n') + ".pbk";
    Effect& effect = session.effect(instances::smallWorld(), path);
    EXPECT_EQ(effect.title, "VTD: (Invalid PB)") << length;
    EXPECT_NE(info(session.host).find("Kernel file could not be opened:"), std::string::npos);
    Effect& saved = session.host.openInstance(session.comp.addLayer("l", instances::smallWorld()),
                                              instances::savedData(path));
    EXPECT_EQ(session.host.save(saved), instances::savedData(path)) << "the path is kept";
  }
}

TEST(WindowsNames, CommandLineReadsAndWritesThem) {
  const instances::ScratchFolder scratch;
  scratch.put(kFolder + "/" + kKernel, kCopy);
  const std::string in = scratch.path(kFolder + "/\xC3\xBC.png");
  const std::string out = scratch.path(kFolder + "/\xD1\x8F ####.png");
  cli::writeImageFile(cli::pathOf(in), instances::smallWorld(), 1, {});

  cli::RenderJob job;
  job.program = scratch.path(kFolder + "/" + kKernel);
  job.inputs = {in};
  job.output = out;
  job.frames = {1, 12};
  job.module = headless::defaultModulePath();
  cli::runRenderJob(job);
  const cli::ImageFile written =
      cli::readImageFile(cli::pathOf(scratch.path(kFolder + "/\xD1\x8F 0012.png")));
  EXPECT_EQ(written.pixels.checksum(), instances::smallWorld().checksum());

  job.inputs = {scratch.path(kFolder + "/missing \xC3\xBC.png")};
  try {
    cli::runRenderJob(job);
    ADD_FAILURE() << "an input that is missing";
  } catch (const cli::Failure& failure) {
    EXPECT_EQ(failure.status, cli::ExitStatus::Image) << failure.what();
  }
}

}  // namespace
}  // namespace vellumtide
