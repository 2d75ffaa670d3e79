#include "host/sequence_data.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>

#include "host/flat_sequence.h"
#include "host/global_data.h"
#include "host/program_loader.h"
#include "services/aeo/marker_comment.h"
#include "services/jst/jst.h"
#include "services/preferences.h"

namespace vellumtide {
namespace {

// A path must have at least one byte in front of a dot, which itself is not looked at, and end in
// one of exactly these spellings.
bool namesProgram(const std::string& comment) {
  if (comment.size() <= 4) return false;
  const std::string ending = comment.substr(comment.size() - 3);
  return ending == "pbk" || ending == "PBK" || ending == "pbg" || ending == "PBG";
}

// Looks for a file that has moved under the preference's root folder. The path stays as it was when
// there is none, and for want of memory.
void relocate(PF_InData* in_data, std::string& path) try {
  const HostFile file(path);
  if (path.empty() || file.exists()) return;
  const std::string rootFolder = readRootFolder(in_data);
  if (rootFolder.empty()) return;
  if (const auto found = findUnderRootFolder(rootFolder, file.getName())) path = *found;
} catch (PF_Err) {
}

// A program that cannot be loaded, for want of memory too, leaves the instance without one.
void tryLoad(PF_InData* in_data, const std::string& path, bool report) {
  GlobalData* globalData = GlobalData::current();
  if (!globalData) return;
  try {
    loadProgram(*globalData, in_data, path, report);
  } catch (PF_Err) {
  }
}

PF_Handle flatten(PF_InData* in_data, const SequenceData& sequence) {
  const PF_UtilCallbacks& utils = *in_data->utils;
  const std::string bytes = writeFlatSequence(sequence.path, sequence.freshFlag);
  PF_Handle handle = utils.host_new_handle(bytes.size());
  if (!handle) return nullptr;
  void* block = utils.host_lock_handle(handle);
  if (!block) {
    utils.host_dispose_handle(handle);
    return nullptr;
  }
  std::memcpy(block, bytes.data(), bytes.size());
  utils.host_unlock_handle(handle);
  return handle;
}

SequenceData* unflatten(PF_InData* in_data, PF_Handle flat) {
  const PF_UtilCallbacks& utils = *in_data->utils;
  const void* block = utils.host_lock_handle(flat);
  if (!block) return nullptr;
  std::unique_ptr<SequenceData> sequence(new SequenceData);
  if (sequence) {
    const FlatSequence read = readFlatSequence(block, utils.host_get_handle_size(flat));
    sequence->path = read.path;
    sequence->hasProgram = read.hasProgram;
    sequence->freshFlag = read.freshFlag;
  }
  utils.host_unlock_handle(flat);
  return sequence.release();
}

// What a command gave to the host must not stay with it once a command within has ended it.
void takeBackWhenGone(const SequenceRef& made, PF_Handle handle, PF_OutData* out_data) {
  if (!made.find() && out_data->sequence_data == handle) out_data->sequence_data = nullptr;
}

// Has the instance run the program that the layer's first marker names.
void adoptMarker(PF_InData* in_data, const SequenceRef& instance) {
  const std::optional<std::string> comment = firstMarkerComment(in_data);
  SequenceData* sequence = instance.find();
  if (!sequence || !comment || !namesProgram(*comment)) return;
  sequence->path = *comment;
  tryLoad(in_data, *comment, true);
  if ((sequence = instance.find())) sequence->hasProgram = true;
}

// Has the instance run its saved program, wherever that is now.
void adoptSavedPath(PF_InData* in_data, const SequenceRef& instance, std::string path) {
  relocate(in_data, path);
  if (SequenceData* sequence = instance.find()) sequence->path = path;
  tryLoad(in_data, path, false);
}

}  // namespace

SequenceData::SequenceData() {
  if (GlobalData* globalData = GlobalData::current()) {
    serial = ++globalData->sequencesMade;
    globalData->liveSequences.push_back(handle());
  }
}

SequenceData::~SequenceData() {
  GlobalData* globalData = GlobalData::current();
  if (!globalData) return;
  auto& list = globalData->liveSequences;
  const auto mine = std::find(list.begin(), list.end(), handle());
  if (mine == list.end()) return;
  *mine = list.back();
  list.pop_back();
}

SequenceData* SequenceData::live(PF_Handle handle) {
  const GlobalData* globalData = GlobalData::current();
  if (!handle || !globalData) return nullptr;
  const auto& list = globalData->liveSequences;
  if (std::find(list.begin(), list.end(), handle) == list.end()) return nullptr;
  return static_cast<SequenceData*>(hostMemoryOfHandle(handle));
}

SequenceRef::SequenceRef(PF_Handle handle) : handle_(handle) {
  if (const SequenceData* sequence = SequenceData::live(handle)) serial_ = sequence->serial;
}

SequenceData* SequenceRef::find() const {
  SequenceData* sequence = SequenceData::live(handle_);
  return sequence && sequence->serial == serial_ ? sequence : nullptr;
}

PF_Err sequenceSetup(PF_InData* in_data, PF_OutData* out_data) {
  auto* sequence = new SequenceData;
  if (!sequence) return PF_Err_OUT_OF_MEMORY;
  const PF_Handle handle = out_data->sequence_data = sequence->handle();
  const SequenceRef instance(handle);
  adoptMarker(in_data, instance);
  takeBackWhenGone(instance, handle, out_data);
  return PF_Err_NONE;
}

PF_Err sequenceResetup(PF_InData* in_data, PF_OutData* out_data) {
  const auto result = [out_data] {
    return out_data->sequence_data ? PF_Err_NONE : PF_Err_INTERNAL_STRUCT_DAMAGED;
  };
  if (!in_data->sequence_data) {
    sequenceSetup(in_data, out_data);
    return result();
  }
  if (SequenceData::live(in_data->sequence_data)) return PF_Err_NONE;

  // Without memory for the live object the saved data stays as it is, so that nothing is lost.
  SequenceData* sequence = unflatten(in_data, in_data->sequence_data);
  if (!sequence) return PF_Err_INTERNAL_STRUCT_DAMAGED;
  if (out_data->sequence_data) in_data->utils->host_dispose_handle(out_data->sequence_data);
  const PF_Handle handle = out_data->sequence_data = sequence->handle();
  const SequenceRef instance(handle);
  adoptSavedPath(in_data, instance, sequence->path);
  takeBackWhenGone(instance, handle, out_data);
  return result();
}

PF_Err sequenceFlatten(PF_InData* in_data, PF_OutData* out_data) {
  if (SequenceData* sequence = SequenceData::live(in_data->sequence_data)) {
    if (PF_Handle flat = flatten(in_data, *sequence)) {
      delete sequence;
      out_data->sequence_data = flat;
    }
  } else if (!in_data->sequence_data && out_data->sequence_data) {
    in_data->utils->host_dispose_handle(out_data->sequence_data);
    out_data->sequence_data = nullptr;
  }
  return PF_Err_NONE;
}

PF_Err sequenceSetdown(PF_InData* in_data, PF_OutData* out_data) {
  delete SequenceData::live(in_data->sequence_data);
  out_data->sequence_data = nullptr;
  return PF_Err_NONE;
}

}  // namespace vellumtide
