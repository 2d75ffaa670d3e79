#include "services/info_panel.h"

#include "core/suite_handler.h"

namespace vellumtide {
namespace {

using InfoSuite = ScopedSuite<PF_AdvAppSuite1>;

SPBasicSuite* basicSuite(PF_InData* in_data) {
  return in_data ? in_data->pica_basicP : nullptr;
}

}  // namespace

PF_Err drawInfoText(PF_InData* in_data, const char* line1, const char* line2) {
  const InfoSuite suite(basicSuite(in_data));
  return suite ? suite->PF_InfoDrawText(line1, line2) : suite.error();
}

PF_Err drawInfoText3(PF_InData* in_data, const char* line1, const char* line2, const char* line3) {
  const InfoSuite suite(basicSuite(in_data));
  return suite ? suite->PF_InfoDrawText3(line1, line2, line3) : suite.error();
}

}  // namespace vellumtide
