#include "headless/books.h"

namespace vellumtide::headless {

std::string Holdings::text() const {
  const std::pair<int64_t, const char*> entries[] = {{handles, "handle"},
                                                     {locks, "lock"},
                                                     {params, "checked-out parameter"},
                                                     {pixels, "checked-out layer"},
                                                     {suites, "suite"},
                                                     {streams, "stream"},
                                                     {streamValues, "stream value"},
                                                     {effectRefs, "effect reference"},
                                                     {worlds, "world"}};
  std::string text;
  for (const auto& [number, what] : entries) {
    if (number == 0) continue;
    if (!text.empty()) text += ", ";
    text += std::to_string(number) + " " + what + (number == 1 ? "" : "s");
  }
  return text.empty() ? "nothing" : text;
}

void Books::fault(std::string text) {
  ++faultCount_;
  if (faults_.size() < kMaxFaults) faults_.push_back({std::move(text), command_});
}

std::string Books::faultText() const {
  std::string text;
  for (const Fault& fault : faults_) {
    text += (fault.during.empty() ? "outside a command" : fault.during) + ": " + fault.text + "\n";
  }
  if (faultCount_ > faults_.size()) {
    text += "and " + std::to_string(faultCount_ - faults_.size()) + " more\n";
  }
  return text;
}

bool Books::hasFault(const std::string& part) const {
  for (const Fault& fault : faults_) {
    if (fault.text.find(part) != std::string::npos) return true;
  }
  return false;
}

void Books::clearFaults() {
  faults_.clear();
  faultCount_ = 0;
}

void Books::suiteAcquired(const std::string& name, int32_t version) {
  ++suites_[{name, version}];
  ++holdings.suites;
}

bool Books::suiteReleased(const std::string& name, int32_t version) {
  const auto found = suites_.find({name, version});
  if (found == suites_.end()) return false;
  if (--found->second == 0) suites_.erase(found);
  --holdings.suites;
  return true;
}

}  // namespace vellumtide::headless
