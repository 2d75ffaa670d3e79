// Every kind of fault of a module is reported, by name, during the command it happened in.
#include "subject_host.h"

namespace vellumtide::headless {
namespace {

struct Case {
  int misdeed;
  const char* reported;
  bool atFinish = false;  // shows only when the books are closed
};

class Faults : public testing::TestWithParam<Case> {};

TEST_P(Faults, AreReported) {
  const Case& wanted = GetParam();
  SubjectHost subject;
  ASSERT_EQ(subject.host.books().faultText(), "");
  subject.host.call(wanted.misdeed, subject.effect);
  if (wanted.atFinish) {
    EXPECT_EQ(subject.host.books().faultText(), "");
    subject.host.finish();
  } else if (!subject.host.books().faults().empty()) {
    EXPECT_EQ(subject.host.books().faults()[0].during, "command " + std::to_string(wanted.misdeed));
  }
  EXPECT_TRUE(subject.host.books().hasFault(wanted.reported))
      << subject.host.books().faultText() << "instead of: " << wanted.reported;
}

INSTANTIATE_TEST_SUITE_P(
    Handles, Faults,
    testing::Values(
        Case{kLeakHandle, "leaked a handle of 24 bytes", true},
        Case{kFreeTwice, "host_dispose_handle was given a freed handle: handle of 24 bytes"},
        Case{kFreeUnknown, "host_dispose_handle was given an unknown handle"},
        Case{kFreeByWrongFamily, "AEGP_FreeMemHandle was given a handle of 24 bytes"},
        Case{kUnlockUnlocked, "host_unlock_handle was given a handle that is not locked"},
        Case{kFreeLocked, "host_dispose_handle was given a handle locked 1 times"},
        Case{kWriteBehind, "memory was written behind a handle of 24 bytes"},
        Case{kWriteBefore, "memory was written before a handle of 24 bytes"},
        Case{kWriteFreed, "memory was written after it was freed or moved", true},
        Case{kChangeHandleCell, "the pointer in a handle was changed"},
        Case{kResizeGlobalData, "host_resize_handle was given a locked handle"},
        Case{kLeakMemHandle, "memory handle of 9 bytes \"lost purpose\"", true},
        Case{kLeakBlock, "leaked a block of 77 bytes", true}));

INSTANTIATE_TEST_SUITE_P(
    CheckoutsAndSuites, Faults,
    testing::Values(Case{kForgetParam, "parameter 4 was checked out and not checked in"},
                    Case{kCheckinTwice, "checkin_param: a parameter that is not checked out"},
                    Case{kCheckoutNoSuchParam, "checkout_param: there is no parameter 9"},
                    Case{kForeignEffectRef,
                         "checkout_param was given an effect_ref that is not this host's"},
                    Case{kKeepSuite, "suite \"PF World Suite\" 2 was acquired and not released"},
                    Case{kReleaseUnacquired, "the suite \"PF World Suite\" 2 is not acquired"},
                    Case{kAskUnknownSuite, "nobody provides the suite \"PF Nobody's Suite\" 3"},
                    Case{kAskUnknownVersion, "nobody provides the suite \"PF World Suite\" 1"},
                    Case{kCallUnusedSlot, "slot 9 of \"AEGP Stream Suite\" 8"},
                    Case{kCallUnusedCallback, "slot 9 of the utility callbacks"},
                    Case{kUpdateParamZero, "PF_UpdateParamUI: parameter 0 cannot be updated"},
                    Case{kAddParamLate, "add_param: called outside PF_Cmd_PARAMS_SETUP"}));

INSTANTIATE_TEST_SUITE_P(
    SceneAndContext, Faults,
    testing::Values(
        Case{kLeakStream, "leaked a stream, made in command", true},
        Case{kLeakStreamValue, "still held: 1 stream value", true},
        Case{kLeakEffectRef, "leaked an effect reference", true},
        Case{kDisposeStreamTwice, "AEGP_DisposeStream: a stream that is not out"},
        Case{kDisposeValueTwice, "AEGP_DisposeStreamValue: a value that is not out"},
        Case{kUnknownLayer, "AEGP_GetLayerSourceItem was given an unknown layer"},
        Case{kUnknownWorld, "PF_GetPixelFormat: a world that this host did not give out"},
        Case{kForeignPluginId, "AEGP_ReportInfo: the plug-in id 999 was never handed out"},
        Case{kSetWildValue, "parameter 5: 10.500000 lies outside the valid range"},
        Case{kChangeGlContext, "the host's GL context was not restored: another context"},
        Case{kDropGlContext, "the host's GL context was not restored: no context is current"},
        Case{kThrow, "an exception left the entry point"},
        Case{kDeadSequenceData, "sequence_data is not a live handle"}));

TEST(FaultsOfCommands, AreReported) {
  SubjectHost subject;
  Host& host = subject.host;
  const auto reported = [&](const char* text) {
    const bool found = host.books().hasFault(text);
    EXPECT_TRUE(found) << host.books().faultText() << "instead of: " << text;
    host.books().clearFaults();
  };
  const auto at = [](int misdeed) {
    RenderOptions options;
    options.time = misdeed;
    return options;
  };
  host.render(*subject.effect, at(kWriteInputPixels));
  reported("the input pixels of checkout id 7 were written");
  host.render(*subject.effect, at(kWriteRowPadding));
  reported("the output world was written row padding of row 0");
  host.render(*subject.effect, at(kWriteBehindWorld));
  reported("the output world was written behind the last row");
  EXPECT_EQ(host.render(*subject.effect, at(kPixelsTwice)).error, PF_Err_BAD_CALLBACK_PARAM);
  reported("checkout_layer_pixels: id 7 is already checked out");
  host.render(*subject.effect, at(kResultOutsideRequest));
  reported("(-1, 0, 17, 13) lies outside the maximal one (0, 0, 17, 13)");

  const RenderOptions panel = at(kCheckoutInPanelUpdate);
  CallArguments arguments;
  arguments.frame = &panel;
  host.call(PF_Cmd_UPDATE_PARAMS_UI, subject.effect, arguments);
  reported("parameters are not checked out during the panel update");

  arguments.adjust = [](PF_InData& in, PF_OutData&) { in.current_time = kWrongOutFlags; };
  host.call(PF_Cmd_GLOBAL_SETUP, nullptr, arguments);
  reported("out_flags is 0x00000001, the property list says 0x06000031");
  arguments.adjust = [](PF_InData& in, PF_OutData&) { in.current_time = kWrongParamCount; };
  host.call(PF_Cmd_PARAMS_SETUP, nullptr, arguments);
  reported("id 1 is already that of parameter 1");
}

TEST(FaultsOfModules, FailedLoadsSayWhy) {
  EXPECT_THROW(
      {
        try {
          Module::load("no/such/module.so");
        } catch (const ModuleError& error) {
          EXPECT_NE(std::string(error.what()).find("no/such/module.so"), std::string::npos);
          throw;
        }
      },
      ModuleError);
}

}  // namespace
}  // namespace vellumtide::headless
