// What the driver cannot do ends in an error with its reason, and works again once the driver does.
#include "tests/support/driver_faults.h"

#include <GL/glew.h>
#include <gtest/gtest.h>

#include "tests/support/pictures.h"
#include "tests/support/session.h"

namespace vellumtide::end_to_end {
namespace {

const Rgba kColor = {0.2, 0.4, 0.6, 1};

World picture() {
  return plainWorld(9, 7, PF_PixelFormat_ARGB32, kColor);
}

class DriverFaultsTest : public ::testing::Test {
 protected:
  DriverFaultsTest() { driverFaults() = {}; }
  ~DriverFaultsTest() override { driverFaults() = {}; }

  static HostOptions noOwnContext() {
    HostOptions options;
    options.ownGlContext = false;
    return options;
  }

  std::string copy(Session& session, const std::string& name) {
    return session.file(name, kernelText("", "dst = sampleNearest(src, outCoord());"));
  }

  // The command ends with out of memory and the frame is transparent black.
  void expectNotDrawn(Session& session, Effect& effect) {
    World output(9, 7, PF_PixelFormat_ARGB32);
    output.fillBytes(0x5A);
    EXPECT_EQ(session.host.render(effect, {.output = &output}).error, PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(differences(output, output, everywhere({0, 0, 0, 0})), "");
  }

  void expectDrawn(Session& session, Effect& effect) {
    EXPECT_EQ(differences(picture(), session.render(effect), everywhere(kColor)), "");
    EXPECT_EQ(session.host.updateParamsUi(effect), PF_Err_NONE);
    EXPECT_EQ(effect.title, "VTD: Sample");
    EXPECT_EQ(session.takeInfo(), "");
  }
};

TEST_F(DriverFaultsTest, AnErrorWhileDrawingIsSaidOnceAndTheNextFrameIsRight) {
  Session session(noOwnContext());
  Effect& effect = session.effect(picture(), copy(session, "a.pbk"));
  session.takeInfo();
  for (const auto& [error, text] :
       {std::pair{GL_OUT_OF_MEMORY, "out of memory"},
        {GL_INVALID_OPERATION, "invalid operation"},
        {GL_INVALID_FRAMEBUFFER_OPERATION_EXT, "invalid framebuffer operation"}}) {
    driverFaults().errorAfterDrawing = static_cast<unsigned>(error);
    expectNotDrawn(session, effect);
    EXPECT_EQ(session.takeInfo(), std::string("Frame of 9 x 7 pixels not drawn: ") + text);
    expectDrawn(session, effect);
  }
}

TEST_F(DriverFaultsTest, ProgramsWaitForADeviceThatStartUpCouldNotMake) {
  driverFaults().noContexts = true;
  Session session(noOwnContext());
  const std::string path = copy(session, "b.pbk");
  Effect& effect = session.effect(picture(), path);
  const std::string said = "Not loaded, because there is no OpenGL device: / " + path;
  EXPECT_EQ(session.takeInfo(), said);
  EXPECT_EQ(effect.title, "VTD: (Invalid PB)");
  expectNotDrawn(session, effect);
  EXPECT_EQ(session.takeInfo(), said);

  driverFaults().noContexts = false;
  EXPECT_EQ(session.host.render(effect).error, PF_Err_NONE);
  expectDrawn(session, effect);
  // The options of the about box know the driver too.
  EXPECT_EQ(session.host.about(&effect), PF_Err_NONE);
}

TEST_F(DriverFaultsTest, ADeviceThatIsRefusedBuildsAndDrawsNothing) {
  Session session(noOwnContext());
  Effect& drawn = session.effect(picture(), copy(session, "c.pbk"));
  session.takeInfo();
  driverFaults().refusals = -1;
  const std::string path = copy(session, "d.pbk");
  Effect& waiting = session.effect(picture(), path);
  const std::string why = "the OpenGL device could not be made current";
  EXPECT_EQ(session.takeInfo(), "Not loaded, because " + why + ": / " + path);
  expectNotDrawn(session, drawn);
  EXPECT_EQ(session.takeInfo(), "Frame of 9 x 7 pixels not drawn: " + why);

  driverFaults().refusals = 0;
  expectDrawn(session, drawn);
  expectDrawn(session, waiting);
  // A device that another thread has for a moment is waited for.
  driverFaults().refusals = 3;
  expectDrawn(session, drawn);
  EXPECT_EQ(driverFaults().refusals, 0);
}

}  // namespace
}  // namespace vellumtide::end_to_end
