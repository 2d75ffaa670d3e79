#include "services/info_panel.h"

#include "core/suite_handler.h"
#include "services/basic_suite.h"

namespace vellumtide {

using InfoSuite = ScopedSuite<PF_AdvAppSuite1>;

PF_Err drawInfoText(PF_InData* in_data, const char* line1, const char* line2) {
  const InfoSuite suite(basicSuiteOf(in_data));
  return suite ? suite->PF_InfoDrawText(line1, line2) : suite.error();
}

PF_Err drawInfoText3(PF_InData* in_data, const char* line1, const char* line2, const char* line3) {
  const InfoSuite suite(basicSuiteOf(in_data));
  return suite ? suite->PF_InfoDrawText3(line1, line2, line3) : suite.error();
}

}  // namespace vellumtide
