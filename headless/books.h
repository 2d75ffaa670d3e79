// The host's books: every fault of a module as text, and what it holds at the moment.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vellumtide::headless {

struct Fault {
  std::string text;    // what happened, with the callback's or suite's name
  std::string during;  // the command's name, "" outside a command
};

// What a module holds; all zero when everything was given back.
struct Holdings {
  int64_t handles = 0;  // host handles, AEGP memory handles and blocks together
  int64_t locks = 0;
  int64_t params = 0;  // checked-out parameters
  int64_t pixels = 0;  // checked-out layer pixels
  int64_t suites = 0;  // acquired suites
  int64_t streams = 0;
  int64_t streamValues = 0;
  int64_t effectRefs = 0;
  int64_t worlds = 0;  // made with PF_NewWorld

  bool empty() const { return *this == Holdings{}; }
  bool operator==(const Holdings&) const = default;
  // "2 handles, 1 lock", or "nothing".
  std::string text() const;
};

class Books {
 public:
  // Adds a fault. After kMaxFaults only the number grows.
  void fault(std::string text);
  const std::vector<Fault>& faults() const { return faults_; }
  uint64_t faultCount() const { return faultCount_; }
  // One fault a line, "command: text"; "" when there is none.
  std::string faultText() const;
  bool hasFault(const std::string& part) const;  // some fault's text contains `part`
  void clearFaults();

  void setCommand(std::string name) { command_ = std::move(name); }
  const std::string& command() const { return command_; }

  // Acquired suites by name and version.
  void suiteAcquired(const std::string& name, int32_t version);
  // False when that suite was not acquired.
  bool suiteReleased(const std::string& name, int32_t version);
  const std::map<std::pair<std::string, int32_t>, int64_t>& acquiredSuites() const {
    return suites_;
  }

  // Everything but handles and locks, which the handle store counts.
  Holdings holdings;

  static constexpr size_t kMaxFaults = 1000;

 private:
  std::vector<Fault> faults_;
  uint64_t faultCount_ = 0;
  std::string command_;
  std::map<std::pair<std::string, int32_t>, int64_t> suites_;
};

}  // namespace vellumtide::headless
