#include "services/dialogs/about_script.h"

namespace vellumtide {

const char* const kAboutDialogScript = R"script(
(function () {
  var WIDTH = 512, IMAGE_HEIGHT = 288, HEIGHT = 322;
  var BUTTON_WIDTH = 120, BUTTON_HEIGHT = 25, BUTTON_TOP = 293;

  function mayUseNetwork() {
    return app.preferences.getPrefAsLong("Main Pref Section",
                                         "Pref_SCRIPTING_FILE_NETWORK_SECURITY") == 1;
  }

  function askForNetwork() {
    alert("This script requires access to network.\n" +
          "Go to the \"General\" panel of the application preferences and make sure\n" +
          "\"Allow Scripts to Write Files and Access Network\" is checked.");
    app.executeCommand(2359);
    return mayUseNetwork();
  }

  function openPage() {
    if (!mayUseNetwork() && !askForNetwork()) {
      return;
    }
    if (File.fs == "Windows") {
      system.callSystem("cmd.exe /c \"start " + g_URL + "\"");
    } else {
      system.callSystem("open \"" + g_URL + "\"");
    }
  }

  function drawSplash() {
    var graphics = this.graphics;
    var file = new File(g_img_path);
    if (file.exists) {
      graphics.drawImage(ScriptUI.newImage(file), 0, 0, WIDTH, IMAGE_HEIGHT);
    }
    var pen = graphics.newPen(graphics.PenType.SOLID_COLOR, [1, 1, 1, 1], 1);
    graphics.drawString(g_version_info, pen, 6, 268, ScriptUI.newFont("Arial", "Regular", 14));
  }

  var dialog = new Window("dialog", g_title, [0, 0, WIDTH, HEIGHT]);

  function closeDialog() {
    dialog.close();
  }

  function addButton(left, text, action) {
    var bounds = [left, BUTTON_TOP, left + BUTTON_WIDTH, BUTTON_TOP + BUTTON_HEIGHT];
    var button = dialog.add("button", bounds, text);
    button.onClick = action;
  }

  var image = dialog.add("iconbutton", [0, 0, WIDTH, IMAGE_HEIGHT], undefined,
                         {style: "toolbutton"});
  image.onDraw = drawSplash;
  image.onClick = closeDialog;
  addButton(126, "Go to Webpage", openPage);
  addButton(266, "Close", closeDialog);
  dialog.center();
  dialog.show();
})();
)script";

}  // namespace vellumtide
