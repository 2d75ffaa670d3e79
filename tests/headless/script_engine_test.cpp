#include "headless/script_engine.h"

#include <gtest/gtest.h>

#include "headless/text.h"

namespace vellumtide::headless {
namespace {

using Kind = DialogRecord::Kind;

TEST(HeadlessText, PartsThatAreNoUtf8AreReplaced) {
  EXPECT_EQ(toUtf16("\xC3\xA9\xF0\x9F\x98\x80"), u"\u00E9\xD83D\xDE00");
  EXPECT_EQ(toUtf16("\xE9t\xE2\x82z\x80\xC0\xAF"), u"\uFFFDt\uFFFDz\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(toUtf16("\xED\xA0\x80\xF0\x9F\x98"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(toUtf16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(ScriptEngine, ResultsAndErrorsAreTexts) {
  ScriptEngine engine;
  const std::pair<const char*, const char*> results[] = {
      {"1 + 2", "3"},
      {"'\\u00e9\xC3\xA9\xF0\x9F\x98\x80'", "\xC3\xA9\xC3\xA9\xF0\x9F\x98\x80"},
      {"'a\\?\\'\\\"\\v\\b\\\\'", "a?'\"\v\b\\"},
      {"var x; x", "undefined"},
      {"function main(){return '';}main();", ""}};
  for (const auto& [script, result] : results) {
    const ScriptRun run = engine.run(script);
    EXPECT_EQ(run.error, "") << script;
    EXPECT_EQ(run.result, result) << script;
  }
  for (const char* script : {"alert(\"", "nobody()", "throw 'x'", "}", "\xFF"}) {
    EXPECT_NE(engine.run(script).error, "") << script;
  }
  EXPECT_EQ(engine.run("typeof x").result, "undefined");  // nothing is left of earlier scripts
  EXPECT_EQ(engine.runs().size(), 11u);
  const std::string longText(1 << 20, 'y');
  engine.run("alert('" + longText + "')");
  EXPECT_EQ(engine.dialogs().back().text, longText);
}

TEST(ScriptEngine, DialogsAreRecordedAndAnsweredInOrder) {
  ScriptEngine engine;
  engine.userDataFolder = "data";
  engine.confirmAnswers = {false, true};
  engine.fileAnswers = {"a/b\"\n\xF0\x9F\x98\x80.pbk", std::nullopt};
  const char* open =
      "var f = File.openDialog('Where?','pbk or pbg:*.pbk;*.pbg;'); f != null ? f.fsName : 'none'";
  EXPECT_EQ(engine.run("confirm('m',true,'t')").result, "false");
  EXPECT_EQ(engine.run("confirm('m')").result, "true");
  EXPECT_EQ(engine.run("confirm('m',true)").result, "false");  // nobody answers: the default
  EXPECT_EQ(engine.run(open).result, "a/b\"\n\xF0\x9F\x98\x80.pbk");
  EXPECT_EQ(engine.run(open).result, "none");
  EXPECT_EQ(engine.run("Folder.selectDialog('x') == null").result, "true");
  EXPECT_EQ(engine.run("Folder(Folder.userData.fsName+\"/Sub\").fsName;").result, "data/Sub");
  EXPECT_EQ(engine.run("[File('CMakeLists.txt.no').exists, Folder('.').exists, Folder('a/b').name]")
                .result,
            "false,true,b");
  engine.run("alert('text', 'title', true)");
  ASSERT_EQ(engine.dialogs().size(), 7u);
  EXPECT_EQ(engine.dialogs()[0].title, "t");
  EXPECT_TRUE(engine.dialogs()[0].noAsDefault);
  EXPECT_EQ(engine.dialogs()[3].kind, Kind::kOpenFile);
  EXPECT_EQ(engine.dialogs()[3].filter, "pbk or pbg:*.pbk;*.pbg;");
  EXPECT_EQ(engine.dialogs()[4].answer, "");
  EXPECT_TRUE(engine.dialogs()[6].errorIcon);
  engine.os = "Windows 10";
  EXPECT_EQ(engine.run("File('a/b').fsName + File.fs").result, "a\\bWindows");
}

constexpr const char* kWindowScript = R"js(
var w = new Window('dialog', 'Title', [0, 0, 512, 322]);
var picture = w.add('iconbutton', [0, 0, 512, 288], undefined, {style: 'toolbutton'});
picture.onClick = function () { w.close(7); };
picture.onDraw = function () {
  var g = this.graphics;
  g.drawImage(ScriptUI.newImage(File('s.png')), 0, 0, 512, 288);
  g.drawString('v 1', g.newPen(g.PenType.SOLID_COLOR, [1, 1, 1, 1], 1), 6, 268,
               ScriptUI.newFont('Arial', 'Regular', 14));
};
var row = w.add('group');
row.add('button', [126, 293, 246, 318], 'Go').onClick = function () {
  if (app.preferences.getPrefAsLong('Main Pref Section',
                                    'Pref_SCRIPTING_FILE_NETWORK_SECURITY') != 1) {
    alert('no network');
    app.executeCommand(2359);
  }
  system.callSystem('open it');
};
w.center();
w.show();
)js";

TEST(ScriptEngine, WindowsAreDrawnAndTheirButtonsPressed) {
  ScriptEngine engine;
  engine.networkAllowed = false;
  engine.userAllowsNetwork = true;
  engine.windowAnswers = {{"Go", "Go", "image", "Go"}, {"Nope"}};
  const ScriptRun run = engine.run(kWindowScript);
  EXPECT_EQ(run.error, "");
  EXPECT_EQ(run.result, "7");
  ASSERT_EQ(engine.dialogs().size(), 2u);
  const DialogRecord& window = engine.dialogs()[0];
  EXPECT_EQ(window.bounds, (std::vector<int>{0, 0, 512, 322}));
  ASSERT_EQ(window.controls.size(), 3u);
  EXPECT_EQ(window.controls[2].text, "Go");
  EXPECT_EQ(window.controls[2].bounds, (std::vector<int>{126, 293, 246, 318}));
  ASSERT_EQ(window.drawn.size(), 2u);
  EXPECT_EQ(window.drawn[0].place, (std::vector<double>{0, 0, 512, 288}));
  EXPECT_EQ(window.drawn[1].text, "v 1");
  EXPECT_EQ(window.drawn[1].font, "Arial Regular 14");
  // Asked for the network once; the picture closed the window before the third press.
  EXPECT_EQ(engine.dialogs()[1].text, "no network");
  EXPECT_EQ(engine.hostCommands(), std::vector<int>{2359});
  EXPECT_EQ(engine.systemCalls(), (std::vector<std::string>{"open it", "open it"}));
  EXPECT_NE(engine.run(kWindowScript).error.find("no button \"Nope\""), std::string::npos);
}

}  // namespace
}  // namespace vellumtide::headless
