#include "host/global_data.h"

#include <string>

#include "core/command_scope.h"
#include "core/message_channels.h"
#include "core/suite_handler.h"
#include "gl/gl_loader.h"
#include "gl/gl_report.h"
#include "host/property_list.h"
#include "services/debug_output.h"
#include "services/jst/jst.h"
#include "services/preferences.h"

namespace vellumtide {
namespace {

constexpr const char* kProductName = "Vellumtide";

const char* driverString(GLenum name) {
  return reinterpret_cast<const char*>(glGetString(name));
}

void ignoreMessage(const char*) {}

void showMessage(const char* text) {
  dprintf(currentInData(), "%s", text);
}

void logMessage(const char* text) {
  if (GlobalData* globalData = GlobalData::current()) globalData->errorLog += text;
}

void printReport(const char* text) {
  _printf("%s", text);
}

// The folder's files are listed so that a slow network folder is mounted before it is needed.
void visitRootFolder(PF_InData* in_data) {
  const std::string rootFolder = readRootFolder(in_data);
  if (!rootFolder.empty()) HostFolder(rootFolder).listFiles();
}

}  // namespace

void OwnedDevice::make() {
  const SavedCurrentContext saved = saveCurrentContext();
  if (window) destroyWindowDevice(window, deviceContext, renderContext);
  window = deviceContext = renderContext = nullptr;
  createWindowDevice(window, deviceContext, renderContext);
  restoreCurrentContext(saved);
}

GlobalData::GlobalData(PF_InData* in_data) {
  visitRootFolder(in_data);
  registerWithHost(in_data);
  initialiseDriver();
}

GlobalData::~GlobalData() {
  programCache.destroyAll([this] { return ScopedCurrentContext(device); });
}

GlobalData* GlobalData::current() {
  return of(currentInData());
}

GlobalData* GlobalData::of(const PF_InData* in_data) {
  return in_data ? static_cast<GlobalData*>(hostMemoryOfHandle(in_data->global_data)) : nullptr;
}

void GlobalData::registerWithHost(PF_InData* in_data) {
  const ScopedSuite<AEGP_UtilitySuite5> utility(in_data->pica_basicP);
  if (!utility) throw PF_Err{utility.error()};
  status = utility->AEGP_RegisterWithAEGP(nullptr, kProductName, &pluginID);
}

void GlobalData::initialiseDriver() {
  const ScopedCurrentContext bracket(device);
  if (bracket.isCurrent()) {
    loadEntryPoints();
  } else {
    _printf("Error: No current OpenGL context\n");
  }
}

void GlobalData::loadEntryPoints() {
  const char* failure = initialiseGL();
  entryPointsLoaded_ = !failure;
  if (failure) {
    _printf("Error: %s\n", failure);
  } else {
    _printf("GLEW initialized\n");
  }
}

void GlobalData::readDriverStrings() {
  const ScopedCurrentContext bracket(device);
  if (bracket.isCurrent()) readDriver();
}

void GlobalData::readDriver() {
  glVendor = driverString(GL_VENDOR);
  glVersion = driverString(GL_VERSION);
  glslVersion = driverString(GL_SHADING_LANGUAGE_VERSION);
  drawLimits = readDrawLimits();
}

void GlobalData::prepareDriver() {
  if (!entryPointsLoaded_) loadEntryPoints();
  if (!glVersion) readDriver();
}

pbGraph* GlobalData::usableProgram(const std::string& path) const {
  pbGraph* program = programCache.findProgram(path);
  return program && program->isUsable() ? program : nullptr;
}

PF_Err globalSetup(PF_InData* in_data, PF_OutData* out_data) {
  out_data->my_version = pluginVersion;
  out_data->out_flags = pluginOutFlags;
  out_data->out_flags2 = pluginOutFlags2;
  setDeviceNameSuffix(kProductName);
  setReportSink(printReport);

  auto* globalData = newOrThrow<GlobalData>(in_data);
  out_data->global_data = handleOfHostMemory(globalData);

  setMessageSink(Channel::Ignored, ignoreMessage);
  setMessageSink(Channel::Debug, showMessage);
  setMessageSink(Channel::ErrorLog, logMessage);
  globalData->readDriverStrings();
  return PF_Err_NONE;
}

PF_Err globalSetdown(PF_InData* in_data) {
  delete GlobalData::of(in_data);
  return PF_Err_NONE;
}

}  // namespace vellumtide
