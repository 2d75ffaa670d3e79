// Every text from outside that ends in a dialog: the scripts run, and the texts arrive unchanged.
#include <filesystem>

#include "tests/support/instances.h"

namespace vellumtide::instances {
namespace {

const std::string kInjection = "\");alert(\"x";

std::string controls(char without = '\0') {
  std::string text;
  for (char c = 1; c < 32; ++c) {
    if (c != without) text += c;
  }
  return text + "\x7F";
}

void expectNoScriptErrors(Host& host) {
  for (const ScriptRun& run : host.scripts().runs())
    EXPECT_EQ(run.error, "") << run.script.substr(0, 300);
}

TEST(HostileTexts, InWhatAProgramSaysOfItself) {
  // A character of code 3 would end the kernel's text.
  std::string text = controls('\3') + "\\u0041\xC3\xA9'?);alert(1";
  std::string shown = controls('\3') + "\\u0041\xC3\xA9'?);alert(1";
  shown.erase(shown.find('\a'), 1);
  Session session;
  std::string kernel = kernelText("", "dst = float4(0.5);");
  kernel.insert(kernel.find("version"), "description : \"" + text + "\"; ");
  Effect& effect = session.effect(smallWorld(), session.file("k.pbk", kernel));
  session.host.doDialog(effect);
  const std::string graph = R"(<?xml version="1.0"?>
<graph name="&quot;);alert(&quot;x" xmlns="http://ns.adobe.com/PixelBenderGraph/1.0">
<metadata name="vendor" value="v"/><metadata name="version" type="int" value="1"/>
<inputImage type="image4" name="in"/><outputImage type="image4" name="out"/>
<kernel><![CDATA[)" + kernelText("input image4 src;", "dst = sampleNearest(src, outCoord());") +
                            R"(]]></kernel><node id="n" name="Sample"/>
<connect fromImage="in" toNode="n" toInput="src"/>
<connect fromNode="n" fromOutput="dst" toImage="out"/></graph>)";
  Effect& named = session.effect(smallWorld(), session.file("g.pbg", graph));
  EXPECT_EQ(named.title, "VTD: " + kInjection);
  session.host.doDialog(named);
  expectNoScriptErrors(session.host);
  const std::vector<DialogRecord>& dialogs = session.host.scripts().dialogs();
  ASSERT_EQ(dialogs.size(), 2u);
  EXPECT_EQ(dialogs[0].title, "Pixel Bender Information");
  EXPECT_NE(dialogs[0].text.find(shown), std::string::npos) << dialogs[0].text;
  EXPECT_NE(dialogs[1].text.find(" : " + kInjection + "\n"), std::string::npos);
}

TEST(HostileTexts, InTheFoldersOfTheUser) {
  const ScratchFolder scratch;
  const std::string hostile = kInjection + "'\n\xC3\xA9?";
  std::error_code failed;
  std::filesystem::create_directory(scratch.path(hostile), failed);
  if (failed) GTEST_SKIP() << "such folder names are not allowed here";
  HostOptions options;
  options.captureOutput = true;
  options.userDataFolder = scratch.path(hostile);
  Session session(options);
  session.effect(
      smallWorld(),
      session.file("broken.pbk", kernelText("", "dst = nothing;")));  // fills the error log
  ScriptEngine& scripts = session.host.scripts();
  scripts.confirmAnswers = {true};
  scripts.folderAnswers = {scratch.path(hostile)};
  bool splashWasThere = false;
  scripts.onDialog = [&](const DialogRecord& dialog) {
    for (const DrawnItem& item : dialog.drawn)
      splashWasThere |= item.kind == "image" && std::filesystem::exists(item.text);
  };
  EXPECT_EQ(session.host.about(), PF_Err_NONE);
  expectNoScriptErrors(session.host);
  EXPECT_TRUE(splashWasThere);
  EXPECT_NE(scratch.get(hostile + "/Vellumtide_error_log.txt").find("\nglsl : "),
            std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(scratch.path(hostile + "/Orrinwald")));
}

}  // namespace
}  // namespace vellumtide::instances
